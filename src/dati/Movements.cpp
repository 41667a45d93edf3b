#include "dati/Movements.h"

#include <algorithm>
#include <deque>
#include <limits>
#include <map>
#include <optional>
#include <tuple>
#include <unordered_map>
#include <utility>

#include "elaschede/TotaliMovimenti.h"
#include "frame/TestoSql.h"
#include "values/Conversion.h"
#include "values/Errore.h"
#include "values/Text.h"

namespace bukorval::dati {
namespace {

using values::Decimal;

constexpr const char* kUsableCode = "CG42_CODICE_CG33 NOT IN ('150 ', '151 ')";

std::string holds(const std::string& condition) { return "CASE WHEN " + condition + " THEN 1 ELSE 0 END"; }

/// What tells to which group a line belongs, and its amount and dates.
TestoSql& addLine(TestoSql& sql, const MovementScope& scope) {
  return sql
      .riga(" SELECT CG42_GRUPPO_CG10, CG42_CONTOPAR_CG24, CG41_CODICE_CG31, CG41_TIPOCF_CG44, CG41_CLIFOR_CG44, ")
      .riga("        CG41_INDTIPOMOV, CG42_INDDAAV, CG42_IMPTOTALE, CG41_DATAREG, ")
      .riga("        ", holds("(" + condizioneMovimenti(scope.condition) + ")"), " AS AMMESSO, ")
      .riga("        ", holds(kUsableCode), " AS UTILE ");
}

/// What decides to which months it belongs by competence.
TestoSql& addCompetence(TestoSql& sql) {
  return sql.riga("      , CG41_DATADOC, CG42_DATAINICOMP, CG42_DATAFINCOMP, CG42_INDRATRIS ");
}

/// The lines of registrations, from FROM.
TestoSql& addTables(TestoSql& sql) {
  return sql.riga(" FROM   CG42_MOVCONT WITH (NOLOCK) ")
      .riga(" INNER JOIN CG41_PRIMANOTA WITH (NOLOCK) ")
      .riga("    ON  CG42_DITTA_CG18 = CG41_DITTA_CG18 AND CG42_NUMREG_CG41 = CG41_NUMREG ");
}

std::string yearCondition(const MovementScope& scope) {
  return "CG41_ANNO_CG19 = " + numero(scope.year) + " AND CG41_PROGESER_CG19 = " + numero(scope.progressive);
}

std::string recordedInYear(const MovementScope& scope) { return yearCondition(scope) + " AND CG41_INDPROVREG = 0"; }

/// When a line begins and ends.
struct LineDates {
  const char *begin, *end;
};
constexpr LineDates kRegistered{"CG41_DATAREG", "CG41_DATAREG"};
/// Like the elaboration sees it.
constexpr LineDates kCompetence{"ISNULL(ISNULL(CG42_DATAINICOMP, CG41_DATADOC), CG41_DATAREG)",
                                "ISNULL(ISNULL(CG42_DATAFINCOMP, CG41_DATADOC), CG41_DATAREG)"};
/// The same as kRegistered, with nothing for an index to find.
constexpr LineDates kRegisteredReadAll{"ISNULL(CG41_DATAREG, CG41_DATADOC)", "ISNULL(CG41_DATAREG, CG41_DATADOC)"};

/// The scope's dates touch a line.
std::string datesCondition(const MovementScope& scope, const LineDates& dates) {
  return std::string(dates.end) + " >= '" + scope.from.toSql() + "' AND " + dates.begin + " <= '" + scope.to.toSql() +
         "'";
}

std::string lineText(const MovementScope& scope, bool byCompetence) {
  TestoSql sql;
  addLine(sql, scope);
  if (byCompetence) addCompetence(sql);
  // Nearly all lines are read, so the cheapest is to go through the registrations by number and the lines of each. A
  // planner without statistics does so when no index seems to help: neither the company's nor the days'.
  addTables(sql)
      .riga(" WHERE  CG41_DITTA_CG18 + 0 = ", numero(scope.company))
      .riga(" AND    ", recordedInYear(scope))
      .testo(" AND    ", datesCondition(scope, byCompetence ? kCompetence : kRegisteredReadAll));
  return sql.str();
}

std::string rowText(const MovementScope& scope, bool byCompetence, const MovementSelection& selection) {
  const auto& dates = byCompetence ? kCompetence : kRegistered;
  TestoSql sql;
  addCompetence(addLine(sql, scope))
      .riga("      , ", holds(yearCondition(scope)), " AS DELLANNO, ", holds(datesCondition(scope, dates)),
            " AS NELLEDATE ")
      .riga("      , CG41_INDPROVREG, CG41_NUMREG, CG42_NUMRIGACONT, CG41_NUMDOC, CG41_DESCR ");
  addTables(sql).riga(" WHERE  CG41_DITTA_CG18 = ", numero(scope.company));
  if (selection.others)
    sql.riga(" AND    ((", datesCondition(scope, dates), ") OR (", datesCondition(scope, kRegistered), ")) ");
  else
    sql.riga(" AND    ", recordedInYear(scope))
        .riga(" AND    ", datesCondition(scope, dates))
        .riga(" AND    (", condizioneMovimenti(scope.condition), ")")
        .riga(" AND    ", kUsableCode);
  if (!selection.others && !values::isBlank(selection.site))
    sql.riga(" AND    CG41_CODICE_CG31 = ", numero(selection.site));
  const auto& [code, exact] = selection.accounts;
  sql.riga(" AND    CG42_CONTOPAR_CG24 ", exact ? "= " + testoDati(code) : "LIKE " + modelloPrefisso(code))
      .riga(" ORDER BY CG41_DATAREG, CG41_NUMREG, CG42_NUMRIGACONT ");
  return sql.str();
}

/// What the rows of both statements have, but for the chart's words.
class LineReader {
 public:
  explicit LineReader(const ado::Recordset& rows) : rows_(rows) {}

  MovementGroup read() const {
    MovementGroup group;
    group.account = account_.Value();
    group.site = site_.Value();
    group.partyKind = partyKind_.Value();
    group.party = party_.Value();
    group.movementKind = number(kind_);
    group.admitted = number(admitted_) == 1;
    group.excluded = number(usable_) == 0;
    group.side = number(side_);
    return group;
  }
  /// What tells its group from others of the same account.
  void readKey(std::string& key) const {
    key.clear();
    for (const auto* field : {&chart_, &site_, &partyKind_, &party_, &kind_, &side_, &admitted_, &usable_})
      append(key, field->Value());
  }
  const std::string& account() const { return account_.Value().as<std::string>(); }
  const values::Variant& chart() const { return chart_.Value(); }
  const values::Variant& registered() const { return registered_.Value(); }
  Decimal amount() const { return values::toDecimal(amount_.Value()); }
  static int number(const ado::Field& field) { return values::toInt32(field.Value()); }

 private:
  static void append(std::string& key, const values::Variant& value) {
    const std::int64_t number = value.isNothing() ? std::numeric_limits<std::int64_t>::min() : values::toInt64(value);
    key.append(reinterpret_cast<const char*>(&number), sizeof number);
  }

  const ado::Recordset& rows_;
  const ado::Field& chart_ = rows_["CG42_GRUPPO_CG10"];
  const ado::Field& account_ = rows_["CG42_CONTOPAR_CG24"];
  const ado::Field& site_ = rows_["CG41_CODICE_CG31"];
  const ado::Field& partyKind_ = rows_["CG41_TIPOCF_CG44"];
  const ado::Field& party_ = rows_["CG41_CLIFOR_CG44"];
  const ado::Field& kind_ = rows_["CG41_INDTIPOMOV"];
  const ado::Field& admitted_ = rows_["AMMESSO"];
  const ado::Field& usable_ = rows_["UTILE"];
  const ado::Field& side_ = rows_["CG42_INDDAAV"];
  const ado::Field& registered_ = rows_["CG41_DATAREG"];
  const ado::Field& amount_ = rows_["CG42_IMPTOTALE"];
};

/// What decides to which months a line belongs by competence.
class CompetenceReader {
 public:
  explicit CompetenceReader(const ado::Recordset& rows) : rows_(rows) {}

  const values::Variant& documented() const { return documented_.Value(); }
  DateMovimento dates() const {
    return {registered_.Value(), documented(), begin_.Value(), end_.Value(), deferral_.Value()};
  }

 private:
  const ado::Recordset& rows_;
  const ado::Field& registered_ = rows_["CG41_DATAREG"];
  const ado::Field& documented_ = rows_["CG41_DATADOC"];
  const ado::Field& begin_ = rows_["CG42_DATAINICOMP"];
  const ado::Field& end_ = rows_["CG42_DATAFINCOMP"];
  const ado::Field& deferral_ = rows_["CG42_INDRATRIS"];
};

/// Descriptions and natures of accounts, chart by chart.
class Charts {
 public:
  struct Account {
    values::Variant description = values::Variant::Null(), nature = values::Variant::Null();
  };

  explicit Charts(ado::Connection& connection) {
    TestoSql sql;
    sql.riga(" SELECT CG24_GRUPPO_CG10, CG24_CONTO, CG24_DESCR, CG24_INDCONTORICAV ")
        .testo(" FROM   CG24_TABPDC WITH (NOLOCK) ");
    connection.ForEachRow(sql, [&](const ado::Recordset& rows) {
      return [this, &chart = rows["CG24_GRUPPO_CG10"], &code = rows["CG24_CONTO"], &description = rows["CG24_DESCR"],
              &nature = rows["CG24_INDCONTORICAV"]] {
        accounts_[keyOf(chart.Value(), code.Value())] = {description.Value(), nature.Value()};
      };
    });
  }

  /// Nulls for an account that its chart lacks.
  Account find(const values::Variant& chart, const values::Variant& code) const {
    const auto found = accounts_.find(keyOf(chart, code));
    return found == accounts_.end() ? Account() : found->second;
  }

 private:
  using Key = std::pair<int, std::string>;
  static Key keyOf(const values::Variant& chart, const values::Variant& code) {
    return {values::toInt32(chart), values::foldText(values::toPlainText(code))};
  }
  std::map<Key, Account> accounts_;
};

/// The days are spread like an amount of as many.
void addCompetence(MovementRow& row, const DateMovimento& dates) {
  const auto interval = intervalloCompetenza(dates);
  if (!interval) return;
  std::tie(row.competenceFrom, row.competenceTo) = *interval;
  row.allDays = std::max(0, values::daysBetween(interval->first, interval->second) + 1);
  if (row.allDays == 0) return;
  const auto days = suite::ripartisciPerMese(Decimal::FromScaled(row.allDays), interval->first, interval->second,
                                             [](const Decimal& whole) { return whole; });
  for (std::size_t month = 1; month < days.size(); ++month)
    row.days[month] = static_cast<int>(days[month].rounded(0).toScaled(0).value_or(0));
}

}  // namespace

values::Variant lastMovementDate(ado::Connection& connection, const MovementScope& scope) {
  // From the last day backwards until one has a line. A planner without statistics would rather read every registration
  // of the company by its key: the sum leaves it the index of the days alone.
  TestoSql sql;
  sql.riga(" SELECT TOP 1 CG41_DATAREG ")
      .riga(" FROM   CG41_PRIMANOTA WITH (NOLOCK) ")
      .riga(" WHERE  CG41_DITTA_CG18 + 0 = ", numero(scope.company))
      .riga(" AND    ", recordedInYear(scope))
      .riga(" AND    CG41_DATAREG >= '", scope.from.toSql(), "'")
      .riga(" AND    CG41_DATAREG <= '", scope.to.toSql(), "'")
      .riga(" AND    EXISTS (SELECT 1 FROM CG42_MOVCONT WITH (NOLOCK) ")
      .riga("                WHERE CG42_DITTA_CG18 = CG41_DITTA_CG18 AND CG42_NUMREG_CG41 = CG41_NUMREG ")
      .riga("                AND (", condizioneMovimenti(scope.condition), ")")
      .riga("                AND ", kUsableCode, ")")
      .riga(" ORDER BY CG41_DATAREG DESC ");
  const auto rs = connection.Execute(sql);
  return rs->Eof() ? values::Variant::Null() : (*rs)["CG41_DATAREG"].Value();
}

/// The groups, added up as their lines come.
class MovementSums::Lines {
 public:
  Lines(ado::Connection& connection, const MovementScope& scope, bool byCompetence, const std::atomic<bool>* stop)
      : charts_(connection), byCompetence_(byCompetence), stop_(stop) {
    connection.ForEachRow(lineText(scope, byCompetence), [this](const ado::Recordset& rows) -> std::function<void()> {
      const LineReader line(rows);
      if (!byCompetence_) return [this, line] { addRegistration(line); };
      return [this, line, competence = CompetenceReader(rows)] { addCompetence(line, competence); };
    });
  }

  void forEach(const std::function<void(const MovementGroup&)>& visit) const {
    for (const auto& group : groups_) visit(group);
  }

 private:
  void addRegistration(const LineReader& line) {
    auto& group = groupOf(line);
    auto& amount = group.amounts[static_cast<std::size_t>(values::toDate(line.registered()).month())];
    amount = amount + line.amount();
    ++group.lines;
  }

  /// Each line is spread for itself: the shares of a sum would be rounded otherwise.
  void addCompetence(const LineReader& line, const CompetenceReader& competence) {
    auto& group = groupOf(line);
    const auto shares = quotePerCompetenza(line.amount(), competence.dates());
    for (std::size_t month = 1; month < shares.size(); ++month)
      if (!shares[month].isZero()) group.amounts[month] = group.amounts[month] + shares[month];
    ++group.lines;
  }

  /// Lines come in any order of accounts, but most that follow each other are of one registration and side: what is
  /// looked at for each is kept small.
  MovementGroup& groupOf(const LineReader& line) {
    if (stop_ && stop_->load(std::memory_order_relaxed))
      throw values::Errore("Nobody waits for the movements any more");
    line.readKey(key_);
    if (key_ != lastKey_) {
      kind_ = kinds_.try_emplace(key_, kinds_.size()).first->second;
      lastKey_ = key_;
    }
    const auto account = accounts_.try_emplace(line.account(), accounts_.size()).first->second;
    const auto key = (std::uint64_t{account} << 32) | kind_;
    auto& [seen, group] = lately_[(account * kKindsApart + kind_) % lately_.size()];
    if (group != nullptr && seen == key) return *group;
    auto& place = places_[key];
    if (place == nullptr) place = &addGroup(line);
    seen = key;
    group = place;
    return *group;
  }

  MovementGroup& addGroup(const LineReader& line) {
    auto& group = groups_.emplace_back(line.read());
    auto known = charts_.find(line.chart(), group.account);
    group.description = std::move(known.description);
    group.nature = std::move(known.nature);
    return group;
  }

  Charts charts_;
  bool byCompetence_;
  const std::atomic<bool>* stop_;
  std::string key_, lastKey_;                           ///< of the line at hand and of the one before
  std::unordered_map<std::string, std::size_t> kinds_;  ///< the keys, numbered
  std::size_t kind_ = 0;                                ///< the number of lastKey_
  std::unordered_map<std::string, std::size_t> accounts_;
  std::unordered_map<std::uint64_t, MovementGroup*> places_;  ///< by the numbers of account and kind
  /// The same for a few, one look away.
  static constexpr std::size_t kKindsApart = 16;
  std::vector<std::pair<std::uint64_t, MovementGroup*>> lately_{std::size_t{1} << 16};
  std::deque<MovementGroup> groups_;
};

MovementSums::MovementSums(ado::Connection& connection, const MovementScope& scope, bool byCompetence,
                           const std::atomic<bool>* stop)
    : lines_(std::make_unique<Lines>(connection, scope, byCompetence, stop)) {}
MovementSums::MovementSums(MovementSums&&) noexcept = default;
MovementSums::~MovementSums() = default;

void MovementSums::forEach(const std::function<void(const MovementGroup&)>& visit) const { lines_->forEach(visit); }

std::vector<MovementRow> movementRows(ado::Connection& connection, const MovementScope& scope, bool byCompetence,
                                      const MovementSelection& selection) {
  const auto found = connection.Execute(rowText(scope, byCompetence, selection));
  const auto& fields = *found;
  const LineReader reader(fields);
  const CompetenceReader competence(fields);
  const auto &registration = fields["CG41_NUMREG"], &line = fields["CG42_NUMRIGACONT"],
             &document = fields["CG41_NUMDOC"], &text = fields["CG41_DESCR"], &provenance = fields["CG41_INDPROVREG"],
             &ofYear = fields["DELLANNO"], &inDates = fields["NELLEDATE"];
  std::vector<MovementRow> rows;
  rows.reserve(static_cast<std::size_t>(found->RecordCount()));
  for (; !found->Eof(); found->MoveNext()) {
    auto& row = rows.emplace_back(MovementRow{reader.read(), registration.Value(), line.Value(), reader.registered(),
                                              competence.documented(), document.Value(), text.Value()});
    row.group.lines = 1;
    row.simulated = LineReader::number(provenance) != 0;
    row.ofYear = LineReader::number(ofYear) == 1;
    row.inDates = LineReader::number(inDates) == 1;
    if (byCompetence) {
      row.group.amounts = quotePerCompetenza(reader.amount(), competence.dates());
      addCompetence(row, competence.dates());
    } else {
      row.group.amounts[static_cast<std::size_t>(values::toDate(row.date).month())] = reader.amount();
    }
  }
  return rows;
}

}  // namespace bukorval::dati
