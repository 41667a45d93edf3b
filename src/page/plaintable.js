// Small tables that are only read.

import { format } from "./cells.js";
import { h } from "./dom.js";
import { gridColumns, valueOf } from "./gridcolumns.js";

const MOST_ROWS = 500;

export function plainTable(table, caption = "") {
  const columns = gridColumns(table).filter((column) => column.shown);
  const look = (column) => (column.figure || column.number ? "num" : null);
  const line = (cells, name) =>
    h(
      "tr",
      {},
      columns.map((column) => h(name, { class: look(column) }, format(valueOf(cells, column), column))),
    );
  return h(
    "div",
    { class: "scroll" },
    h(
      "table",
      { class: "plain" },
      caption ? h("caption", {}, caption) : null,
      h(
        "thead",
        {},
        h(
          "tr",
          {},
          columns.map((column) => h("th", { scope: "col", class: look(column) }, column.title)),
        ),
      ),
      h(
        "tbody",
        {},
        table.rows.slice(0, MOST_ROWS).map((cells) => line(cells, "td")),
      ),
      table.totals ? h("tfoot", {}, line(table.totals, "td")) : null,
    ),
  );
}
