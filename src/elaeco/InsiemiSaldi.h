#pragma once

#include <string_view>

#include "ado/Dictionary.h"
#include "ado/recordset/KeyedRows.h"
#include "ado/recordset/Recordset.h"
#include "frame/Contesto.h"

namespace bukorval {

/// Creates RstSaldiElaEco, open and empty: CONTO, DESCRIZIONE, PERIODO, IMPORTO, BUDGETPRESENTE, SOVRASCRIVI, ID.
/// Outcome: 99 with " in BdgElaEco_DefinisciRstPerImport".
void BdgElaEco_DefinisciRstPerImport(Contesto& ctx);

/// Creates RstContiNonPresentiInStruttura, open and empty: CONTO, DESCRIZIONE.
/// Outcome: 99 with " in BdgElaEco_DefinisciRstContiNonPresentiInStruttura".
void BdgElaEco_DefinisciRstContiNonPresentiInStruttura(Contesto& ctx);

/// A set of balances per account and month, open and empty: CONTO, DESCRIZIONE, ANNO, MESE, IMPORTO.
ado::RecordsetPtr creaSaldiMensili();

/// Adds amounts up in such a set, which stays open and alive as long as this.
class SommaSaldi {
 public:
  explicit SommaSaldi(ado::Recordset& saldi);
  /// Adds an amount to the row of an account and month, which becomes the current one; creates it when missing.
  void aggiungi(const values::Variant& conto, const values::Variant& descrizione, int anno, int mese,
                const values::Variant& importo);

 private:
  ado::Recordset& saldi_;
  ado::Field &conto_, &descrizione_, &anno_, &mese_, &importo_;
  ado::KeyedRows righe_;
};

/// The distinct values of a field among the rows that pass the set's filter, as keys and items.
/// Outcome: 99 with " in BdgElaEco_ValoriDistinti".
ado::DictionaryPtr BdgElaEco_ValoriDistinti(Contesto& ctx, const ado::Recordset& rst, std::string_view campo);

}  // namespace bukorval
