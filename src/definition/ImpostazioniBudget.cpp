#include "definition/ImpostazioniBudget.h"

#include <iterator>
#include <string>
#include <tuple>
#include <utility>

#include "definition/RigaDefinizione.h"
#include "frame/BudgetAnno.h"
#include "frame/TestoSql.h"
#include "frame/Trappola.h"
#include "values/Arithmetic.h"
#include "values/Conversion.h"

namespace bukorval {
namespace {

using values::nvl;
using values::Variant;

/// One reader of the definition's row: its name in error texts and the fragments of its statement.
struct Lettura {
  std::string_view nome, select, from, tipo, sottoTipo;
  std::string_view fineRiga;       ///< after each line
  bool sottoTipoRiempito = false;  ///< subtype padded to its column's width
};

constexpr std::string_view kContinua = "";
constexpr std::string_view kACapo = "\r\n";

// clang-format off
constexpr Lettura kGestioneSede{"GetGestioneSede",
    "SELECT BU01_FLGSEDI ",
    " FROM BU01_ANABUDGET WITH (NOLOCK) ",
    " WHERE BU01_INDTIPO = ",
    " AND BU01_SOTTOTIPO = ", kContinua};
constexpr Lettura kFiscaleSolare{"GetAnnoBudgetFiscaleSolare",
    " SELECT BU01_INDPERFISO ",
    " FROM   BU01_ANABUDGET WITH (NOLOCK) ",
    " WHERE  BU01_INDTIPO = ",
    " AND    BU01_SOTTOTIPO = ", kContinua};
constexpr Lettura kGestioneMastri{"GetIsGestioneMastri",
    " SELECT BU01_FLGMASTRO ",
    " FROM   BU01_ANABUDGET WITH (NOLOCK)",
    " WHERE  BU01_INDTIPO = ",
    " AND    BU01_SOTTOTIPO = ", kACapo};
constexpr Lettura kGestioneQta{"GetGestioneQta",
    " SELECT BU01_FLGGESQTA, BU01_FLGGESQTA2 ",
    " FROM   BU01_ANABUDGET WITH (NOLOCK)",
    " WHERE  BU01_INDTIPO = ",
    " AND    BU01_SOTTOTIPO = ", kACapo, true};
constexpr Lettura kPeriodicita{"GetPeriodicitaBudget",
    " SELECT BU01_INDPERIODO ",
    " FROM  BU01_ANABUDGET WITH (NOLOCK) ",
    " WHERE BU01_INDTIPO = ",
    " AND   BU01_SOTTOTIPO = ", kContinua};
constexpr Lettura kNumeroForecast{"GetNumeroForecast",
    " SELECT BU01_NUMFORECAST ",
    " FROM   BU01_ANABUDGET WITH (NOLOCK) ",
    " WHERE  BU01_INDTIPO = ",
    " AND    BU01_SOTTOTIPO = ", kContinua};
constexpr Lettura kMultiAttivita{"GetTipoGestioneMultiAttivita",
    " SELECT BU01_INDMULTIATTIVITA ",
    " FROM   BU01_ANABUDGET WITH (NOLOCK) ",
    " WHERE  BU01_INDTIPO = ",
    " AND    BU01_SOTTOTIPO = ", kContinua};
constexpr Lettura kTipoPdc{"GetTipoPdC",
    "SELECT BU01_INDTIPOPDC ",
    "FROM BU01_ANABUDGET WITH (NOLOCK) ",
    "WHERE BU01_INDTIPO = ",
    "  AND BU01_SOTTOTIPO = ", kContinua, true};
constexpr Lettura kCodicePdc{"GetCodicePdC",
    " SELECT \r\n"
    "   CASE WHEN BU01_INDTIPOPDC = 2 THEN BU01_CODICE_CG21 \r\n"
    "        WHEN BU01_INDTIPOPDC = 3 THEN BU01_CODICE_PC01 \r\n"
    "   END AS CODICEPDC ",
    " FROM  BU01_ANABUDGET WITH (NOLOCK) ",
    " WHERE BU01_INDTIPO = ",
    " AND   BU01_SOTTOTIPO = ", kACapo, true};
// clang-format on

std::string testo(const Lettura& lettura, const std::string& tipo, const std::string& sottoTipo) {
  const auto& fine = lettura.fineRiga;
  TestoSql sql;
  sql.testo(lettura.select, fine)
      .testo(lettura.from, fine)
      .testo(lettura.tipo, tipo, fine)
      .testo(lettura.sottoTipo, sottoTipo, fine);
  return sql.str();
}

/// Runs a reader; `converti` makes the answer from the fields of the row.
template <class Risultato, class Converti>
Risultato leggi(Contesto& ctx, const Lettura& lettura, BdgTipo tipo, const Variant& sottoTipo, Risultato predefinito,
                Risultato senzaRiga, Converti converti) {
  return esegui(ctx, lettura.nome, predefinito, [&]() -> Risultato {
    const auto numeroTipo = numero(tipo);
    const auto codice =
        lettura.sottoTipoRiempito ? apiciRiempiti(sottoTipo, kLarghezzaSottoTipo) : testoDati(sottoTipo);
    const auto rs = rigaDefinizione(ctx, testo(lettura, numeroTipo, codice), numeroTipo, codice);
    if (rs->RecordCount() == 0) return senzaRiga;
    rs->MoveFirst();
    return converti(rs->Fields());
  });
}

bool acceso(const Variant& valore) { return values::compare(nvl(valore, 0), 0) != 0; }

}  // namespace

void ImpostazioniBudget::GetGestioneSede(BdgTipo tipo, const Variant& sottoTipo, bool& flag) const {
  flag = leggi(ctx_, kGestioneSede, tipo, sottoTipo, false, false,
               [](const ado::Fields& riga) { return acceso(riga.Item("BU01_FLGSEDI").Value()); });
}

void ImpostazioniBudget::GetGestioneQta(BdgTipo tipo, const Variant& sottoTipo, bool& qta1, bool& qta2) const {
  using Flags = std::pair<bool, bool>;
  std::tie(qta1, qta2) = leggi(ctx_, kGestioneQta, tipo, sottoTipo, Flags{}, Flags{}, [](const ado::Fields& riga) {
    return Flags{acceso(riga.Item("BU01_FLGGESQTA").Value()), acceso(riga.Item("BU01_FLGGESQTA2").Value())};
  });
}

bool ImpostazioniBudget::GetIsGestioneMastri(BdgTipo tipo, const Variant& sottoTipo) const {
  return leggi(ctx_, kGestioneMastri, tipo, sottoTipo, false, false,
               [](const ado::Fields& riga) { return values::toBool(nvl(riga.Item("BU01_FLGMASTRO").Value(), 0)); });
}

BdgPeriodoFiscaleSolare ImpostazioniBudget::GetAnnoBudgetFiscaleSolare(BdgTipo tipo, const Variant& sottoTipo) const {
  return leggi(ctx_, kFiscaleSolare, tipo, sottoTipo, BdgPeriodoFiscaleSolare{1}, BdgPeriodoFiscaleSolare{1},
               [](const ado::Fields& riga) { return values::toInt32(nvl(riga.Item("BU01_INDPERFISO").Value(), 0)); });
}

std::int16_t ImpostazioniBudget::GetPeriodicitaBudget(BdgTipo tipo, const Variant& sottoTipo) const {
  return leggi(ctx_, kPeriodicita, tipo, sottoTipo, std::int16_t{0}, kPeriodicitaSenzaBudget,
               [](const ado::Fields& riga) { return values::toInt16(nvl(riga.Item("BU01_INDPERIODO").Value(), "")); });
}

std::int16_t ImpostazioniBudget::GetNumeroForecast(BdgTipo tipo, const Variant& sottoTipo) const {
  return leggi(ctx_, kNumeroForecast, tipo, sottoTipo, kForecastPredefiniti, kForecastPredefiniti,
               [](const ado::Fields& riga) {
                 return values::toInt16(nvl(riga.Item("BU01_NUMFORECAST").Value(), kForecastPredefiniti));
               });
}

std::int16_t ImpostazioniBudget::GetTipoGestioneMultiAttivita(BdgTipo tipo, const Variant& sottoTipo) const {
  return leggi(ctx_, kMultiAttivita, tipo, sottoTipo, std::int16_t{0}, std::int16_t{0}, [](const ado::Fields& riga) {
    return values::toInt16(nvl(riga.Item("BU01_INDMULTIATTIVITA").Value(), ""));
  });
}

BdgTipoPdc ImpostazioniBudget::GetTipoPdC(BdgTipo tipo, const Variant& sottoTipo) const {
  constexpr BdgTipoPdc kCoGe = bdgPdcCoGe;
  if (tipo != bdgTipoMastri) return esegui(ctx_, kTipoPdc.nome, kCoGe, [] { return kCoGe; });
  return leggi(ctx_, kTipoPdc, bdgTipoMastri, sottoTipo, kCoGe, BdgTipoPdc{0},
               [](const ado::Fields& riga) { return values::toInt32(riga.Item("BU01_INDTIPOPDC").Value()); });
}

Variant ImpostazioniBudget::GetCodicePdC(BdgTipo tipo, const Variant& sottoTipo) const {
  if (ctx_.dati.tipoPdc != bdgPdcCoGe)
    return leggi(ctx_, kCodicePdc, tipo, sottoTipo, Variant(), Variant(0),
                 [](const ado::Fields& riga) { return riga.Item("CODICEPDC").Value(); });
  return esegui(ctx_, kCodicePdc.nome, Variant(), [&] {
    auto& codice = ctx_.prop.CodicePdcCoGeDitta;
    if (values::isBlank(codice)) codice = ctx_.sessione().CodicePdcCoGe();
    return codice;
  });
}

BdgNatura ImpostazioniBudget::GetNaturaBudget(BdgTipo tipo) const {
  constexpr BdgNatura kNature[] = {1, 1, 0, 2, 0, 0, 1, 1, 1, 2};
  return esegui(ctx_, "GetNaturaBudget", BdgNatura{0}, [&]() -> BdgNatura {
    const auto posizione = static_cast<std::size_t>(tipo);
    return posizione < std::size(kNature) ? kNature[posizione] : 0;
  });
}

}  // namespace bukorval
