#include "dati/Movements.h"

#include <algorithm>
#include <optional>
#include <tuple>

#include "elaschede/TotaliMovimenti.h"
#include "frame/TestoSql.h"
#include "values/Conversion.h"

namespace bukorval::dati {
namespace {

using values::Decimal;

constexpr const char* kUsableCode = "CG42_CODICE_CG33 NOT IN ('150 ', '151 ')";

/// Something that tells a group of lines from another.
struct GroupKey {
  std::string name, expression;
};

std::string holds(const std::string& condition) { return "CASE WHEN " + condition + " THEN 1 ELSE 0 END"; }

std::vector<GroupKey> groupKeys(const MovementScope& scope, bool byCompetence) {
  const auto column = [](const char* name) { return GroupKey{name, name}; };
  std::vector<GroupKey> keys{column("CG42_CONTOPAR_CG24"),
                             column("CG24_DESCR"),
                             column("CG24_INDCONTORICAV"),
                             column("CG41_CODICE_CG31"),
                             column("CG41_TIPOCF_CG44"),
                             column("CG41_CLIFOR_CG44"),
                             column("CG41_INDTIPOMOV"),
                             column("CG42_INDDAAV"),
                             {"AMMESSO", holds("(" + condizioneMovimenti(scope.condition) + ")")},
                             {"UTILE", holds(kUsableCode)}};
  if (!byCompetence) {
    keys.push_back({"MESE", "MONTH(CG41_DATAREG)"});
    return keys;
  }
  for (const auto* name :
       {"CG41_DATAREG", "CG41_DATADOC", "CG42_DATAINICOMP", "CG42_DATAFINCOMP", "CG42_INDRATRIS", "CG42_IMPTOTALE"})
    keys.push_back(column(name));
  return keys;
}

/// The names of the keys behind their expressions.
std::string selectedKeys(const std::vector<GroupKey>& keys) {
  std::string selected;
  for (const auto& [name, expression] : keys) selected += expression + " AS " + name + ", ";
  return selected;
}

/// The lines of registrations with their accounts, from FROM.
TestoSql& addTables(TestoSql& sql) {
  return sql.riga(" FROM   CG42_MOVCONT WITH (NOLOCK) ")
      .riga(" INNER JOIN CG41_PRIMANOTA WITH (NOLOCK) ")
      .riga("    ON  CG42_DITTA_CG18 = CG41_DITTA_CG18 AND CG42_NUMREG_CG41 = CG41_NUMREG ")
      .riga(" LEFT OUTER JOIN CG24_TABPDC WITH (NOLOCK) ")
      .riga("    ON  CG24_GRUPPO_CG10 = CG42_GRUPPO_CG10 AND CG24_CONTO = CG42_CONTOPAR_CG24 ");
}

std::string yearCondition(const MovementScope& scope) {
  return "CG41_ANNO_CG19 = " + numero(scope.year) + " AND CG41_PROGESER_CG19 = " + numero(scope.progressive);
}

std::string recordedInYear(const MovementScope& scope) { return yearCondition(scope) + " AND CG41_INDPROVREG = 0"; }

/// The scope's dates touch a line. Its competence begins and ends like the elaboration sees it.
std::string datesCondition(const MovementScope& scope, bool byCompetence) {
  const char* begin = byCompetence ? "ISNULL(ISNULL(CG42_DATAINICOMP, CG41_DATADOC), CG41_DATAREG)" : "CG41_DATAREG";
  const char* end = byCompetence ? "ISNULL(ISNULL(CG42_DATAFINCOMP, CG41_DATADOC), CG41_DATAREG)" : "CG41_DATAREG";
  return std::string(end) + " >= '" + scope.from.toSql() + "' AND " + begin + " <= '" + scope.to.toSql() + "'";
}

std::string groupText(const MovementScope& scope, bool byCompetence) {
  const auto keys = groupKeys(scope, byCompetence);
  std::string grouped;
  for (const auto& [name, expression] : keys) grouped += (grouped.empty() ? "" : ", ") + expression;
  TestoSql sql;
  sql.riga(" SELECT ", selectedKeys(keys)).riga("        COUNT(*) AS RIGHE, SUM(CG42_IMPTOTALE) AS IMPORTO ");
  addTables(sql)
      .riga(" WHERE  CG41_DITTA_CG18 = ", numero(scope.company))
      .riga(" AND    ", recordedInYear(scope))
      .riga(" AND    ", datesCondition(scope, byCompetence))
      .riga(" GROUP BY ", grouped);
  return sql.str();
}

std::string rowText(const MovementScope& scope, bool byCompetence, const MovementSelection& selection) {
  // Those of a competence, whose months are worked out line by line.
  auto keys = groupKeys(scope, true);
  keys.push_back({"DELLANNO", holds(yearCondition(scope))});
  keys.push_back({"NELLEDATE", holds(datesCondition(scope, byCompetence))});
  TestoSql sql;
  sql.riga(" SELECT ", selectedKeys(keys))
      .riga("        CG41_INDPROVREG, CG41_NUMREG, CG42_NUMRIGACONT, CG41_NUMDOC, CG41_DESCR ");
  addTables(sql).riga(" WHERE  CG41_DITTA_CG18 = ", numero(scope.company));
  if (selection.others)
    sql.riga(" AND    ((", datesCondition(scope, byCompetence), ") OR (", datesCondition(scope, false), ")) ");
  else
    sql.riga(" AND    ", recordedInYear(scope))
        .riga(" AND    ", datesCondition(scope, byCompetence))
        .riga(" AND    (", condizioneMovimenti(scope.condition), ")")
        .riga(" AND    ", kUsableCode);
  if (!selection.others && !values::isBlank(selection.site))
    sql.riga(" AND    CG41_CODICE_CG31 = ", numero(selection.site));
  const auto& [code, exact] = selection.accounts;
  sql.riga(" AND    CG42_CONTOPAR_CG24 ", exact ? "= " + testoDati(code) : "LIKE " + modelloPrefisso(code))
      .riga(" ORDER BY CG41_DATAREG, CG41_NUMREG, CG42_NUMRIGACONT ");
  return sql.str();
}

/// What the rows of both statements have.
class GroupReader {
 public:
  explicit GroupReader(const ado::Recordset& rows) : rows_(rows) {}

  MovementGroup read(std::int64_t lines) const {
    return {account_.Value(),     description_.Value(), nature_.Value(), site_.Value(),
            partyKind_.Value(),   party_.Value(),       number(kind_),   admitted(),
            number(usable_) == 0, number(side_),        lines,           {}};
  }
  static int number(const ado::Field& field) { return values::toInt32(field.Value()); }

 private:
  bool admitted() const { return number(admitted_) == 1; }

  const ado::Recordset& rows_;
  const ado::Field& account_ = rows_["CG42_CONTOPAR_CG24"];
  const ado::Field& description_ = rows_["CG24_DESCR"];
  const ado::Field& nature_ = rows_["CG24_INDCONTORICAV"];
  const ado::Field& site_ = rows_["CG41_CODICE_CG31"];
  const ado::Field& partyKind_ = rows_["CG41_TIPOCF_CG44"];
  const ado::Field& party_ = rows_["CG41_CLIFOR_CG44"];
  const ado::Field& kind_ = rows_["CG41_INDTIPOMOV"];
  const ado::Field& admitted_ = rows_["AMMESSO"];
  const ado::Field& usable_ = rows_["UTILE"];
  const ado::Field& side_ = rows_["CG42_INDDAAV"];
};

/// What decides to which months a line belongs by competence.
class CompetenceReader {
 public:
  explicit CompetenceReader(const ado::Recordset& rows) : rows_(rows) {}

  const values::Variant& registered() const { return registered_.Value(); }
  const values::Variant& documented() const { return documented_.Value(); }
  DateMovimento dates() const { return {registered(), documented(), begin_.Value(), end_.Value(), deferral_.Value()}; }
  Decimal amount() const { return values::toDecimal(amount_.Value()); }

 private:
  const ado::Recordset& rows_;
  const ado::Field& registered_ = rows_["CG41_DATAREG"];
  const ado::Field& documented_ = rows_["CG41_DATADOC"];
  const ado::Field& begin_ = rows_["CG42_DATAINICOMP"];
  const ado::Field& end_ = rows_["CG42_DATAFINCOMP"];
  const ado::Field& deferral_ = rows_["CG42_INDRATRIS"];
  const ado::Field& amount_ = rows_["CG42_IMPTOTALE"];
};

/// Each line is spread for itself: the shares of a sum would be rounded otherwise.
suite::QuoteMensili sharesOf(const CompetenceReader& competence, std::int64_t lines) {
  auto shares = quotePerCompetenza(competence.amount(), competence.dates());
  if (lines != 1)
    for (auto& share : shares) share = share * Decimal::FromScaled(lines);
  return shares;
}

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

std::vector<MovementGroup> movementGroups(ado::Connection& connection, const MovementScope& scope, bool byCompetence) {
  const auto found = connection.Execute(groupText(scope, byCompetence));
  const auto& rows = *found;
  const GroupReader reader(rows);
  const auto competence = byCompetence ? std::optional<CompetenceReader>(rows) : std::nullopt;
  std::vector<MovementGroup> groups;
  groups.reserve(static_cast<std::size_t>(found->RecordCount()));
  for (; !found->Eof(); found->MoveNext()) {
    auto& group = groups.emplace_back(reader.read(values::toInt64(rows["RIGHE"].Value())));
    if (competence)
      group.amounts = sharesOf(*competence, group.lines);
    else
      group.amounts[static_cast<std::size_t>(GroupReader::number(rows["MESE"]))] =
          values::toDecimal(rows["IMPORTO"].Value());
  }
  return groups;
}

std::vector<MovementRow> movementRows(ado::Connection& connection, const MovementScope& scope, bool byCompetence,
                                      const MovementSelection& selection) {
  const auto found = connection.Execute(rowText(scope, byCompetence, selection));
  const auto& fields = *found;
  const GroupReader reader(fields);
  const CompetenceReader competence(fields);
  const auto &registration = fields["CG41_NUMREG"], &line = fields["CG42_NUMRIGACONT"],
             &document = fields["CG41_NUMDOC"], &text = fields["CG41_DESCR"], &provenance = fields["CG41_INDPROVREG"],
             &ofYear = fields["DELLANNO"], &inDates = fields["NELLEDATE"];
  std::vector<MovementRow> rows;
  rows.reserve(static_cast<std::size_t>(found->RecordCount()));
  for (; !found->Eof(); found->MoveNext()) {
    auto& row =
        rows.emplace_back(MovementRow{reader.read(1), registration.Value(), line.Value(), competence.registered(),
                                      competence.documented(), document.Value(), text.Value()});
    row.simulated = GroupReader::number(provenance) != 0;
    row.ofYear = GroupReader::number(ofYear) == 1;
    row.inDates = GroupReader::number(inDates) == 1;
    if (byCompetence) {
      row.group.amounts = sharesOf(competence, 1);
      addCompetence(row, competence.dates());
    } else {
      row.group.amounts[static_cast<std::size_t>(values::toDate(row.date).month())] = competence.amount();
    }
  }
  return rows;
}

}  // namespace bukorval::dati
