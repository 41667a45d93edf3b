#include "dati/DrillDown.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <utility>

#include "dati/Cards.h"
#include "dati/Failure.h"
#include "frame/TestoSql.h"
#include "language/Language.h"
#include "values/Conversion.h"

namespace bukorval::dati {
namespace {

using values::Decimal;
using values::Variant;

/// Puts the lines of one range to the account of one card.
class RangeReader {
 public:
  RangeReader(const Landing& landing, const ElaboratedCard& card, const DrillScope& scope,
              const WrittenPeriods& periods)
      : landing_(landing), card_(card), scope_(scope), periods_(periods) {}

  void add(MovementRow row, DrillDown& found) {
    CellMovement movement = sharedOut(std::move(row));
    movement.reason = reasonOf(movement.row);
    // A line of other months alone makes the elaboration write the card, too.
    if (!movement.reason || *movement.reason == Reason::NoPeriod) any_ = true;
    const bool listed = !movement.share.isZero();
    if (!movement.reason && !listed) movement.reason = Reason::OtherPeriod;
    if (!movement.reason) {
      addToCells(movement.row);
      found.movements.push_back(std::move(movement));
    } else if (scope_.excluded && (listed || isRegisteredInCells(movement.row))) {
      found.excluded.push_back(std::move(movement));
    }
  }

  void finish(const CardPercentages& percentages, const std::map<int, Variant>& held, DrillDown& found) {
    if (!any_) return;
    for (const int period : periods_.all()) {
      if (!isAskedFor(period)) continue;
      auto& cell = cells_[period];
      cell.period = period;
      cell.percentages = percentages.apply(card_.id, cell.movements) - cell.movements;
      if (const auto amount = held.find(period); amount != held.end()) cell.held = amount->second;
      found.cells.push_back(cell);
    }
  }

 private:
  bool isAskedFor(int period) const { return period != 0 && (!scope_.period || *scope_.period == period); }
  /// The period of a month among those asked for, else 0.
  int cellOf(std::size_t month) const {
    const int period = periods_.ofMonth(month);
    return isAskedFor(period) ? period : 0;
  }
  bool isRegisteredInCells(const MovementRow& row) const {
    return !scope_.period || cellOf(static_cast<std::size_t>(values::toDate(row.date).month())) != 0;
  }

  CellMovement sharedOut(MovementRow row) const {
    CellMovement movement;
    for (std::size_t month = 1; month < row.group.amounts.size(); ++month) {
      const auto amount = Landing::withSign(row.group.amounts[month], row.group, card_.kind);
      movement.amount = movement.amount + amount;
      if (cellOf(month) != 0) {
        movement.share = movement.share + amount;
        movement.days += row.days[month];
      } else if (!amount.isZero()) {
        addRest(movement.rest, periods_.periodOf(month), amount);
      }
    }
    movement.row = std::move(row);
    return movement;
  }
  static void addRest(std::vector<std::pair<int, Decimal>>& rest, int period, const Decimal& amount) {
    const auto place = std::ranges::lower_bound(rest, period, {}, [](const auto& part) { return part.first; });
    if (place != rest.end() && place->first == period)
      place->second = place->second + amount;
    else
      rest.emplace(place, period, amount);
  }

  std::optional<Reason> reasonOf(const MovementRow& row) const {
    if (row.simulated) return Reason::Simulated;
    if (!row.ofYear) return Reason::OtherYear;
    if (!row.inDates) return Reason::OtherDates;
    const Landing::Cards cards{&card_};
    return landing_.reasonOf(row.group, cards, landing_.takes(card_, row.group) ? cards : Landing::Cards(),
                             landing_.insideOf(row.group, periods_));
  }

  void addToCells(const MovementRow& row) {
    std::set<int> touched;
    for (std::size_t month = 1; month < row.group.amounts.size(); ++month) {
      const int period = cellOf(month);
      if (period == 0 || row.group.amounts[month].isZero()) continue;
      auto& cell = cells_[period];
      cell.movements = cell.movements + Landing::withSign(row.group.amounts[month], row.group, card_.kind);
      if (touched.insert(period).second) ++cell.lines;
    }
  }

  const Landing& landing_;
  const ElaboratedCard& card_;
  const DrillScope& scope_;
  const WrittenPeriods& periods_;
  bool any_ = false;  ///< a line that the elaboration takes
  std::map<int, Cell> cells_;
};

/// Of several ranges, each has a part of a line: they become one, and none leaves out what another has.
void joinRanges(DrillDown& found) {
  using Line = std::pair<std::int64_t, std::int64_t>;
  const auto lineOf = [](const CellMovement& movement) {
    return Line(values::toInt64(movement.row.registration), values::toInt64(movement.row.line));
  };
  std::map<Line, std::size_t> places;
  std::vector<CellMovement> joined;
  for (auto& movement : found.movements) {
    const auto [place, isNew] = places.try_emplace(lineOf(movement), joined.size());
    if (isNew) {
      joined.push_back(std::move(movement));
      continue;
    }
    auto& line = joined[place->second];
    line.share = line.share + movement.share;
    line.days += movement.days;
    std::erase_if(line.rest,
                  [&](const auto& part) { return std::ranges::find(movement.rest, part) == movement.rest.end(); });
  }
  found.movements = std::move(joined);
  std::erase_if(found.excluded, [&](const auto& movement) { return !places.try_emplace(lineOf(movement), 0).second; });
}

void requireReached(const DrillScope& scope, const std::vector<int>& written) {
  if (!scope.period || std::ranges::find(written, *scope.period) != written.end()) return;
  std::string text;
  for (const int period : written) text += (text.empty() ? "" : ", ") + std::to_string(period);
  throw Refused(tr("The dates do not reach period {}; they reach {}", *scope.period, (text.empty() ? "none" : text)));
}

}  // namespace

std::optional<ElaboratedCard> findElaboratedCard(ado::Connection& connection, const Variant& card) {
  TestoSql sql;
  sql.riga(" SELECT BU65_ID, BU65_INDCOSRIC_BU07, BU65_CONTO_CG24, BU65_CODICE_CG31, BU67_CLIFOR_CG44 ")
      .riga(" FROM   BU65_TESBUDGET WITH (NOLOCK) ")
      .riga(" INNER JOIN BU67_BDGCASHFLOW WITH (NOLOCK) ON BU67_ID_BU65 = BU65_ID ")
      .riga(" WHERE  BU65_ID = ", numero(card))
      .riga(" AND    BU65_INDCOSRIC_BU07 IS NOT NULL ");
  const auto rs = connection.Execute(sql);
  if (rs->Eof()) return std::nullopt;
  const auto value = [&](const char* field) { return (*rs)[field].Value(); };
  return ElaboratedCard{values::toInt64(value("BU65_ID")), values::toInt32(value("BU65_INDCOSRIC_BU07")),
                        value("BU65_CONTO_CG24"), value("BU65_CODICE_CG31"), value("BU67_CLIFOR_CG44")};
}

DrillDown drillDown(CLSKORVAL& budget, ado::Connection& connection, const ElaboratedCard& card,
                    const DrillScope& scope) {
  const auto accounts = contiDellaScheda(*budget.ActiveInterface, card.account);
  if (accounts.codice.empty()) throw Refused(tr("There is no account whose movements could be shown"));
  const bool byCompetence = budget.TipoDataMovimenti == 1;
  const Landing landing(budget);
  const CardPercentages percentages(budget, connection);
  const auto held = amountsOfCard(connection, card.id, budget.TipoDettaglioDestinazione);
  const MovementSelection selection{accounts, landing.perSite() ? card.site : Variant(), scope.excluded};
  DrillDown found;
  std::vector<WrittenPeriods> periods;
  for (const auto& [from, to] : scope.ranges) {
    const auto& written = periods.emplace_back(budget, from, to).all();
    found.written.insert(found.written.end(), written.begin(), written.end());
  }
  requireReached(scope, found.written);
  for (std::size_t i = 0; i < periods.size(); ++i) {
    const MovementScope movements{
        budget.CodiceDitta,   budget.AnnoEsercizioMovimenti, budget.ProgressivoEsercizioMovimenti,
        budget.TipoMovimenti, scope.ranges[i].first,         scope.ranges[i].second};
    RangeReader reader(landing, card, scope, periods[i]);
    for (auto& row : movementRows(connection, movements, byCompetence, selection)) reader.add(std::move(row), found);
    reader.finish(percentages, held, found);
  }
  if (periods.size() > 1) joinRanges(found);
  return found;
}

}  // namespace bukorval::dati
