#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "object/Interfaccia.h"
#include "values/Conversion.h"

/// Makes members of the interface from the members of the class: types and in/out come from the declaration,
/// so the table cannot say anything else.
namespace bukorval::adattatori {

using values::Variant;

template <class T>
inline constexpr TipoDato kTipo = TipoDato::Nessuno;
template <>
inline constexpr TipoDato kTipo<Variant> = TipoDato::Variant;
template <>
inline constexpr TipoDato kTipo<std::int16_t> = TipoDato::Integer;
template <>
inline constexpr TipoDato kTipo<std::int32_t> = TipoDato::Long;
template <>
inline constexpr TipoDato kTipo<BdgStato> = TipoDato::Long;
template <>
inline constexpr TipoDato kTipo<ado::DataTypeEnum> = TipoDato::Long;
template <>
inline constexpr TipoDato kTipo<bool> = TipoDato::Boolean;
template <>
inline constexpr TipoDato kTipo<std::string> = TipoDato::String;
template <>
inline constexpr TipoDato kTipo<ado::RecordsetPtr> = TipoDato::Recordset;
template <>
inline constexpr TipoDato kTipo<ado::DictionaryPtr> = TipoDato::Dictionary;
template <>
inline constexpr TipoDato kTipo<ado::ConnectionPtr> = TipoDato::Connection;
template <>
inline constexpr TipoDato kTipo<suite::ActiveInterfacePtr> = TipoDato::ActiveInterface;

inline char separatore(const CLSKORVAL& bo) {
  return bo.ActiveInterface ? bo.ActiveInterface->SeparatoreDecimale() : values::kDefaultSeparator;
}

template <class T>
T converti(const Variant& valore, char separatore) {
  if constexpr (std::is_same_v<T, Variant>) {
    return valore;
  } else if constexpr (std::is_same_v<T, std::string>) {
    return values::toText(valore, separatore);
  } else if constexpr (std::is_same_v<T, std::int16_t>) {
    return values::toInt16(valore, separatore);
  } else if constexpr (std::is_same_v<T, std::int32_t>) {
    return values::toInt32(valore, separatore);
  } else if constexpr (std::is_same_v<T, bool>) {
    return valore.isEmpty() ? false : values::toBool(valore, separatore);
  } else {
    if (valore.isNothing()) return nullptr;
    const auto* riferimento = valore.get_if<std::shared_ptr<values::Object>>();
    auto risultato = oggetto<typename T::element_type>(valore);
    if (!riferimento || (*riferimento && !risultato)) throw values::Errore("Type mismatch: an object is expected");
    return risultato;
  }
}

/// A conversion whose failure names what it was for.
template <class T>
T converti(const CLSKORVAL& bo, const Variant& valore, const std::string& nome) {
  try {
    return converti<T>(valore, separatore(bo));
  } catch (const values::Errore& e) {
    throw ErroreArgomento(nome + ": " + e.what());
  }
}

template <class T>
Variant inVariant(const T& valore) {
  if constexpr (std::is_enum_v<T>) {
    return Variant(static_cast<std::int32_t>(valore));
  } else if constexpr (requires { typename T::element_type; }) {
    return Variant(std::shared_ptr<values::Object>(valore));
  } else {
    return Variant(valore);
  }
}

/// Names of the parameters, in order, separated by blanks: "NAME", "NAME:ENUMERATION", "NAME?" for an
/// optional one.
std::vector<Parametro> leggiParametri(std::string_view testo);
/// Fills the arguments up with Empty; throws when there are too few or too many.
void completaArgomenti(const Membro& membro, std::vector<Variant>& argomenti);

/// Type and direction of a parameter from its declaration.
template <class T>
void descrivi(Parametro& parametro) {
  parametro.tipo = kTipo<std::remove_cvref_t<T>>;
  parametro.inOut = std::is_lvalue_reference_v<T> && !std::is_const_v<std::remove_reference_t<T>>;
}

template <class R, class... A, std::size_t... I>
Variant chiama(R (CLSKORVAL::*funzione)(A...), CLSKORVAL& bo, const std::vector<Parametro>& parametri,
               std::vector<Variant>& argomenti, std::index_sequence<I...>) {
  std::tuple<std::remove_cvref_t<A>...> valori{
      converti<std::remove_cvref_t<A>>(bo, argomenti[I], parametri[I].nome)...};
  Variant risultato;
  if constexpr (std::is_void_v<R>) {
    (bo.*funzione)(std::get<I>(valori)...);
  } else {
    risultato = inVariant((bo.*funzione)(std::get<I>(valori)...));
  }
  ((parametri[I].inOut ? void(argomenti[I] = inVariant(std::get<I>(valori))) : void()), ...);
  return risultato;
}

template <class R, class... A>
Membro metodo(std::string_view nome, R (CLSKORVAL::*funzione)(A...), std::string_view nomiParametri = {},
              std::string_view enumerazione = {}) {
  Membro membro;
  membro.nome = nome;
  membro.tipo = kTipo<std::remove_cvref_t<R>>;
  membro.enumerazione = enumerazione;
  membro.parametri = leggiParametri(nomiParametri);
  if (membro.parametri.size() != sizeof...(A)) throw values::Errore("Wrong parameter list: " + membro.nome);
  [&]<std::size_t... I>(std::index_sequence<I...>) { (descrivi<A>(membro.parametri[I]), ...); }
  (std::index_sequence_for<A...>{});
  membro.chiama = [funzione, descrizione = membro](CLSKORVAL& bo, std::vector<Variant>& argomenti) {
    completaArgomenti(descrizione, argomenti);
    return adattatori::chiama(funzione, bo, descrizione.parametri, argomenti, std::index_sequence_for<A...>{});
  };
  return membro;
}

template <class T>
Membro proprieta(std::string_view nome, T Proprieta::*campo, std::string_view enumerazione = {}) {
  Membro membro;
  membro.nome = nome;
  membro.genere = Genere::Proprieta;
  membro.tipo = kTipo<T>;
  membro.enumerazione = enumerazione;
  membro.leggi = [campo](const CLSKORVAL& bo) { return inVariant(bo.*campo); };
  membro.scrivi = [campo, nome = membro.nome](CLSKORVAL& bo, const Variant& valore) {
    bo.*campo = converti<T>(bo, valore, nome);
  };
  return membro;
}

}  // namespace bukorval::adattatori
