// The columns of a grid: which there are to choose from, which are shown, and how wide they must be.

import { format, isFigure } from "./cells.js";
import { check, menu } from "./dom.js";
import { t } from "./words.js";

const MEASURED_ROWS = 300,
  NARROWEST = 5;
const LETTER = 0.93; // of a digit, on average

/** Columns that hold a difference or a ratio, which no sum of theirs is. */
export const isDelta = (column) => column.name.includes("DELTA") || Boolean(column.percentage);

/** A description begins with its code, so that one of the two columns is enough. */
function mergeDescriptions(columns) {
  for (const column of columns) {
    const description = columns.find((each) => each.name === column.name + "_DESCR");
    if (!description) continue;
    column.secondary = true;
    Object.assign(description, { title: column.title, code: column.index });
  }
}

/** The columns of a server's table, with what a grid needs to know of them. */
export function gridColumns(table) {
  const columns = table.columns.map((column, index) => ({ ...column, index, figure: isFigure(column) }));
  mergeDescriptions(columns);
  const filled = (column) => table.rows.some((row) => row[column.index] !== null && row[column.index] !== "");
  for (const column of columns) column.shown = !column.secondary && (table.rows.length === 0 || filled(column));
  return columns;
}

export function valueOf(cells, column) {
  const value = cells[column.index];
  return (value === null || value === "") && column.code !== undefined ? cells[column.code] : value;
}

const longestWord = (title) => Math.max(...title.split(/\s+/).map((word) => word.length), 0);

/** Digits, signs of groups and of decimals that the longest figure takes. */
function figureWidth(column, rows) {
  let longest = 1;
  for (const cells of rows) {
    const value = cells[column.index];
    if (value !== null && value !== undefined) longest = Math.max(longest, String(value).length);
  }
  if (column.percentage) return longest + 1;
  return longest + Math.floor(Math.max(longest - column.decimals - 2, 0) / 3);
}

function textWidth(column, rows) {
  const step = Math.max(1, Math.floor(rows.length / MEASURED_ROWS));
  let longest = 0;
  for (let i = 0; i < rows.length; i += step)
    longest = Math.max(longest, format(valueOf(rows[i], column), column).length);
  return longest;
}

/** The widths of the shown columns, in digits. @param narrow  on a phone, where texts are cut sooner */
export function widths(columns, rows, narrow) {
  const widest = narrow ? [15, 17] : [34, 44];
  return columns.map((column, place) => {
    const content = column.figure
      ? figureWidth(column, rows)
      : Math.min(textWidth(column, rows) * LETTER, widest[place ? 0 : 1]);
    return Math.max(NARROWEST, content, longestWord(column.title) + 1.5) + 2.5;
  });
}

const remembered = (key) => {
  try {
    return JSON.parse(localStorage.getItem("columns:" + key)) ?? {};
  } catch {
    return {};
  }
};

/** What the user chose before, by name. */
export function applyChoice(columns, key) {
  if (!key) return;
  const choice = remembered(key);
  for (const column of columns) if (column.name in choice) column.shown = choice[column.name];
}

function remember(key, column) {
  try {
    localStorage.setItem("columns:" + key, JSON.stringify({ ...remembered(key), [column.name]: column.shown }));
  } catch {
    /* a browser that keeps nothing */
  }
}

/** A menu with a box for each column. */
export function columnMenu(columns, key, onchange) {
  const boxes = columns.map((column) => {
    const label = (column.group ? column.group + " · " : "") + (column.title || column.name);
    return check(column.secondary ? `${label} (${column.name})` : label, column.shown, (shown) => {
      column.shown = shown;
      remember(key, column);
      onchange();
    });
  });
  return menu(t("Columns"), boxes);
}
