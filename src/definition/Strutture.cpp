#include "definition/Strutture.h"

#include "definition/Colonne.h"
#include "definition/RigaDefinizione.h"
#include "frame/Connessione.h"
#include "frame/TestoSql.h"
#include "frame/Trappola.h"
#include "values/Conversion.h"

/// What the definitions and the BU60 structures hold, and the types of the columns.
namespace bukorval {
namespace {

using values::Variant;

constexpr std::string_view kApice = "'";

std::string testoDefinizione(std::string_view colonna, const std::string& tipo, const std::string& sottoTipo) {
  TestoSql sql;
  sql.riga(" SELECT ", colonna)
      .riga(" FROM   BU01_ANABUDGET WITH (NOLOCK) ")
      .riga(" WHERE  BU01_INDTIPO = ", tipo)
      .riga(" AND    BU01_SOTTOTIPO = ", sottoTipo);
  return sql.str();
}

std::string testoStrutturaBU60(const Variant& codice) {
  TestoSql sql;
  sql.riga(" SELECT BU60_DESCR, BU60_INDTIPOPDC, BU60_CODICEPDC ")
      .riga(" FROM   BU60_STRUTTANAG WITH (NOLOCK) ")
      .riga(" WHERE  BU60_CODICE = ", testoDati(codice));
  return sql.str();
}

std::string testoODefault(const Variant& valore) { return values::toText(values::nvl(valore, "")); }

/// One text column of a definition; "" when the budget or the text is missing.
std::string leggiTesto(Contesto& ctx, std::string_view colonna, BdgTipo tipo, const Variant& sottoTipo) {
  if (values::isBlank(sottoTipo)) return {};
  const auto numeroTipo = numero(tipo), codice = testoDati(sottoTipo);
  const auto riga = rigaDefinizione(ctx, testoDefinizione(colonna, numeroTipo, codice), numeroTipo, codice);
  return riga->Eof() ? std::string() : testoODefault(riga->Fields().Item(colonna).Value());
}

/// The row of a BU60 structure; no set when there is none.
ado::RecordsetPtr leggiStrutturaBU60(Contesto& ctx, const Variant& codice) {
  if (values::isBlank(codice)) return nullptr;
  creaConnessioneDB(ctx);
  auto riga = ctx.connessione().Execute(testoStrutturaBU60(codice));
  return riga->Eof() ? nullptr : riga;
}

}  // namespace

std::string Strutture::GetStruttura(BdgTipo tipo, const Variant& sottoTipo) const {
  return esegui(ctx_, "GetStruttura", std::string(),
                [&] { return leggiTesto(ctx_, "BU01_STRUTTURA", tipo, sottoTipo); });
}

std::string Strutture::GetStrutturaBU60(BdgTipo tipo, const Variant& sottoTipo) const {
  return esegui(ctx_, "GetStrutturaBU60", std::string(),
                [&] { return leggiTesto(ctx_, "BU01_CODICE_BU60", tipo, sottoTipo); });
}

void Strutture::GetStrutturaBU60TipoPdcCodicePdc(const Variant& codice, BdgTipoPdc& tipoPdc, Variant& codicePdc) const {
  tipoPdc = 0;
  codicePdc = Variant::Null();
  esegui(ctx_, "GetStrutturaBU60TipoPdcCodicePdc", [&] {
    const auto riga = leggiStrutturaBU60(ctx_, codice);
    if (!riga) return;
    tipoPdc = values::toInt32(values::nvl((*riga)["BU60_INDTIPOPDC"].Value(), 0));
    codicePdc = (*riga)["BU60_CODICEPDC"].Value();
  });
}

std::string Strutture::GetDescrizioneStrutturaBU60(const Variant& codice) const {
  return esegui(ctx_, "GetDescrizioneStrutturaBU60", std::string(), [&] {
    const auto riga = leggiStrutturaBU60(ctx_, codice);
    return riga ? testoODefault((*riga)["BU60_DESCR"].Value()) : std::string();
  });
}

ado::DataTypeEnum Strutture::GetTipoCampo(std::string_view campo) const {
  return esegui(ctx_, "GetTipoCampo", ado::adEmpty, [&] { return colonnaBU65(campo).tipo; });
}

Variant Strutture::GetApiceCampiBU65(const Variant& nomeCampo) const {
  return esegui(ctx_, "GetApiceCampiBU65", Variant(), [&]() -> Variant {
    return colonnaBU65(values::toText(values::nvl(nomeCampo, ""))).isNumero() ? "" : kApice;
  });
}

}  // namespace bukorval
