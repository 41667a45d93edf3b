#include <string_view>

#include "host/output/Formats.h"
#include "values/Conversion.h"
#include "values/Text.h"

namespace bukorval::host {
namespace {

/// Exactly `decimali` decimals, with a point.
std::string conDecimali(const values::Decimal& numero, int decimali) {
  std::string testo = numero.rounded(decimali).toString();
  const auto punto = testo.find('.');
  auto presenti = punto == std::string::npos ? 0 : testo.size() - punto - 1;
  if (presenti == 0 && decimali > 0) testo += '.';
  for (; presenti < static_cast<std::size_t>(decimali); ++presenti) testo += '0';
  return testo;
}

/// 1234567.89 as 1.234.567,89 (or 1,234,567.89 with a point as the decimal sign).
std::string raggruppa(std::string_view numero, char separatore) {
  const auto punto = numero.find('.');
  const auto intero = numero.substr(0, punto);
  const std::size_t segno = intero.starts_with('-') ? 1 : 0;
  std::string testo(intero.substr(0, segno));
  for (std::size_t i = segno; i < intero.size(); ++i) {
    if (i > segno && (intero.size() - i) % 3 == 0) testo += separatore == ',' ? '.' : ',';
    testo += intero[i];
  }
  if (punto != std::string_view::npos) testo.append(1, separatore).append(numero.substr(punto + 1));
  return testo;
}

std::string dataIso(const values::Date& data) {
  const std::string cifre = data.toSql();
  std::string testo = cifre.substr(0, 4) + "-" + cifre.substr(4, 2) + "-" + cifre.substr(6, 2);
  if (data.hasTime()) testo += "T" + cifre.substr(9);
  return testo;
}

}  // namespace

std::string testoUmano(const values::Variant& valore, const Colonna& colonna, char separatore) {
  if (valore.isNothing()) return "";
  if (const auto* logico = valore.get_if<bool>()) return *logico ? "Sì" : "No";
  if (!colonna.numero || !valore.isNumber()) return std::string(values::rtrim(values::toText(valore, separatore)));
  const auto numero = values::toDecimal(valore);
  if (colonna.percentuale) {
    return raggruppa(conDecimali(numero * values::Decimal::FromScaled(100), colonna.decimali - 2), separatore);
  }
  // Codes and identifiers are numbers that nobody groups.
  const std::string testo = conDecimali(numero, colonna.decimali);
  return colonna.decimali == 0 ? testo : raggruppa(testo, separatore);
}

std::string testoPiano(const values::Variant& valore, const Colonna& colonna) {
  if (valore.isNothing()) return "";
  if (const auto* logico = valore.get_if<bool>()) return *logico ? "true" : "false";
  if (const auto* data = valore.get_if<values::Date>()) return dataIso(*data);
  if (valore.isNumber() && colonna.decimali > 0) return conDecimali(values::toDecimal(valore), colonna.decimali);
  return values::toPlainText(valore);
}

}  // namespace bukorval::host
