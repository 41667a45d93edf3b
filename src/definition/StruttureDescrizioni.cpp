#include <algorithm>
#include <string>

#include "definition/Colonne.h"
#include "definition/Strutture.h"
#include "frame/Trappola.h"
#include "values/Text.h"

/// The select list and the joins that put descriptions beside the codes of the budget grid.
namespace bukorval {
namespace {

using Elenco = std::vector<const Colonna*>;

/// Columns that the grid statement selects for every budget.
constexpr std::string_view kSemprePresenti[] = {"BU65_ID", "BU65_DITTA_CG18", "BU65_TIPOCF_CG44"};

bool presente(const Elenco& elenco, std::string_view nome) {
  return std::ranges::find(kSemprePresenti, nome) != std::end(kSemprePresenti) ||
         std::ranges::any_of(elenco, [&](const Colonna* colonna) { return colonna->nome == nome; });
}

/// A code whose table is keyed by a column that is not there could match several rows.
bool descrivibile(const Elenco& elenco, const Colonna& colonna) {
  if (!colonna.haDescrizione()) return false;
  return std::ranges::all_of(colonna.descrizione.altre, [&](const Chiave& chiave) {
    return !chiave.valore.starts_with("BU65_") || presente(elenco, chiave.valore);
  });
}

std::string prefisso(const Descrizione& descrizione) {
  return descrizione.alias.empty() ? std::string() : std::string(descrizione.alias) + ".";
}

/// "LEFT(BU65_CODART_MG66 + ' - ' + MG87_DESCART, 40) AS BU65_CODART_MG66_DESCR"
std::string espressione(const Colonna& colonna) {
  const auto& descrizione = colonna.descrizione;
  std::string codice(colonna.nome);
  if (!colonna.isTesto()) codice = "CONVERT(NVARCHAR(" + std::to_string(colonna.lunghezza) + "), " + codice + ")";
  std::string testo = prefisso(descrizione).append(descrizione.campo);
  if (const auto proprio = descrizione.diDitta.campo; !proprio.empty())
    testo = "ISNULL(" + std::string(proprio) + ", " + testo + ")";
  testo = "LEFT(" + codice + " + ' - ' + " + testo + ", " + std::to_string(kLarghezzaDescrizione) + ") AS ";
  return testo.append(colonna.nome).append("_DESCR");
}

/// "LEFT OUTER JOIN MG87_DESCRARTICOLI WITH (NOLOCK) ON MG87_CODART_MG66 = BU65_CODART_MG66 AND …"
template <class Fonte>
std::string joinCon(const Fonte& fonte, std::string_view alias, std::string_view colonna) {
  const std::string davanti = alias.empty() ? std::string() : std::string(alias) + ".";
  std::string testo = "LEFT OUTER JOIN " + std::string(fonte.tabella);
  if (!alias.empty()) testo.append(" AS ").append(alias);
  testo.append(" WITH (NOLOCK) ON ").append(davanti).append(fonte.codice).append(" = ").append(colonna);
  for (const auto& [campo, valore] : fonte.altre)
    if (!campo.empty()) testo.append(" AND ").append(davanti).append(campo).append(" = ").append(valore);
  return testo;
}

std::string join(const Colonna& colonna) {
  const auto& descrizione = colonna.descrizione;
  std::string testo = joinCon(descrizione, descrizione.alias, colonna.nome);
  if (!descrizione.diDitta.tabella.empty()) testo.append(" ").append(joinCon(descrizione.diDitta, {}, colonna.nome));
  return testo;
}

/// A line for each description, with no line break after the last one.
template <class Riga>
std::string righe(std::string_view elencoCampi, std::string_view indentazione, std::string_view inizio, Riga riga) {
  const auto elenco = colonneElenco(elencoCampi);
  std::string testo;
  for (const auto* colonna : elenco) {
    if (!descrivibile(elenco, *colonna)) continue;
    testo.append(testo.empty() ? "" : "\r\n").append(indentazione).append(inizio).append(riga(*colonna));
  }
  return testo;
}

}  // namespace

std::string Strutture::GetStringaCodiciDescrizioni(std::string_view elencoCampi, std::string_view indentazione) const {
  return esegui(ctx_, "GetStringaCodiciDescrizioni", std::string(),
                [&] { return righe(elencoCampi, indentazione, ", ", espressione); });
}

std::string Strutture::GetStringaJoinCodiciDescrizioni(std::string_view elencoCampi,
                                                       std::string_view indentazione) const {
  return esegui(ctx_, "GetStringaJoinCodiciDescrizioni", std::string(),
                [&] { return righe(elencoCampi, indentazione, "", join); });
}

}  // namespace bukorval
