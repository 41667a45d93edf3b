#include "host/Arguments.h"

#include <algorithm>

#include "host/Errors.h"
#include "values/Text.h"

namespace bukorval::host {
namespace {

bool soloCifre(std::string_view testo) {
  return !testo.empty() && std::ranges::all_of(testo, [](char c) { return c >= '0' && c <= '9'; });
}

/// -12 and 12.50 and 12,50; not 007, 1e3 or .5: those are codes as likely as numbers.
bool pareNumero(std::string_view testo) {
  if (testo.starts_with('-')) testo.remove_prefix(1);
  const auto segno = testo.find_first_of(".,");
  const auto intero = testo.substr(0, segno);
  if (!soloCifre(intero) || (intero.size() > 1 && intero.front() == '0')) return false;
  return segno == std::string_view::npos || soloCifre(testo.substr(segno + 1));
}

values::Variant leggiNumero(std::string_view testo) {
  std::string conPunto(testo);
  std::ranges::replace(conPunto, ',', '.');
  const auto numero = values::Decimal::TryParse(conPunto);
  if (!numero) return testo;
  constexpr int kCifreIntere = 9;
  if (numero->scale() == 0 && numero->integerDigits() <= kCifreIntere) return *numero->toScaled(0);
  return *numero;
}

values::Variant leggiData(std::string_view testo) {
  const auto data = values::Date::TryParse(testo.substr(1, testo.size() - 2));
  if (!data) throw ErroreUso(std::string(testo) + " is not a date");
  return *data;
}

bool tra(std::string_view testo, char segno) {
  return testo.size() >= 2 && testo.front() == segno && testo.back() == segno;
}

}  // namespace

values::Variant leggiArgomento(std::string_view testo) {
  if (testo == "NULL") return values::Variant::Null();
  if (testo == "EMPTY") return {};
  if (tra(testo, '\'')) return testo.substr(1, testo.size() - 2);
  if (tra(testo, '#')) return leggiData(testo);
  if (pareNumero(values::trim(testo))) return leggiNumero(values::trim(testo));
  return testo;
}

ado::DictionaryPtr leggiDizionario(std::string_view testo) {
  auto dizionario = std::make_shared<ado::Dictionary>();
  while (!testo.empty()) {
    const auto voce = values::trim(testo.substr(0, testo.find(',')));
    testo.remove_prefix(std::min(testo.size(), testo.substr(0, testo.find(',')).size() + 1));
    const auto uguale = voce.find('=');
    const auto chiave = leggiArgomento(voce.substr(0, uguale));
    const auto valore = uguale == std::string_view::npos ? chiave : leggiArgomento(voce.substr(uguale + 1));
    if (dizionario->Exists(chiave)) throw ErroreUso("'" + std::string(voce) + "' stands twice");
    dizionario->Add(chiave, valore);
  }
  return dizionario;
}

values::Variant leggiPerTipo(std::string_view testo, TipoDato tipo, std::string_view nome) {
  switch (tipo) {
    case TipoDato::Variant: return leggiArgomento(testo);
    case TipoDato::String: return testo;
    case TipoDato::Integer:
    case TipoDato::Long:
    case TipoDato::Boolean: return testo == "EMPTY" ? values::Variant() : values::Variant(testo);
    case TipoDato::Dictionary: return std::shared_ptr<values::Object>(leggiDizionario(testo));
    default: throw ErroreUso(std::string(nome) + " cannot be given as text");
  }
}

bool siScrive(TipoDato tipo) {
  return tipo == TipoDato::Variant || tipo == TipoDato::String || tipo == TipoDato::Integer || tipo == TipoDato::Long ||
         tipo == TipoDato::Boolean || tipo == TipoDato::Dictionary;
}

}  // namespace bukorval::host
