#include "grid/CampiGriglia.h"

#include <array>
#include <string>
#include <utility>

#include "definition/Colonne.h"
#include "grid/Misure.h"

namespace bukorval {
namespace {

/// Digits in all, and after the point.
struct Formato {
  int cifre, decimali;
};
constexpr Formato kIdentificativo{10, 0};
constexpr Formato kImporto{15, 2};
constexpr Formato kQuantita{14, 3};
constexpr Formato kRapporto{15, 2};

/// A set being defined.
class Campi {
 public:
  void decimale(std::string_view nome, Formato formato, std::int32_t attributi = ado::adFldIsNullable) {
    auto& campo = insieme_->Fields().Append(nome, ado::adDecimal, 0, attributi);
    campo.Precision(formato.cifre);
    campo.NumericScale(formato.decimali);
  }
  void testo(std::string_view nome, int lunghezza) {
    insieme_->Fields().Append(nome, ado::adWChar, lunghezza, ado::adFldIsNullable);
  }
  ado::RecordsetPtr apri() {
    insieme_->CursorLocation = ado::adUseClient;
    insieme_->CursorType = ado::adOpenDynamic;
    insieme_->Open();
    return std::move(insieme_);
  }

 private:
  ado::RecordsetPtr insieme_ = std::make_shared<ado::Recordset>();
};

/// How the two grids differ in the columns of a measure.
struct Stile {
  Formato quantitaOrdini;
  bool forecastPerNumero;  ///< the three columns of a forecast stand together, not the forecasts of a column
};
constexpr Stile kStileBudget{kQuantita, true};
constexpr Stile kStilePeriodi{{15, 2}, false};

struct ColonnaForecast {
  std::string_view prima, dopo;
  bool rapporto;
};
constexpr std::array kColonneForecast{ColonnaForecast{"", "_FORECAST", false}, ColonnaForecast{"DELTA", "_FORE", false},
                                      ColonnaForecast{"DELTAPERC", "_FORE", true}};

void colonneForecast(Campi& campi, std::string_view misura, Formato valore, int numeroForecast, bool perNumero) {
  const auto aggiungi = [&](const ColonnaForecast& colonna, int n) {
    std::string nome(colonna.prima);
    nome.append(misura).append(colonna.dopo).append(std::to_string(n));
    campi.decimale(nome, colonna.rapporto ? kRapporto : valore);
  };
  if (perNumero) {
    for (int n = 1; n <= numeroForecast; ++n)
      for (const auto& colonna : kColonneForecast) aggiungi(colonna, n);
  } else {
    for (const auto& colonna : kColonneForecast)
      for (int n = 1; n <= numeroForecast; ++n) aggiungi(colonna, n);
  }
}

void colonneMisure(Campi& campi, int numeroForecast, const Stile& stile) {
  for (const auto& misura : kMisure) {
    const std::string nome(misura.nome);
    const bool importo = misura.colonna == kMisure.front().colonna;
    const auto valore = importo ? kImporto : kQuantita;
    campi.decimale(nome + "_BUDGET", valore);
    campi.decimale(nome + "_CONSUNTIVO", valore);
    campi.decimale("DELTA" + nome + "_CONS", valore);
    campi.decimale("DELTAPERC" + nome + "_CONS", kRapporto);
    campi.decimale(nome + "_ORDINI", importo ? kImporto : stile.quantitaOrdini);
    colonneForecast(campi, nome, valore, numeroForecast, stile.forecastPerNumero);
  }
}

void colonneAnalisi(Campi& campi, std::string_view elencoCampi) {
  for (const auto* colonna : colonneElenco(elencoCampi)) {
    if (colonna->isNumero())
      campi.decimale(colonna->nome, {colonna->lunghezza, 0});
    else
      campi.testo(colonna->nome, colonna->lunghezza);
    if (colonna->haDescrizione()) campi.testo(std::string(colonna->nome) + "_DESCR", kLarghezzaDescrizione);
  }
}

}  // namespace

ado::RecordsetPtr creaGrigliaBudget(std::string_view elencoCampi, int numeroForecast) {
  Campi campi;
  campi.decimale("BU65_ID", kIdentificativo, ado::adFldUnspecified);
  campi.decimale("BU65_DITTA_CG18", {5, 0}, ado::adFldUnspecified);
  campi.decimale("BU65_TIPOCF_CG44", {1, 0});
  colonneAnalisi(campi, elencoCampi);
  campi.decimale("FLGESISTECRITPREL", {2, 0});
  colonneMisure(campi, numeroForecast, kStileBudget);
  return campi.apri();
}

ado::RecordsetPtr creaGrigliaPeriodi(int numeroForecast) {
  Campi campi;
  campi.decimale("PERIODO", {2, 0}, ado::adFldUnspecified);
  campi.decimale("ID_BUDGET", kIdentificativo);
  campi.decimale("ID_CONSUNTIVO", kIdentificativo);
  campi.decimale("ID_ORDINI", kIdentificativo);
  for (int n = 1; n <= numeroForecast; ++n) campi.decimale("ID_FORECAST" + std::to_string(n), kIdentificativo);
  colonneMisure(campi, numeroForecast, kStilePeriodi);
  return campi.apri();
}

}  // namespace bukorval
