#include "dati/Movements.h"

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

std::vector<GroupKey> groupKeys(const MovementScope& scope, bool byCompetence) {
  const auto column = [](const char* name) { return GroupKey{name, name}; };
  const auto holds = [](const std::string& condition) { return "CASE WHEN " + condition + " THEN 1 ELSE 0 END"; };
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

/// The lines of a year's registrations, from FROM.
TestoSql& addRegistrations(TestoSql& sql, const MovementScope& scope, const char* accounts = "") {
  return sql.riga(" FROM   CG42_MOVCONT WITH (NOLOCK) ")
      .riga(" INNER JOIN CG41_PRIMANOTA WITH (NOLOCK) ")
      .riga("    ON  CG42_DITTA_CG18 = CG41_DITTA_CG18 AND CG42_NUMREG_CG41 = CG41_NUMREG ")
      .testo(accounts)
      .riga(" WHERE  CG41_DITTA_CG18 = ", numero(scope.company))
      .riga(" AND    CG41_ANNO_CG19 = ", numero(scope.year))
      .riga(" AND    CG41_PROGESER_CG19 = ", numero(scope.progressive))
      .riga(" AND    CG41_INDPROVREG = 0 ");
}

std::string groupText(const MovementScope& scope, bool byCompetence) {
  std::string selected, grouped;
  for (const auto& [name, expression] : groupKeys(scope, byCompetence)) {
    selected += expression + " AS " + name + ", ";
    grouped += (grouped.empty() ? "" : ", ") + expression;
  }
  // A line's competence begins and ends like the elaboration sees it.
  const char* begin = byCompetence ? "ISNULL(ISNULL(CG42_DATAINICOMP, CG41_DATADOC), CG41_DATAREG)" : "CG41_DATAREG";
  const char* end = byCompetence ? "ISNULL(ISNULL(CG42_DATAFINCOMP, CG41_DATADOC), CG41_DATAREG)" : "CG41_DATAREG";
  TestoSql sql;
  sql.riga(" SELECT ", selected).riga("        COUNT(*) AS RIGHE, SUM(CG42_IMPTOTALE) AS IMPORTO ");
  addRegistrations(sql, scope,
                   " LEFT OUTER JOIN CG24_TABPDC WITH (NOLOCK) "
                   "    ON  CG24_GRUPPO_CG10 = CG42_GRUPPO_CG10 AND CG24_CONTO = CG42_CONTOPAR_CG24 ")
      .riga(" AND    ", end, " >= '", scope.from.toSql(), "'")
      .riga(" AND    ", begin, " <= '", scope.to.toSql(), "'")
      .riga(" GROUP BY ", grouped);
  return sql.str();
}

/// Each line is spread for itself: the shares of a sum would be rounded otherwise.
void addShares(suite::QuoteMensili& amounts, const ado::Recordset& rows, std::int64_t lines) {
  const auto shares =
      quotePerCompetenza(values::toDecimal(rows["CG42_IMPTOTALE"].Value()),
                         {rows["CG41_DATAREG"].Value(), rows["CG41_DATADOC"].Value(), rows["CG42_DATAINICOMP"].Value(),
                          rows["CG42_DATAFINCOMP"].Value(), rows["CG42_INDRATRIS"].Value()});
  for (std::size_t month = 1; month < shares.size(); ++month)
    amounts[month] = shares[month] * Decimal::FromScaled(lines);
}

}  // namespace

values::Variant lastMovementDate(ado::Connection& connection, const MovementScope& scope) {
  TestoSql sql;
  sql.riga(" SELECT TOP 1 CG41_DATAREG ");
  addRegistrations(sql, scope)
      .riga(" AND    (", condizioneMovimenti(scope.condition), ")")
      .riga(" AND    CG41_DATAREG >= '", scope.from.toSql(), "'")
      .riga(" AND    CG41_DATAREG <= '", scope.to.toSql(), "'")
      .riga(" AND    ", kUsableCode)
      .riga(" ORDER BY CG41_DATAREG DESC ");
  const auto rs = connection.Execute(sql);
  return rs->Eof() ? values::Variant::Null() : (*rs)["CG41_DATAREG"].Value();
}

std::vector<MovementGroup> movementGroups(ado::Connection& connection, const MovementScope& scope, bool byCompetence) {
  const auto found = connection.Execute(groupText(scope, byCompetence));
  const auto& rows = *found;
  const auto number = [&](const char* name) { return values::toInt32(rows[name].Value()); };
  std::vector<MovementGroup> groups;
  groups.reserve(static_cast<std::size_t>(found->RecordCount()));
  for (; !found->Eof(); found->MoveNext()) {
    groups.push_back({rows["CG42_CONTOPAR_CG24"].Value(), rows["CG24_DESCR"].Value(),
                      rows["CG24_INDCONTORICAV"].Value(), rows["CG41_CODICE_CG31"].Value(),
                      rows["CG41_TIPOCF_CG44"].Value(), rows["CG41_CLIFOR_CG44"].Value(), number("CG41_INDTIPOMOV"),
                      number("AMMESSO") == 1, number("UTILE") == 0, number("CG42_INDDAAV"),
                      values::toInt64(rows["RIGHE"].Value())});
    auto& group = groups.back();
    if (byCompetence)
      addShares(group.amounts, rows, group.lines);
    else
      group.amounts[static_cast<std::size_t>(number("MESE"))] = values::toDecimal(rows["IMPORTO"].Value());
  }
  return groups;
}

}  // namespace bukorval::dati
