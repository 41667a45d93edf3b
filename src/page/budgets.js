// The list of budgets, with the years that have cards.

import { currentSession } from "./api.js";
import { cardKinds, COSTS_AND_REVENUES, isClosed, yearsWithCards } from "./budget.js";
import { h } from "./dom.js";
import { placeInFrame, show } from "./frame.js";
import { budgets, years } from "./lists.js";
import { link } from "./router.js";
import { t } from "./words.js";

function yearLink(row, year, cards, locked, closed) {
  const mark = locked ? t("locked") : closed ? t("closed") : "";
  return h("a", { class: "year", href: link("grid", [row.TIPO, row.SOTTOTIPO, year]) },
    h("b", {}, year), h("small", {}, cards === 1 ? t("1 card") : t("{} cards", cards)),
    mark ? h("small", { class: "mark" }, mark) : null);
}

function budgetLine(row, calendar, names) {
  const locked = String(row.BLOCCATI ?? "").split(", ");
  const known = yearsWithCards(row);
  const links = known.map(({ year, cards }) => yearLink(row, year, cards, locked.includes(year),
    isClosed(calendar, year)));
  const how = [row.PERIODICITA, row.STRUTTURA, row.PER_SEDE ? t("per site") : "",
    String(row.TIPO) === COSTS_AND_REVENUES ? cardKinds().map(([, text]) => text.toLowerCase()).join(", ") : "",
    Number(row.FORECAST) === 1 ? t("1 forecast") : Number(row.FORECAST) ? t("{} forecasts", row.FORECAST) : ""].filter(Boolean);
  return h("li", { class: "budget" }, h("span", { class: "code" }, `${row.TIPO}/${row.SOTTOTIPO}`),
    h("div", {}, h("h3", {}, row.DESCRIZIONE || names), h("p", { class: "muted" }, how.join(" · "))),
    h("div", { class: "years" }, links.length ? links : h("span", { class: "muted" }, t("no cards yet"))));
}

export function showBudgets() {
  placeInFrame([[t("Budgets"), link("budgets")]], null, "");
  return show(async () => {
    const [{ rows }, calendar] = await Promise.all([budgets(), years()]);
    const kinds = [...new Set(rows.map((row) => row.DESCRIZIONE_TIPO))];
    return [h("div", { class: "budgets" }, h("h1", {}, currentSession().companyName || t("Budgets")),
      kinds.map((kind) => h("section", {}, h("h2", {}, kind),
        h("ul", {}, rows.filter((row) => row.DESCRIZIONE_TIPO === kind).map((row) => budgetLine(row, calendar, kind))))))];
  });
}
