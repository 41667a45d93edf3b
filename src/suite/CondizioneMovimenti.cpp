#include "suite/CondizioneMovimenti.h"

#include <algorithm>
#include <span>
#include <utility>
#include <variant>

#include "tsql/Lexer.h"
#include "tsql/Names.h"
#include "tsql/Parser.h"
#include "tsql/Walk.h"
#include "values/Errore.h"

namespace suite {
namespace {

// clang-format off
constexpr std::string_view kPrimaNota[] = {
    "CG41_DITTA_CG18", "CG41_NUMREG", "CG41_DATAREG", "CG41_ANNO_CG19", "CG41_PROGESER_CG19", "CG41_INDPROVREG",
    "CG41_CODICE_CG31", "CG41_INDTIPOMOV", "CG41_DATADOC", "CG41_NUMDOC", "CG41_DITTACF_CG18", "CG41_TIPOCF_CG44",
    "CG41_CLIFOR_CG44", "CG41_DESCR", "CG41_FLGRETTIF"};
constexpr std::string_view kMovimenti[] = {
    "CG42_DITTA_CG18", "CG42_NUMREG_CG41", "CG42_NUMRIGACONT", "CG42_GRUPPO_CG10", "CG42_CONTOPAR_CG24",
    "CG42_INDTIPOOPER", "CG42_INDDAAV", "CG42_IMPTOTALE", "CG42_FLGCOMP", "CG42_INDRATRIS", "CG42_DATAINICOMP",
    "CG42_DATAFINCOMP", "CG42_CODICE_CG31", "CG42_CODICE_CG33"};
// clang-format on

struct Tabella {
  std::string_view nome;
  std::span<const std::string_view> colonne;
};
constexpr Tabella kTabelle[] = {{"CG41_PRIMANOTA", kPrimaNota}, {"CG42_MOVCONT", kMovimenti}};

bool deiMovimenti(const tsql::ColumnName& colonna) {
  return std::ranges::any_of(kTabelle, [&](const Tabella& tabella) {
    return (colonna.qualifier.empty() || tsql::sameName(colonna.qualifier, tabella.nome)) &&
           std::ranges::any_of(tabella.colonne, [&](auto nome) { return tsql::sameName(nome, colonna.name); });
  });
}

/// What stands between the tokens is blanks, the N of a text, or a comment.
bool haCommenti(const tsql::Scan& scan, std::string_view testo) {
  std::size_t fine = 0;
  return std::ranges::any_of(scan.tokens, [&](const tsql::Token& token) {
    const auto prima = testo.substr(fine, token.offset - fine);
    const std::size_t virgolette = token.kind == tsql::Token::Kind::QuotedName ? 2 : 0;
    fine = token.offset + token.text.size() + virgolette;
    return prima.find_first_of("-/") != std::string_view::npos;
  });
}

/// Whether it is true or false, rather than a value.
bool veraOFalsa(const tsql::Expression& e) {
  if (const auto* logica = e.as<tsql::Logic>()) return veraOFalsa(*logica->left) && veraOFalsa(*logica->right);
  if (const auto* negazione = e.as<tsql::Not>()) return veraOFalsa(*negazione->operand);
  return e.as<tsql::Comparison>() || e.as<tsql::InList>() || e.as<tsql::Between>() || e.as<tsql::Like>() ||
         e.as<tsql::IsNull>() || e.as<tsql::InQuery>() || e.as<tsql::Exists>();
}

/// Looks at every part of a condition and keeps the first objection.
class Esame {
 public:
  void guarda(const tsql::Expression& e) {
    if (!motivo_ && &e != parteDiData_) std::visit([&](const auto& nodo) { obietta(nodo); }, e.node);
  }
  std::optional<std::string> motivo() && { return std::move(motivo_); }

 private:
  template <class Nodo>
  void obietta(const Nodo&) {}
  void obietta(const tsql::InQuery&) { motivo_ = kSottointerrogazione; }
  void obietta(const tsql::Exists&) { motivo_ = kSottointerrogazione; }
  void obietta(const tsql::ScalarQuery&) { motivo_ = kSottointerrogazione; }
  void obietta(const tsql::Star&) { motivo_ = "l'asterisco non è una colonna"; }
  void obietta(const tsql::LastIdentity&) { motivo_ = kVariabile; }
  void obietta(const tsql::Variable&) { motivo_ = kVariabile; }
  void obietta(const tsql::ColumnName& colonna) {
    if (deiMovimenti(colonna)) return;
    const auto prefisso = colonna.qualifier.empty() ? std::string() : colonna.qualifier + ".";
    motivo_ = "la colonna " + prefisso + colonna.name + " non è dei movimenti";
  }
  void obietta(const tsql::Call& chiamata) {
    using tsql::Function;
    const bool totale = tsql::isAggregate(chiamata.function) || chiamata.star || chiamata.distinct;
    if (totale || chiamata.function == Function::Unknown) {
      motivo_ = "la funzione " + chiamata.name + " non è ammessa";
    } else if (chiamata.function == Function::DateAdd || chiamata.function == Function::DateDiff) {
      segnaParteDiData(chiamata);
    }
  }
  /// Its first argument, "day", looks like a column.
  void segnaParteDiData(const tsql::Call& chiamata) {
    if (chiamata.arguments.empty()) return;
    const auto* nome = chiamata.arguments.front()->as<tsql::ColumnName>();
    if (nome && nome->qualifier.empty()) parteDiData_ = chiamata.arguments.front().get();
  }

  static constexpr const char* kSottointerrogazione = "contiene una sottointerrogazione";
  static constexpr const char* kVariabile = "contiene una variabile";
  std::optional<std::string> motivo_;
  const tsql::Expression* parteDiData_ = nullptr;  ///< looked at right after its call
};

}  // namespace

std::optional<std::string> rifiutoCondizioneMovimenti(std::string_view condizione) {
  try {
    const auto scan = tsql::scan(condizione);
    if (haCommenti(scan, condizione)) return "contiene un commento";
    const auto albero = tsql::Parser(scan).condition();
    if (!veraOFalsa(*albero)) return "è un valore e non una condizione";
    Esame esame;
    tsql::walkExpressions(*albero, [&](const tsql::Expression& e) { esame.guarda(e); });
    return std::move(esame).motivo();
  } catch (const values::Errore& e) {
    return "non si legge: " + std::string(e.what());
  }
}

}  // namespace suite
