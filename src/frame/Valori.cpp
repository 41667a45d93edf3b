#include "frame/Valori.h"

#include "frame/Trappola.h"
#include "suite/Denaro.h"
#include "values/Arithmetic.h"
#include "values/Errore.h"
#include "values/Text.h"

namespace bukorval {

namespace {

using values::Variant;

const Variant kZero = std::int16_t{0};

bool isVuoto(const Variant& valore) {
  if (valore.isNothing()) return true;
  const std::string* testo = valore.get_if<std::string>();
  return testo && testo->empty();
}

/// A number given as text counts as the exact number that the session reads in it.
Variant operando(const Contesto& ctx, const Variant& valore) {
  if (valore.kind() != values::Kind::String) return valore;
  return values::toDecimal(valore, ctx.separatore());
}

template <class Servizio>
Servizio& richiesto(const std::shared_ptr<Servizio>& servizio, std::string_view nome) {
  if (!servizio) throw values::Errore("Object variable or With block variable not set: " + std::string(nome));
  return *servizio;
}

}  // namespace

Variant NVL(const Variant& valore, const Variant& ifNull) { return values::nvl(valore, ifNull); }

Variant BFill(const Variant& valore, int larghezza, char separatore) {
  if (valore.isNothing()) return Variant::Null();
  if (larghezza < 0 || valore.kind() == values::Kind::Object) return {};
  return values::padRight(values::trim(values::toText(valore, separatore)), static_cast<std::size_t>(larghezza));
}

Variant RTrimN(const Variant& valore, char separatore) {
  if (isVuoto(valore)) return "";
  return values::rtrim(values::toText(valore, separatore));
}

Variant CDecN(const Variant& valore, char separatore) {
  if (isVuoto(valore)) return kZero;
  return values::toDecimal(valore, separatore);
}

std::string DataDB(Contesto& ctx, const Variant& data) {
  return esegui(ctx, "DataDB", std::string(), [&] {
    auto& servizio = richiesto(ctx.servizioDate, suite::kServizioDate);
    // A number is the day it stands for, as everywhere a date is read.
    servizio.Data(values::toPlainText(data.isNumber() ? Variant(values::toDate(data)) : data));
    return servizio.CodiceErrore() == 0 ? "'" + servizio.DataDB() + "'" : std::string("Null");
  });
}

Variant RoundZQ(Contesto& ctx, const Variant& valore, int decimali) {
  return esegui(ctx, "RoundZQ", Variant(), [&]() -> Variant {
    if (values::isBlank(valore)) return kZero;
    const Variant esatto = values::toDecimal(valore, ctx.separatore());
    return richiesto(ctx.servizioAritmetico, suite::kServizioAritmetico)
        .Arrotonda(esatto, suite::kPrecisione, decimali, suite::kMezziLontanoDaZero);
  });
}

Variant CalcolaDelta(Contesto& ctx, const Variant& valore2, const Variant& valore1) {
  return esegui(ctx, "CalcolaDelta", Variant(), [&] {
    if (valore2.isNull() || valore1.isNull()) return Variant::Null();
    return values::subtract(operando(ctx, valore2), operando(ctx, valore1));
  });
}

Variant CalcolaDeltaPercentuale(Contesto& ctx, const Variant& valore2, const Variant& valore1) {
  return esegui(ctx, "CalcolaDeltaPercentuale", Variant(), [&] {
    if (valore2.isNull() || values::isBlank(valore1)) return Variant::Null();
    const Variant base = operando(ctx, valore1);
    if (values::compare(base, kZero) == 0) return Variant::Null();
    return values::divide(values::subtract(operando(ctx, valore2), base), base);
  });
}

Variant GetNuovoGuidDB(Contesto& ctx) {
  try {
    return ctx.connessione().Execute("SELECT CAST(NEWID() AS NVARCHAR(36))")->Fields().Item(0).Value();
  } catch (...) {
    return {};
  }
}

}  // namespace bukorval
