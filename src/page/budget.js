// A budget as the address of a view names it, and what is known of it.

import { budgets, isClosedState, years } from "./lists.js";
import { t } from "./words.js";

export const COSTS_AND_REVENUES = "4"; // the type that is kept by kind of card

/** From ["4", "01", "2025"] and {site, kind}. */
export function budgetOf(path, query = {}) {
  const [type, subtype, year] = path;
  return { type, subtype, year, site: query.site ?? "", kind: query.kind ?? "" };
}

export const pathOf = ({ type, subtype, year }) => [type, subtype, year];
export const nameOf = ({ type, subtype, year }) => `${type}/${subtype}@${year}`;

/** From "4/01@2025". */
export function parseName(text) {
  const [, type, subtype, year] = /^(\d)\/(.+)@(\d+)/.exec(text) ?? [];
  return { type, subtype, year, site: "", kind: "" };
}

/** The options of commands that take a whole budget. */
export const wholeBudget = ({ type, subtype, year }) => ({ type, subtype, year });

/** The options of commands that need the site and the kind of card too. */
export function selection({ type, subtype, year, site, kind }) {
  return { type, subtype, year, ...(site !== "" && { CodiceSede: site }), ...(kind !== "" && { BdgTipoScheda: kind }) };
}

/** "2024 (35), 2025 (35)" */
export const yearsWithCards = (row) =>
  [...String(row.SCHEDE ?? "").matchAll(/(\d+) \((\d+)\)/g)].map(([, year, cards]) => ({ year, cards: Number(cards) }));

const lockedYears = (row) =>
  String(row.BLOCCATI ?? "")
    .split(", ")
    .filter(Boolean);

export const isClosed = (calendar, year) =>
  isClosedState(calendar.find((each) => String(each.ANNO) === String(year))?.STATO);

/** What is known of a budget: its line in the list, and why it cannot be written, if so. */
export async function describe(budget) {
  const [{ rows }, calendar] = await Promise.all([budgets(), years()]);
  const row = rows.find((each) => String(each.TIPO) === budget.type && each.SOTTOTIPO === budget.subtype) ?? {};
  const closed = isClosed(calendar, budget.year);
  const locked = lockedYears(row).includes(budget.year);
  return {
    ...row,
    title: row.DESCRIZIONE || nameOf(budget),
    perSite: Boolean(row.PER_SEDE),
    byKind: budget.type === COSTS_AND_REVENUES,
    locked,
    readOnly: locked ? t("Locked") : closed ? t("Year closed") : "",
  };
}

export const cardKinds = () => [
  ["0", t("Costs")],
  ["1", t("Revenues")],
];
