#include "elaeco/Riclassificazione.h"

#include "elaeco/InsiemiSaldi.h"
#include "frame/TestoSql.h"
#include "values/Conversion.h"
#include "values/Text.h"

namespace bukorval {
namespace {

std::string testoSchema(const Contesto& ctx) {
  TestoSql sql;
  sql.riga(" SELECT CG24_CONTO AS CONTOCOGE, ")
      .riga("        CG20_INDSEGNO AS SEGNO, ")
      .riga("        CG23_CODICE AS CONTORICL, ")
      .riga("        CG23_DESCR AS DESCRRICL ")
      .riga(" FROM   CG24_TABPDC WITH (NOLOCK) ")
      .riga(" LEFT OUTER JOIN CG20_COLLPDCRICL WITH (NOLOCK) ")
      .riga("      ON CG20_GRUPPO_CG10 = CG24_GRUPPO_CG10 ")
      .riga("      AND CG20_CONTO_CG24 = CG24_CONTO ")
      .riga("      AND CG20_CODICE_CG21 = ", numero(ctx.dati.codicePdc))
      .riga(" LEFT OUTER JOIN CG23_RICLBILCEE WITH (NOLOCK) ")
      .riga("      ON CG23_CODICE_CG21 = CG20_CODICE_CG21 ")
      .riga("      AND CG23_CODICE = CG20_CODICE_CG23 ")
      .riga(" WHERE CG24_GRUPPO_CG10 = ", numero(ctx.prop.CodicePdcCoGeDitta))
      .testo(" AND   CG24_INDTIPOCONTO = 2 ");
  return sql.str();
}

std::string testoPianoAnalitico(const Contesto& ctx) {
  TestoSql sql;
  sql.riga(" SELECT CG24_CONTO AS CONTOCOGE, ")
      .riga("        CG83_INDSEGNO AS SEGNO, ")
      .riga("        PC03_CONTO AS CONTORICL, ")
      .riga("        PC03_DESCR AS DESCRRICL ")
      .riga(" FROM CG24_TABPDC WITH (NOLOCK) ")
      .riga(" LEFT OUTER JOIN CG83_COLLRICL WITH (NOLOCK) ")
      .riga("      ON CG83_CODICE_CG10 = CG24_GRUPPO_CG10 ")
      .riga("      AND CG83_CONTO_CG24 = CG24_CONTO ")
      .riga("      AND CG83_CODICERICL_PC01 = ", numero(ctx.dati.codicePdc))
      .riga(" LEFT OUTER JOIN PC03_ANAGPDC WITH (NOLOCK) ")
      .riga("      ON PC03_CODICE_PC01 = CG83_CODICERICL_PC01 ")
      .riga("      AND PC03_CONTO = CG83_CONTORICL_PC03 ")
      .riga(" WHERE CG24_GRUPPO_CG10 = ", numero(ctx.prop.CodicePdcCoGeDitta))
      .testo(" AND CG24_INDTIPOCONTO = 2 ");
  return sql.str();
}

}  // namespace

bool contoNelIntervallo(const Proprieta& prop, const values::Variant& conto) {
  const auto codice = values::toPlainText(conto);
  const auto confronta = [&](const values::Variant& estremo) {
    return values::compareText(codice, values::toPlainText(estremo));
  };
  return (values::isBlank(prop.DaConto) || confronta(prop.DaConto) >= 0) &&
         (values::isBlank(prop.AConto) || confronta(prop.AConto) <= 0);
}

ado::RecordsetPtr riportaSuContiRiclassificati(Contesto& ctx, ado::Recordset& saldi) {
  const auto collegamenti =
      ctx.connessione().Execute(ctx.dati.tipoPdc == bdgPdcRiclassificato ? testoSchema(ctx) : testoPianoAnalitico(ctx));
  const auto& contoRicl = (*collegamenti)["CONTORICL"];
  const auto& descrRicl = (*collegamenti)["DESCRRICL"];
  auto riclassificati = creaSaldiMensili();
  SommaSaldi somma(*riclassificati);
  const auto senza = ctx.prop.RstSaldiSenzaCollegamento = creaSaldiMensili();
  SommaSaldi sommaSenza(*senza);
  ado::KeyedRows perContoESegno(*collegamenti, {"CONTOCOGE", "SEGNO"});
  if (saldi.RecordCount() == 0) return riclassificati;

  const auto& conto = saldi["CONTO"];
  const auto& descrizione = saldi["DESCRIZIONE"];
  const auto& anno = saldi["ANNO"];
  const auto& mese = saldi["MESE"];
  const auto& importo = saldi["IMPORTO"];
  for (saldi.MoveFirst(); !saldi.Eof(); saldi.MoveNext()) {
    const auto aggiungi = [&](SommaSaldi& a, const values::Variant& codice, const values::Variant& testo) {
      a.aggiungi(codice, testo, values::toInt32(anno.Value()), values::toInt32(mese.Value()), importo.Value());
    };
    const int segno = values::toDecimal(importo.Value()).isNegative() ? 2 : 1;
    if (!perContoESegno.first({values::toPlainText(conto.Value()), segno}) || values::isBlank(contoRicl.Value()))
      aggiungi(sommaSenza, conto.Value(), descrizione.Value());
    else if (contoNelIntervallo(ctx.prop, contoRicl.Value()))
      aggiungi(somma, contoRicl.Value(), descrRicl.Value());
  }
  return riclassificati;
}

}  // namespace bukorval
