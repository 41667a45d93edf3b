#include "suite/Servizi.h"

#include <map>
#include <mutex>
#include <utility>

namespace suite {
namespace {

struct Registro {
  std::mutex mutex;
  std::map<std::string, Creatore, std::less<>> creatori;
};

Registro& registro() {
  static Registro unico;
  return unico;
}

}  // namespace

void registraServizio(std::string_view nome, Creatore creatore) {
  const std::lock_guard blocco(registro().mutex);
  registro().creatori.insert_or_assign(std::string(nome), std::move(creatore));
}

std::shared_ptr<values::Object> creaOggetto(std::string_view nome) {
  Creatore creatore;
  {
    const std::lock_guard blocco(registro().mutex);
    const auto trovato = registro().creatori.find(nome);
    if (trovato != registro().creatori.end()) creatore = trovato->second;
  }
  if (!creatore) throw values::Errore("ActiveX component can't create object: " + std::string(nome));
  return creatore();
}

}  // namespace suite
