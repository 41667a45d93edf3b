#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "object/CLSKORVAL.h"
#include "values/Errore.h"
#include "values/Export.h"
#include "values/Variant.h"

/// The public members of CLSKORVAL as data, for whoever reaches them by name: options and calls of a program,
/// a late-bound client, a test that must not forget one.
namespace bukorval {

enum class TipoDato {
  Nessuno,
  Variant,
  Integer,
  Long,
  Boolean,
  String,
  Recordset,
  Dictionary,
  Connection,
  ActiveInterface
};

/// A value that cannot be given to a parameter or property; its text names the parameter or property.
class BUKORVAL_API ErroreArgomento : public values::Errore {
 public:
  using values::Errore::Errore;
};

struct Parametro {
  std::string nome;
  TipoDato tipo = TipoDato::Variant;
  std::string enumerazione;  ///< name of the enumeration a Long belongs to, "" for none
  bool inOut = false;
  bool opzionale = false;
};

enum class Genere { Proprieta, Metodo };

/// One public member. A property has `leggi`, `scrivi` or both; a method has `chiama`.
struct Membro {
  using Variant = values::Variant;

  std::string nome;
  Genere genere = Genere::Metodo;
  TipoDato tipo = TipoDato::Nessuno;  ///< of the property, or of the method's result
  std::string enumerazione;
  std::vector<Parametro> parametri;

  /// Calls the method. Arguments are converted to the parameters' types; missing trailing ones that are
  /// optional or in/out count as Empty. On return the vector holds every argument, in/out ones as the method
  /// left them. Record sets and dictionaries are object Variants, Nothing an object Variant without object.
  /// Throws ErroreArgomento for too few or too many arguments or one that does not convert; then the method
  /// has not run and Stato() is as before. Failures of the method itself are in Stato().
  std::function<Variant(CLSKORVAL&, std::vector<Variant>&)> chiama;
  std::function<Variant(const CLSKORVAL&)> leggi;
  /// Converts to the property's type first (text of a number, True or False); ErroreArgomento when it does
  /// not.
  std::function<void(CLSKORVAL&, const Variant&)> scrivi;
};

/// Every public member: first the properties, then the methods, each in the order of the interface.
BUKORVAL_API const std::vector<Membro>& interfaccia();
/// By name without regard to case; null pointer when there is none.
BUKORVAL_API const Membro* trovaMembro(std::string_view nome);

/// "Integer"; the enumeration's name where there is one.
BUKORVAL_API std::string_view nomeTipo(TipoDato tipo, std::string_view enumerazione = {});
/// "GetBdgNrPeriodi(MyBdgPeriodicita As BdgPeriodicita) As Variant", "StringaConnessione As String".
BUKORVAL_API std::string firma(const Membro& membro);

/// The object of a Variant as class T; null pointer for Nothing, Empty, Null and objects of another class.
template <class T>
std::shared_ptr<T> oggetto(const values::Variant& valore) {
  const auto* oggetto = valore.get_if<std::shared_ptr<values::Object>>();
  return oggetto ? std::dynamic_pointer_cast<T>(*oggetto) : nullptr;
}

}  // namespace bukorval
