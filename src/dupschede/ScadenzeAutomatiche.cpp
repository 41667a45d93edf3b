#include "dupschede/ScadenzeAutomatiche.h"

#include <algorithm>
#include <map>

#include "definition/Calendario.h"
#include "frame/TestoSql.h"
#include "frame/Trappola.h"
#include "frame/Valori.h"
#include "suite/Competenza.h"
#include "values/Conversion.h"

namespace bukorval {
namespace {

using values::Date;
using values::Decimal;
using values::Variant;

/// How a card's amounts become due dates.
struct Condizioni {
  Variant inizioValidita;
  int rate = 1;
  int mesiTraRate = 0;
  int giorni = 0;
  bool aMano = false;
  bool indicate = false;  ///< the card has terms at all
};

int intero(const ado::Recordset& rst, std::string_view campo, int ifNull) {
  return values::toInt32(values::nvl(rst[campo].Value(), ifNull));
}

ado::RecordsetPtr leggiCashFlow(Contesto& ctx, const Variant& scheda) {
  TestoSql sql;
  sql.riga(" SELECT  BU67_FLGSCADMAN, BU67_DATAINIVAL, BU67_NUMRATE, BU67_MESIRATA, BU67_GIORNISCAD ")
      .riga(" FROM    BU67_BDGCASHFLOW WITH(NOLOCK) ")
      .riga(" WHERE   BU67_ID_BU65 = ", numero(scheda));
  return ctx.connessione().Execute(sql);
}

constexpr const char* kTermini[] = {"BU67_NUMRATE", "BU67_MESIRATA", "BU67_GIORNISCAD"};

Condizioni condizioniDi(const ado::Recordset& cashFlow) {
  return {cashFlow["BU67_DATAINIVAL"].Value(),
          std::max(1, intero(cashFlow, "BU67_NUMRATE", 1)),
          intero(cashFlow, "BU67_MESIRATA", 1),
          intero(cashFlow, "BU67_GIORNISCAD", 0),
          intero(cashFlow, "BU67_FLGSCADMAN", 0) != 0,
          std::ranges::any_of(kTermini, [&](const char* campo) { return !values::isBlank(cashFlow[campo].Value()); })};
}

/// The last day of every period of the destination year, in calendar order of its months.
std::map<int, Date> ultimiGiorni(Contesto& ctx, const PianoDuplicazione& piano) {
  std::map<int, Date> ultimi;
  const Date inizio = values::toDate(piano.inizioDestinazione).firstOfMonth();
  const Calendario calendario(ctx);
  for (int i = 0; i < 12; ++i) {
    const Date mese = inizio.addMonths(i);
    const int periodo = calendario.GetBdgPeriodo(static_cast<std::int16_t>(mese.month()), ctx.dati.periodicita,
                                                 ctx.dati.fiscaleSolare, piano.inizioDestinazione);
    ultimi[periodo] = mese.lastOfMonth();
  }
  return ultimi;
}

void scriviScadenza(Contesto& ctx, const Variant& scheda, int periodo, const Date& data, const Decimal& importo) {
  TestoSql sql;
  sql.riga(" INSERT INTO BU14_SCADCFLOW ")
      .riga(" ( BU14_IDBUDGET, BU14_PERIODO, BU14_DATASCAD, BU14_IMPORTO, BU14_FLGMANUAL ) ")
      .riga(" VALUES ")
      .riga(" ( ", numero(scheda), ", ", numero(periodo), ", ", DataDB(ctx, data), ", ", valoreDecimale(importo),
            ", 0 ) ");
  ctx.connessione().Execute(sql);
}

/// A month's end stays one, whatever its day.
Date mesiDopo(const Date& data, int mesi) {
  const Date spostata = data.addMonths(mesi);
  return data == data.lastOfMonth() ? spostata.lastOfMonth() : spostata;
}

void scriviRate(Contesto& ctx, const Variant& scheda, const Condizioni& condizioni, int periodo, const Date& fine,
                const Decimal& importo) {
  const Decimal rata = suite::arrotondaImporto(importo / Decimal::FromScaled(condizioni.rate));
  const Date prima = fine.addDays(condizioni.giorni);
  Decimal resto = importo;
  for (int k = 0; k < condizioni.rate; ++k) {
    const Decimal quota = k + 1 == condizioni.rate ? resto : rata;
    scriviScadenza(ctx, scheda, periodo, mesiDopo(prima, k * condizioni.mesiTraRate), quota);
    resto = resto - quota;
  }
}

ado::RecordsetPtr leggiImporti(Contesto& ctx, const Variant& scheda) {
  TestoSql sql;
  sql.riga(" SELECT  BU66_PERIODO, BU66_IMPORTO ")
      .riga(" FROM    BU66_DETBUDGET WITH(NOLOCK) ")
      .riga(" WHERE   BU66_ID_BU65 = ", numero(scheda))
      .riga(" AND     BU66_TIPO = ", numero(static_cast<BdgTipoDettaglio>(bdgDettaglioBudget)))
      .riga(" AND     BU66_IMPORTO <> 0 ")
      .riga(" ORDER BY BU66_PERIODO, BU66_ID ");
  return ctx.connessione().Execute(sql);
}

}  // namespace

void BdgDupSchede_GeneraScadenze(Contesto& ctx, const PianoDuplicazione& piano, const Variant& scheda) {
  esegui(ctx, "BdgDupSchede_GeneraScadenze", [&] {
    const auto cashFlow = leggiCashFlow(ctx, scheda);
    if (cashFlow->RecordCount() < 1) return;
    const Condizioni condizioni = condizioniDi(*cashFlow);
    if (condizioni.aMano || !condizioni.indicate) return;
    const auto ultimi = ultimiGiorni(ctx, piano);
    const auto importi = leggiImporti(ctx, scheda);
    for (; !importi->Eof(); importi->MoveNext()) {
      const int periodo = intero(*importi, "BU66_PERIODO", 0);
      const auto fine = ultimi.find(periodo);
      if (fine == ultimi.end()) continue;
      if (!values::isBlank(condizioni.inizioValidita) && fine->second < values::toDate(condizioni.inizioValidita))
        continue;
      scriviRate(ctx, scheda, condizioni, periodo, fine->second, values::toDecimal((*importi)["BU66_IMPORTO"].Value()));
    }
  });
}

}  // namespace bukorval
