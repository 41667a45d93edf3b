// The list of budgets, with the years that have cards.

import { currentSession } from "./api.js";
import { cardKinds, COSTS_AND_REVENUES, isClosed, yearsWithCards } from "./budget.js";
import { h } from "./dom.js";
import { placeInFrame, show } from "./frame.js";
import { budgets, years } from "./lists.js";
import { link } from "./router.js";
import { t } from "./words.js";

function yearLink(row, year, cards, mark) {
  return h(
    "a",
    { class: cards ? "year" : "year empty", href: link("grid", [row.TIPO, row.SOTTOTIPO, year]) },
    h("b", {}, year),
    h("small", {}, cards === 0 ? t("no cards") : cards === 1 ? t("1 card") : t("{} cards", cards)),
    mark ? h("small", { class: "mark" }, mark) : null,
  );
}

/** Years with cards, and open ones that may get some. */
function yearsOf(row, calendar) {
  const known = new Map(yearsWithCards(row).map(({ year, cards }) => [year, cards]));
  for (const { ANNO } of calendar)
    if (!known.has(String(ANNO)) && !isClosed(calendar, ANNO)) known.set(String(ANNO), 0);
  return [...known].sort(([a], [b]) => a - b);
}

function budgetLine(row, calendar, names) {
  const locked = String(row.BLOCCATI ?? "").split(", ");
  const mark = (year) => (locked.includes(year) ? t("locked") : isClosed(calendar, year) ? t("closed") : "");
  const links = yearsOf(row, calendar).map(([year, cards]) => yearLink(row, year, cards, mark(year)));
  const how = [
    row.PERIODICITA,
    row.STRUTTURA,
    row.PER_SEDE ? t("per site") : "",
    String(row.TIPO) === COSTS_AND_REVENUES
      ? cardKinds()
          .map(([, text]) => text.toLowerCase())
          .join(", ")
      : "",
    Number(row.FORECAST) === 1 ? t("1 forecast") : Number(row.FORECAST) ? t("{} forecasts", row.FORECAST) : "",
  ].filter(Boolean);
  return h(
    "li",
    { class: "budget" },
    h("span", { class: "code" }, `${row.TIPO}/${row.SOTTOTIPO}`),
    h("div", {}, h("h3", {}, row.DESCRIZIONE || names), h("p", { class: "muted" }, how.join(" · "))),
    h("div", { class: "years" }, links),
  );
}

export function showBudgets() {
  placeInFrame([[t("Budgets"), link("budgets")]], null, "");
  return show(async () => {
    const [{ rows }, calendar] = await Promise.all([budgets(), years()]);
    const kinds = [...new Set(rows.map((row) => row.DESCRIZIONE_TIPO))];
    return [
      h(
        "div",
        { class: "budgets" },
        h(
          "div",
          { class: "title" },
          h("h1", {}, currentSession().companyName || t("Budgets")),
          h("a", { class: "aside", href: link("years") }, t("Years")),
        ),
        kinds.map((kind) =>
          h(
            "section",
            {},
            h("h2", {}, kind),
            h(
              "ul",
              {},
              rows.filter((row) => row.DESCRIZIONE_TIPO === kind).map((row) => budgetLine(row, calendar, kind)),
            ),
          ),
        ),
      ),
    ];
  });
}
