#include "object/CLSKORVAL.h"

#include <utility>

#include "frame/Contesto.h"
#include "frame/Traccia.h"
#include "frame/Trappola.h"
#include "frame/Valori.h"

namespace bukorval {
namespace {

/// A service that the suite does not offer is missed only by the operation that needs it.
template <class T>
std::shared_ptr<T> creaSeDisponibile(std::string_view nome) {
  try {
    return suite::creaServizio<T>(nome);
  } catch (...) {
    return nullptr;
  }
}

}  // namespace

CLSKORVAL::CLSKORVAL() : identita_(std::make_unique<Identita>()), ctx_(std::make_unique<Contesto>(*this, eventi)) {
  tracciaCreazione(*identita_);
  ctx_->servizioDate = creaSeDisponibile<suite::ServizioDate>(suite::kServizioDate);
  ctx_->servizioAritmetico = creaSeDisponibile<suite::ServizioAritmetico>(suite::kServizioAritmetico);
}

CLSKORVAL::~CLSKORVAL() { tracciaRilascio(*identita_); }

BdgStato CLSKORVAL::Stato() const { return ctx_->stato(); }

const std::string& CLSKORVAL::errore() const { return ctx_->errore(); }

void CLSKORVAL::Connessione(ado::ConnectionPtr connessione) { ctx_->connessione(std::move(connessione)); }

const std::string& CLSKORVAL::StringaConnessione() const { return ctx_->stringaConnessione; }

void CLSKORVAL::StringaConnessione(std::string valore) { ctx_->stringaConnessione = std::move(valore); }

values::Variant CLSKORVAL::CalcolaDelta(const Variant& MyValore2, const Variant& MyValore1) {
  return bukorval::CalcolaDelta(*ctx_, MyValore2, MyValore1);
}

values::Variant CLSKORVAL::CalcolaDeltaPercentuale(const Variant& MyValore2, const Variant& MyValore1) {
  return bukorval::CalcolaDeltaPercentuale(*ctx_, MyValore2, MyValore1);
}

values::Variant CLSKORVAL::NVL(const Variant& Valore, const Variant& ValIfNull) {
  return bukorval::NVL(Valore, ValIfNull);
}

values::Variant CLSKORVAL::BFill(const Variant& Pvar_Stringa, std::int16_t Pint_Len) {
  return bukorval::BFill(Pvar_Stringa, Pint_Len, ctx_->separatore());
}

// Inside the object these two leave their errors to the caller; here the caller is outside.
values::Variant CLSKORVAL::RTrimN(const Variant& fvar_Value) {
  return esegui(*ctx_, "RTrimN", Variant(), [&] { return bukorval::RTrimN(fvar_Value, ctx_->separatore()); });
}

values::Variant CLSKORVAL::CDecN(const Variant& fvar_Value) {
  return esegui(*ctx_, "CDecN", Variant(), [&] { return bukorval::CDecN(fvar_Value, ctx_->separatore()); });
}

}  // namespace bukorval
