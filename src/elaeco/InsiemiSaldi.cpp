#include "elaeco/InsiemiSaldi.h"

#include <initializer_list>

#include "frame/Trappola.h"
#include "values/Arithmetic.h"
#include "values/Conversion.h"

namespace bukorval {
namespace {

struct Campo {
  const char* nome;
  ado::DataTypeEnum tipo;
  int dimensione;  ///< characters of a text, digits of a decimal
  int decimali;
};

constexpr Campo kConto = {"CONTO", ado::adVarWChar, 15, 0};
constexpr Campo kDescrizione = {"DESCRIZIONE", ado::adVarWChar, 80, 0};

ado::RecordsetPtr creaInsieme(std::initializer_list<Campo> campi) {
  auto rst = std::make_shared<ado::Recordset>();
  for (const auto& campo : campi) {
    const bool testo = campo.tipo == ado::adVarWChar;
    auto& nuovo = rst->Fields().Append(campo.nome, campo.tipo, testo ? campo.dimensione : 0, ado::adFldIsNullable);
    if (testo) continue;
    nuovo.Precision(campo.dimensione);
    nuovo.NumericScale(campo.decimali);
  }
  rst->CursorLocation = ado::adUseClient;
  rst->CursorType = ado::adOpenDynamic;
  rst->Open();
  return rst;
}

}  // namespace

void BdgElaEco_DefinisciRstPerImport(Contesto& ctx) {
  esegui(ctx, "BdgElaEco_DefinisciRstPerImport", [&] {
    ctx.prop.RstSaldiElaEco = creaInsieme({kConto,
                                           kDescrizione,
                                           {"PERIODO", ado::adDecimal, 2, 0},
                                           {"IMPORTO", ado::adDecimal, 13, 2},
                                           {"BUDGETPRESENTE", ado::adDecimal, 1, 0},
                                           {"SOVRASCRIVI", ado::adDecimal, 1, 0},
                                           {"ID", ado::adVarWChar, 36, 0}});
  });
}

void BdgElaEco_DefinisciRstContiNonPresentiInStruttura(Contesto& ctx) {
  esegui(ctx, "BdgElaEco_DefinisciRstContiNonPresentiInStruttura", [&] {
    ctx.prop.RstContiNonPresentiInStruttura = creaInsieme({kConto, kDescrizione});
  });
}

ado::RecordsetPtr creaSaldiMensili() {
  return creaInsieme({kConto,
                      kDescrizione,
                      {"ANNO", ado::adDecimal, 4, 0},
                      {"MESE", ado::adDecimal, 2, 0},
                      {"IMPORTO", ado::adDecimal, 15, 2}});
}

SommaSaldi::SommaSaldi(ado::Recordset& saldi)
    : saldi_(saldi),
      conto_(saldi["CONTO"]),
      descrizione_(saldi["DESCRIZIONE"]),
      anno_(saldi["ANNO"]),
      mese_(saldi["MESE"]),
      importo_(saldi["IMPORTO"]),
      righe_(saldi, {"CONTO", "ANNO", "MESE"}) {}

void SommaSaldi::aggiungi(const values::Variant& conto, const values::Variant& descrizione, int anno, int mese,
                          const values::Variant& importo) {
  if (righe_.first({values::toPlainText(conto), anno, mese})) {
    importo_.Value(values::add(importo_.Value(), importo));
  } else {
    saldi_.AddNew();
    conto_.Value(conto);
    descrizione_.Value(descrizione);
    anno_.Value(anno);
    mese_.Value(mese);
    importo_.Value(importo);
  }
  saldi_.Update();
}

ado::DictionaryPtr BdgElaEco_ValoriDistinti(Contesto& ctx, const ado::Recordset& rst, std::string_view campo) {
  auto distinti = std::make_shared<ado::Dictionary>();
  return esegui(ctx, "BdgElaEco_ValoriDistinti", distinti, [&] {
    const auto copia = rst.Clone();
    copia->Filter(rst.Filter());
    if (copia->RecordCount() < 1) return distinti;
    copia->MoveFirst();
    const auto colonne = copia->GetRows(campo);
    for (const auto& valore : colonne.front())
      if (!distinti->Exists(valore)) distinti->Add(valore, valore);
    return distinti;
  });
}

}  // namespace bukorval
