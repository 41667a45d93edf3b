#pragma once

#include <array>
#include <span>
#include <string_view>

#include "demo/Giornale.h"

namespace demo {

inline constexpr int kSedi = 3;

/// A cost or minor revenue that recurs: what the company plans for a year and how it is booked.
struct Voce {
  std::string_view conto, descrizione;
  int euroAnnui;  ///< revenue is negative
  Stagione stagione;
  std::array<int, kSedi> percentuali;  ///< share of each site
  std::string_view contropartita, contoIva;
  int clifor;  ///< supplier of a cost, customer of a revenue; 0 for neither
  int mesiCompetenza = 0;
};

std::span<const Voce> voci();

/// The plan of a year for the accounts that begin with a prefix; site 0 stands for all.
Mesi piano(int sede, std::string_view prefisso);

/// Books the recurring items of a year up to a month: a plan's amounts, a few per cent off.
void registraVoci(Giornale& giornale, Caso& caso, int anno, int finoAlMese);
/// Entries that budgets leave out: a transfer between accounts, forecasts, the simulated depreciation.
void registraParticolari(Giornale& giornale);

}  // namespace demo
