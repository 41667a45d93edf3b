#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <map>
#include <random>

#include "elaschede/TotaliMovimenti.h"
#include "support/ContestoDiProva.h"
#include "values/Conversion.h"

namespace bukorval {
namespace {

using values::Date;
using values::Decimal;
using values::Variant;

constexpr std::array kPeriodi = {12, 6, 4, 3, 2, 1};

/// One random movement and what it adds to each month, in cents, by counting days.
struct Movimento {
  std::vector<Variant> riga;
  std::map<int, std::int64_t> perRegistrazione, perCompetenza;
};

Movimento casuale(std::mt19937_64& caso, int tipoScheda) {
  const auto tra = [&](std::int64_t a, std::int64_t b) {
    return std::uniform_int_distribution<std::int64_t>(a, b)(caso);
  };
  const Date registrazione = Date::FromYmd(2011, 7, 1).addDays(static_cast<int>(tra(0, 365)));
  const bool documento = tra(0, 1) == 1;
  const Date dataDocumento = registrazione.addDays(static_cast<int>(tra(-60, 0)));
  const int rateo = tra(0, 9) == 0 ? 4 : 0;
  const int estremi = static_cast<int>(tra(0, 3));  // none, start only, end only, both
  const Date inizio = registrazione.addDays(static_cast<int>(tra(-400, 100)));
  const Date fine = inizio.addDays(static_cast<int>(tra(0, 900)));
  const int lato = static_cast<int>(tra(1, 2));
  const std::int64_t centesimi = tra(0, 19) == 0 ? 0 : tra(-10'000'000, 10'000'000);
  Movimento m;
  m.riga = {registrazione,
            documento ? Variant(dataDocumento) : Variant::Null(),
            estremi & 1 ? Variant(inizio) : Variant::Null(),
            estremi & 2 ? Variant(fine) : Variant::Null(),
            rateo,
            lato,
            Decimal::FromScaled(centesimi, 2)};
  const std::int64_t conSegno = (tipoScheda == 0 ? lato == 2 : lato == 1) ? -centesimi : centesimi;
  m.perRegistrazione[registrazione.month()] = conSegno;
  if (rateo == 4 || estremi == 0) {
    m.perCompetenza[(documento ? dataDocumento : registrazione).month()] = conSegno;
    return m;
  }
  const Date da = estremi & 1 ? inizio : fine;
  const Date a = estremi & 2 ? fine : inizio;
  std::map<int, std::int64_t> giorni;
  std::int64_t totale = 0;
  for (Date d = da; d <= a; d = d.addDays(1), ++totale) ++giorni[d.month()];
  std::int64_t resto = conSegno;
  for (const auto& [mese, quanti] : giorni) {
    const std::int64_t doppio = 2 * conSegno * quanti;
    const std::int64_t quota = doppio < 0 ? -((-doppio + totale) / (2 * totale)) : (doppio + totale) / (2 * totale);
    m.perCompetenza[mese] = quota;
    resto -= quota;
  }
  m.perCompetenza[a.month()] += resto;
  return m;
}

TEST(TotaliMovimenti, RandomCardsEqualACountInIntegers) {
  std::mt19937_64 caso(4041);
  for (int giro = 0; giro < 120; ++giro) {
    testing_support::ContestoDiProva prova;
    auto& dati = prova.ctx.dati;
    dati.periodicita = giro % 6;
    const int periodi = kPeriodi[static_cast<std::size_t>(giro % 6)];
    const int primoMese = giro % 2 == 0 ? 1 : 7;
    dati.numeroPeriodi = periodi;
    dati.fiscaleSolare = 0;
    dati.dataInizio = Date::FromYmd(2011, primoMese, 1);
    dati.periodoIniziale = 1;
    dati.periodoFinale = periodi;
    prova.prop.BdgTipoScheda = giro % 4 < 2 ? 0 : 1;
    PeriodiElaborazione elaborazione;
    elaborazione.daElaborare = std::make_shared<ado::Dictionary>();
    GetDictPeriodiDaElaborare(prova.ctx, elaborazione);
    ASSERT_EQ(prova.ctx.stato(), bdgStatoOk) << prova.ctx.errore();
    EXPECT_EQ(elaborazione.daElaborare->Count(), static_cast<std::size_t>(periodi));

    std::vector<std::vector<Variant>> righe;
    std::array<std::map<int, std::int64_t>, 2> attesi;
    const auto periodoDi = [&](int mese) { return (mese - primoMese + 12) % 12 / (12 / periodi) + 1; };
    for (int i = 0; i < 40; ++i) {
      const auto movimento = casuale(caso, giro % 4 < 2 ? 0 : 1);
      righe.push_back(movimento.riga);
      for (const auto& [mese, importo] : movimento.perRegistrazione) attesi[0][periodoDi(mese)] += importo;
      for (const auto& [mese, importo] : movimento.perCompetenza)
        if (importo != 0 || movimento.perCompetenza.size() == 1) attesi[1][periodoDi(mese)] += importo;
    }
    const auto movimenti =
        testing_support::rows({"CG41_DATAREG", "CG41_DATADOC", "CG42_DATAINICOMP", "CG42_DATAFINCOMP", "CG42_INDRATRIS",
                               "CG42_INDDAAV", "CG42_IMPTOTALE"},
                              righe);
    for (const int tipoData : {0, 1}) {
      const auto totali = BdgElaSchede_GetRstBdgSchedeConsuntiviDaElaborare(prova.ctx);
      if (tipoData == 0)
        BdgElaSchede_GetTotaliMovimentiPerPeriodo(prova.ctx, elaborazione, *totali, *movimenti);
      else
        BdgElaSchede_GetTotaliMovimentiPerPeriodoDiCompetenza(prova.ctx, elaborazione, *totali, *movimenti);
      ASSERT_EQ(prova.ctx.stato(), bdgStatoOk) << prova.ctx.errore();
      for (totali->MoveFirst(); !totali->Eof(); totali->MoveNext()) {
        const int periodo = values::toInt32((*totali)["PERIODO"].Value());
        const auto atteso = attesi[static_cast<std::size_t>(tipoData)].find(periodo);
        const auto& importo = (*totali)["IMPORTO"].Value();
        const std::int64_t centesimi = importo.isNull() ? 0 : values::toDecimal(importo).toScaled(2).value();
        EXPECT_EQ(centesimi, atteso == attesi[static_cast<std::size_t>(tipoData)].end() ? 0 : atteso->second)
            << "round " << giro << " date kind " << tipoData << " period " << periodo;
      }
    }
  }
}

TEST(TotaliMovimenti, ARangeAcrossTheTurnOfTheYearIsEnteredDownwards) {
  testing_support::ContestoDiProva prova;
  auto& dati = prova.ctx.dati;
  dati.numeroPeriodi = 12;
  dati.fiscaleSolare = 1;
  dati.dataInizio = Date::FromYmd(2011, 7, 1);
  dati.periodoIniziale = 7;
  dati.periodoFinale = 6;
  const auto periodi = [&](Variant da, Variant a) {
    prova.prop.DaData = da;
    prova.prop.AData = a;
    PeriodiElaborazione elaborazione;
    elaborazione.daElaborare = std::make_shared<ado::Dictionary>();
    GetDictPeriodiDaElaborare(prova.ctx, elaborazione);
    std::string testo;
    for (const auto& chiave : elaborazione.daElaborare->Keys()) testo += values::toPlainText(chiave) + " ";
    return testo;
  };
  EXPECT_EQ(periodi(Date::FromYmd(2011, 11, 1), Date::FromYmd(2012, 2, 29)), "11 10 9 8 7 6 5 4 3 2 ");
  EXPECT_EQ(periodi(Date::FromYmd(2011, 9, 1), Date::FromYmd(2011, 11, 30)), "9 10 11 ");
  EXPECT_EQ(periodi(Date::FromYmd(2011, 1, 1), Date::FromYmd(2012, 6, 30)), "7 6 ");
  EXPECT_EQ(periodi({}, Date::FromYmd(2012, 6, 30)), "7 6 ");
}

}  // namespace
}  // namespace bukorval
