// Lists of codes that views choose from, asked for once.

import { run } from "./api.js";
import { t } from "./words.js";

const kept = new Map();

/** Of several tables the one with a column: their titles are in the program's language. */
export const tableWith = (answer, column) =>
  answer.tables.find((table) => table.columns.some(({ name }) => name === column));

/** The rows of a server's table as objects, by the columns' names. */
export function records(table) {
  return table.rows.map((row) => Object.fromEntries(table.columns.map((column, index) => [column.name, row[index]])));
}

function once(key, ask) {
  if (!kept.has(key)) {
    const answer = ask();
    kept.set(key, answer);
    answer.catch(() => kept.delete(key));
  }
  return kept.get(key);
}

const list = (what, options = {}) =>
  once(JSON.stringify([what, options]), async () => records((await run("list", { WHAT: what, ...options })).tables[0]));

export const sites = () => list("sites");
export const accounts = () => list("accounts");
export const analysisColumns = ({ type, subtype }) => list("columns", { type, subtype });
export const detailKinds = ({ type, subtype }) => list("kinds", { type, subtype });

/** Kinds of detail that have one value a period, as commands name them. */
export async function writtenKinds(budget) {
  const kinds = (await detailKinds(budget)).filter(({ NOME }) => NOME !== "orders");
  return kinds.map(({ NOME, DESCRIZIONE }) => [NOME, DESCRIZIONE]);
}

export const measures = () => [
  ["amount", t("Amount")],
  ["qty1", t("Quantity 1")],
  ["qty2", t("Quantity 2")],
];

/** The codes that a column of a budget's cards may have: {COLONNA, CODICE, DESCRIZIONE}. */
export const codes = ({ type, subtype }) => list("codes", { type, subtype });

/** The state of a year comes in the program's language. */
export const isClosedState = (state) => ["closed", t("closed")].includes(state);

// What changes while people work is asked for each time.

export const years = async () => records((await run("years", {})).tables[0]);

/** What is defined, with its years and locks. */
export async function budgets() {
  const answer = await run("budgets", {});
  return { table: answer.tables[0], rows: records(answer.tables[0]) };
}

/** What may change is asked for again. */
export const forget = () => kept.clear();
