// Which rows of a grid are shown, and in which order. Rows may have rows below them: {cells, children, open, level}.

import { format } from "./cells.js";
import { valueOf } from "./gridcolumns.js";
import { t } from "./words.js";

/** Once, the other way, and back to the first order; figures begin with the greatest. */
export function nextTurn(column, turn) {
  const turns = column.number ? ["descending", "ascending", "none"] : ["ascending", "descending", "none"];
  return turns[(turns.indexOf(turn) + 1) % 3];
}

/** What has no value comes last, whichever way. */
export function comparison(column, turn) {
  if (!column || turn === "none") return null;
  const direction = turn === "ascending" ? 1 : -1;
  const collator = new Intl.Collator(document.documentElement.lang, { numeric: true });
  const order = column.number ? (a, b) => Number(a) - Number(b) : (a, b) => collator.compare(a, b);
  return (a, b) => {
    const left = valueOf(a.cells, column),
      right = valueOf(b.cells, column);
    const noLeft = left === null || left === "",
      noRight = right === null || right === "";
    if (noLeft || noRight) return noLeft === noRight ? 0 : noLeft ? 1 : -1;
    return order(left, right) * direction;
  };
}

/** What a row is found by: all its texts as they are shown. */
function searchText(row, columns) {
  row.searched ??= columns
    .filter((column) => !column.figure)
    .map((column) => format(valueOf(row.cells, column), column).toLowerCase())
    .join("\u0001");
  return row.searched;
}

/** All words must be there. */
export function finder(text, columns) {
  const words = text.toLowerCase().split(/\s+/).filter(Boolean);
  if (words.length === 0) return null;
  const found = (row) => {
    const searched = searchText(row, columns);
    return words.every((word) => searched.includes(word)) || Boolean(row.children?.some(found));
  };
  return found;
}

/** The rows to show, from the top. A search opens what it finds something in. */
export function arrange(roots, compare, found) {
  const rows = [];
  const add = (siblings) => {
    const kept = found ? siblings.filter(found) : siblings;
    for (const row of compare ? kept.slice().sort(compare) : kept) {
      rows.push(row);
      if (row.children && (row.open || found)) add(row.children);
    }
  };
  add(roots);
  return rows;
}

export function countText(found, all) {
  if (found === all) return all === 1 ? t("1 row") : t("{} rows", all);
  return t("{} of {} rows", found, all);
}
