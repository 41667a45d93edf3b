// What a report is made of: the axes and values that a budget has, its rows with their groups, the series of its charts.

import { run } from "./api.js";
import { wholeBudget } from "./budget.js";
import { clean, format } from "./cells.js";
import { isDelta } from "./gridcolumns.js";
import { accounts, analysisColumns, detailKinds } from "./lists.js";
import { NO_COLUMNS } from "./axes.js";
import { t } from "./words.js";

const ACCOUNTS = "BU65_CONTO_CG24"; // the column whose accounts have levels

/** Where each axis of a budget may stand. */
export async function axesOf(budget) {
  const columns = await analysisColumns(budget);
  const both = ["site", "kind"];
  const axes = columns.map(({ ASSE, DESCRIZIONE }) => ({
    name: ASSE,
    title: DESCRIZIONE,
    row: true,
    column: both.includes(ASSE),
  }));
  if (columns.some(({ COLONNA }) => COLONNA === ACCOUNTS)) {
    const levels = Math.max(0, ...(await accounts()).map(({ LIVELLO }) => Number(LIVELLO)));
    for (let level = 1; level <= levels; ++level)
      axes.push({ name: `level:${level}`, title: t("Level {}", level), row: true, column: false });
  }
  axes.push({ name: "id", title: t("Card number"), row: true, column: false });
  const times = [
    ["month", "Months"],
    ["quarter", "Quarters"],
    ["half", "Half-years"],
    ["period", "Periods"],
    [NO_COLUMNS, "Year"],
  ];
  for (const [name, title] of times) axes.push({ name, title: t(title), row: false, column: true });
  return axes;
}

/** Pairs of the values' names and titles. */
export async function valuesOf(budget) {
  const kinds = await detailKinds(budget);
  const values = [
    ["budget", t("Budget")],
    ["actual", t("Actual")],
    ["delta", t("Delta")],
    ["delta%", t("Delta %")],
    ["orders", t("Orders")],
    ["available", t("Available")],
  ];
  for (const { NOME, DESCRIZIONE } of kinds.filter(({ NOME: name }) => name.startsWith("forecast")))
    for (const [part, title] of [
      ["", ""],
      [".delta", t("Delta")],
      [".delta%", t("Delta %")],
      [".actual", t("Actual")],
      [".forecast", t("Forecast")],
      [".from", t("from")],
    ])
      values.push([NOME + part, `${DESCRIZIONE} ${title}`.trim()]);
  return values;
}

export async function report(
  budget,
  { rows = [], columns = NO_COLUMNS, values, measure = "amount", to = "", where = "", sort = "", top = "" },
) {
  const options = { ...wholeBudget(budget), rows: rows.join(","), columns, values: values.join(","), measure };
  if (to) options.to = to;
  const only = where.split(";").map((each) => each.trim());
  if (where) options.where = only.filter(Boolean);
  if (sort) options.sort = sort;
  if (top) options.top = Number(top);
  const { tables, messages } = await run("report", options);
  return { ...tables[0], messages };
}

/** Codes and descriptions of the axes stand before the figures. */
function keyCount(table) {
  const first = table.columns.findIndex((column) =>
    /(^|_)(IMP|QTA1|QTA2|DELTAIMP|DELTAQTA1|DELTAQTA2|DELTAPERC\w*)_/.test(column.name),
  );
  return first < 0 ? table.columns.length : first;
}

/** Code and description of each axis of a row, as people name them. */
function namesOf(table, row, keys) {
  const names = [];
  for (let i = 0; i < keys; ++i) {
    if (table.columns[i].name.endsWith("_DESCR")) continue;
    const hasText = table.columns[i + 1]?.name === table.columns[i].name + "_DESCR" && i + 1 < keys;
    const code = row[i] === null || row[i] === "" ? t("(none)") : clean(String(row[i]));
    const text = hasText ? clean(String(row[i + 1] ?? "")) : "";
    names.push({ code, text: text && text !== code ? `${code} - ${text}` : code, short: text || code });
  }
  return names;
}

/**
 * The rows of a report with their groups: each level is a report of its own, so that its figures are exact as well.
 * @returns {table, rows}: the table as a grid shows it, its first column being the names
 */
export async function groupedReport(budget, query) {
  const depths = query.rows.length ? query.rows.map((_, i) => query.rows.slice(0, i + 1)) : [[]];
  const tables = await Promise.all(depths.map((rows) => report(budget, { ...query, rows })));
  const inner = tables.at(-1),
    keys = keyCount(inner);
  const nodes = new Map(),
    roots = [];
  tables.forEach((table, depth) => {
    const count = keyCount(table);
    for (const row of table.rows) {
      const names = namesOf(table, row, count),
        path = names.map(({ code }) => code);
      const node = { cells: [names.at(-1)?.text ?? t("Total"), ...row.slice(count)], level: depth + 1, path };
      if (depth + 1 < tables.length)
        Object.assign(node, { children: [], open: depth === 0 && table.rows.length <= 12 });
      nodes.set(JSON.stringify(path), node);
      (depth ? (nodes.get(JSON.stringify(path.slice(0, -1)))?.children ?? roots) : roots).push(node);
    }
  });
  // Those that a report puts into one row are no group.
  if (query.top) for (const node of nodes.values()) if (isRest(node)) delete node.children;
  const titles = inner.columns
    .slice(0, keys)
    .filter(({ name }) => !name.endsWith("_DESCR"))
    .map(({ title }) => title);
  const columns = [
    { name: "ROW", title: titles.join(" › "), number: false, decimals: null },
    ...inner.columns.slice(keys),
  ];
  const totals = inner.totals ? [null, ...inner.totals.slice(keys)] : null;
  const table = { columns, rows: roots.map(({ cells }) => cells), totals, messages: inner.messages };
  return { table, rows: roots };
}

const isRest = ({ children }) => children?.length === 1 && children[0].path.at(-1) === t("(none)");

/** Names of the periods and, for each value, what there is in each: of a report by months or periods without rows. */
export function seriesOf(table, forecasts) {
  const row = table.rows[0] ?? [];
  const found = new Map();
  table.columns.forEach((column, i) => {
    const [, period, value] = /^(.+?)_((?:IMP|QTA1|QTA2)_.+)$/.exec(column.name) ?? [];
    if (!period) return;
    if (!found.has(period)) found.set(period, { label: column.group || period, values: new Map() });
    found
      .get(period)
      .values.set(value.replace(/^[A-Z0-9]+_/, ""), { value: row[i] ?? null, text: format(row[i], column) });
  });
  const periods = [...found.values()];
  const kinds = [
    ["BUDGET", t("Budget"), "budget"],
    ["CONSUNTIVO", t("Actual"), "actual"],
    ...forecasts.map((title, i) => [`FORECAST${i + 1}`, title, `forecast f${i + 1}`]),
  ];
  // A forecast counts the actual value where there is one, so that its line begins behind the last of them.
  const last = periods.findLastIndex(({ values }) => (values.get("CONSUNTIVO")?.value ?? null) !== null);
  const isOwn = (name, place) => !name.startsWith("FORECAST") || place >= last;
  const series = kinds
    .map(([name, title, look]) => ({
      title,
      look,
      values: periods.map(({ values }, place) => (isOwn(name, place) ? (values.get(name)?.value ?? null) : null)),
      texts: periods.map(({ values }) => values.get(name)?.text ?? ""),
    }))
    .filter(({ values }) => values.some((value) => value !== null));
  return { labels: periods.map(({ label }) => label), series };
}

/** The steps from budget to actual: the greatest deltas of one axis, the others in one. */
export function stepsOf(table, most) {
  const keys = keyCount(table);
  const at = (ending) =>
    table.columns.findIndex((column, i) => i >= keys && column.name.endsWith(ending) && !column.percentage);
  const budget = at("_BUDGET"),
    actual = at("_CONSUNTIVO");
  const delta = table.columns.findIndex((column, i) => i >= keys && isDelta(column) && !column.percentage);
  if (budget < 0 || actual < 0 || delta < 0 || !table.rows.length || !table.totals) return null;
  const end = (place, title, look) => ({
    title,
    look,
    value: table.totals[place] ?? "0",
    text: format(table.totals[place], table.columns[place]),
  });
  const steps = table.rows
    .filter((row) => row[delta] !== null && Number(row[delta]) !== 0)
    .map((row) => ({
      title: namesOf(table, row, keys).at(-1).short,
      value: row[delta],
      text: format(row[delta], table.columns[delta]),
    }))
    .sort((a, b) => Math.abs(b.value) - Math.abs(a.value));
  const rest = steps.splice(most);
  return {
    ends: [end(budget, t("Budget"), "budget"), end(actual, t("Actual"), "actual")],
    steps,
    rest,
    column: table.columns[delta],
  };
}
