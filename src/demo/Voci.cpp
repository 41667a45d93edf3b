#include "demo/Voci.h"

namespace demo {
namespace {

constexpr int kPercentoIva = 22;
constexpr std::string_view kFornitori = "24010001", kPersonale = "24030001", kBanca = "18010001", kClienti = "14010001";
constexpr std::string_view kIvaCredito = "14020001", kIvaDebito = "24020001", kSenzaIva = "";

// clang-format off
constexpr Voce kVoci[] = {
    {"61010001", "Fattura acciaio",               1900000, kConAgosto,   {60, 40, 0},  kFornitori, kIvaCredito, 212},
    {"61010002", "Fattura alluminio",              640000, kConAgosto,   {35, 65, 0},  kFornitori, kIvaCredito, 212},
    {"62010001", "Bolletta energia elettrica",     384000, kCostante,    {55, 38, 7},  kFornitori, kIvaCredito, 201},
    {"62010002", "Bolletta gas metano",            126000, kInvernale,   {58, 42, 0},  kFornitori, kIvaCredito, 201},
    {"62010003", "Bolletta acqua",                  18000, kTrimestrale, {50, 40, 10}, kFornitori, kIvaCredito, 201},
    {"62020001", "Manutenzione impianti",          148000, kConAgosto,   {52, 48, 0},  kFornitori, kIvaCredito, 202},
    {"62020002", "Manutenzione fabbricati",         36000, kTrimestrale, {40, 40, 20}, kFornitori, kIvaCredito, 202},
    {"62030001", "Consulenza tecnica",              96000, kCostante,    {70, 30, 0},  kFornitori, kIvaCredito, 203},
    {"62030003", "Consulenza amministrativa",       60000, kTrimestrale, {100, 0, 0},  kFornitori, kIvaCredito, 203},
    {"62040001", "Campagna pubblicitaria",          85000, kCostante,    {80, 20, 0},  kFornitori, kIvaCredito, 204},
    {"62040002", "Partecipazione a fiera",         110000, kFiere,       {75, 25, 0},  kFornitori, kIvaCredito, 204},
    {"62050001", "Telefonia e dati",                42000, kCostante,    {45, 35, 20}, kFornitori, kIvaCredito, 205},
    {"62050002", "Premio di assicurazione",         74000, kSemestrale,  {50, 35, 15}, kFornitori, kSenzaIva,   206, 6},
    {"62050003", "Pulizie e vigilanza",             66000, kCostante,    {48, 36, 16}, kFornitori, kIvaCredito, 207},
    {"62050004", "Viaggi e trasferte",              58000, kConAgosto,   {60, 30, 10}, kFornitori, kIvaCredito, 208},
    {"63010001", "Canone di affitto",              132000, kTrimestrale, {0, 60, 40},  kFornitori, kIvaCredito, 209, 3},
    {"63010002", "Noleggio autovetture",            48000, kCostante,    {50, 30, 20}, kFornitori, kIvaCredito, 210},
    {"64010001", "Salari e stipendi",             1850000, kMensilita,   {55, 37, 8},  kPersonale, kSenzaIva,   0},
    {"64010002", "Oneri sociali",                  560000, kMensilita,   {55, 37, 8},  kPersonale, kSenzaIva,   0},
    {"64010003", "Quota TFR",                      128000, kCostante,    {55, 37, 8},  kPersonale, kSenzaIva,   0},
    {"64010004", "Corso di formazione",             24000, kTrimestrale, {60, 40, 0},  kFornitori, kIvaCredito, 211},
    {"66010001", "Tributi locali",                  39000, kSemestrale,  {50, 35, 15}, kBanca,     kSenzaIva,   0},
    {"71020001", "Montaggi e collaudi",           -210000, kConAgosto,   {40, 60, 0},  kClienti,   kIvaDebito,  102},
    {"72010001", "Affitto capannone",              -36000, kTrimestrale, {100, 0, 0},  kClienti,   kIvaDebito,  105, 3},
};
// clang-format on

constexpr Centesimi kCentesimi = 100;

Mesi pianoVoce(const Voce& voce, int sede) {
  const int quota = voce.percentuali[static_cast<std::size_t>(sede - 1)];
  return ripartisci(percento(voce.euroAnnui * kCentesimi, quota), voce.stagione);
}

void registraVoce(Giornale& giornale, const Voce& voce, int sede, const values::Date& data, Centesimi importo) {
  const Centesimi iva = voce.contoIva.empty() ? 0 : percento(importo, kPercentoIva);
  std::vector<Riga> righe{{std::string(voce.conto), importo, voce.mesiCompetenza}};
  if (iva != 0) righe.push_back({std::string(voce.contoIva), iva});
  righe.push_back({std::string(voce.contropartita), -importo - iva});
  const int tipoCliFor = voce.euroAnnui < 0 ? kTipoCliente : kTipoFornitore;
  giornale.registra({data, sede, voce.descrizione, tipoCliFor, voce.clifor}, righe);
}

}  // namespace

std::span<const Voce> voci() { return kVoci; }

Mesi piano(int sede, std::string_view prefisso) {
  Mesi totale{};
  for (const auto& voce : kVoci) {
    if (!voce.conto.starts_with(prefisso)) continue;
    for (int s = 1; s <= kSedi; ++s) {
      if (sede != 0 && s != sede) continue;
      const auto mesi = pianoVoce(voce, s);
      for (std::size_t m = 0; m < mesi.size(); ++m) totale[m] += mesi[m];
    }
  }
  return totale;
}

void registraVoci(Giornale& giornale, Caso& caso, int anno, int finoAlMese) {
  for (int mese = 1; mese <= finoAlMese; ++mese) {
    for (const auto& voce : kVoci) {
      for (int sede = 1; sede <= kSedi; ++sede) {
        const auto previsto = pianoVoce(voce, sede)[static_cast<std::size_t>(mese - 1)];
        if (previsto == 0) continue;
        const auto importo = previsto * caso.tra(9350, 10720) / 10000;
        registraVoce(giornale, voce, sede, values::Date::FromYmd(anno, mese, caso.tra(5, 26)), importo);
      }
    }
  }
}

void registraParticolari(Giornale& giornale) {
  using values::Date;
  giornale.registra({Date::FromYmd(2025, 3, 31), 1, "Giroconto tra voci di energia"},
                    {{"62010001", 100000, 0, "150"}, {"62010001", -100000, 0, "151"}});
  for (int sede = 1; sede <= kSedi; ++sede)
    giornale.registra({Date::FromYmd(2025, 10, 31), sede, "Previsione energia elettrica", kTipoFornitore, 201, 2},
                      {{"62010001", 1750000 / sede}, {std::string(kFornitori), -(1750000 / sede)}});
  for (int anno = 2024; anno <= 2025; ++anno)
    giornale.registra({Date::FromYmd(anno, 12, 31), 1, "Ammortamento simulato", kTipoFornitore, 0, 0, 3},
                      {{"65010001", 28500000}, {"25010001", -28500000}});
}

}  // namespace demo
