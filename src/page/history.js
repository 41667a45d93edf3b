// What was written, by whom, and taking it back.

import { currentSession, run } from "./api.js";
import { parseName, pathOf } from "./budget.js";
import { clean, format } from "./cells.js";
import { ask } from "./dialog.js";
import { button, h } from "./dom.js";
import { placeInFrame, show } from "./frame.js";
import { records } from "./lists.js";
import { notice } from "./notices.js";
import { plainTable } from "./plaintable.js";
import { link, showPlace } from "./router.js";
import { t } from "./words.js";

const NEWEST = 300;

async function undo(entry) {
  const sure = await ask({
    title: t("Take back entry {}?", entry.NUMERO),
    body: [
      h("p", {}, clean(entry.COMANDO ?? "")),
      h(
        "p",
        { class: "muted" },
        t("{} rows, written by {} on {}", entry.RIGHE, clean(entry.UTENTE ?? ""), format(entry.DATA, {})),
      ),
    ],
    buttons: [
      [t("Leave it"), false],
      [t("Take it back"), true, "danger"],
    ],
  });
  if (!sure) return;
  try {
    await run("undo", { ENTRY: entry.NUMERO }, { again: false });
    notice(t("Entry {} was taken back", entry.NUMERO), "good");
    showPlace();
  } catch (error) {
    await ask({
      title: t("It was not taken back"),
      wide: true,
      body: [h("p", {}, error.message), ...(error.tables ?? []).map((table) => plainTable(table))],
      buttons: [[t("Close"), null]],
    });
  }
}

function entryLine(entry) {
  const writable = !currentSession().readOnly;
  const action =
    entry.ANNULLATO !== null
      ? h("span", { class: "muted" }, t("undone by {}", entry.ANNULLATO))
      : writable
        ? button(t("Undo"), () => undo(entry), { "aria-label": t("Take back entry {}", entry.NUMERO) })
        : null;
  return h(
    "tr",
    {},
    h("th", { scope: "row", class: "num" }, entry.NUMERO),
    h("td", {}, format(entry.DATA, {})),
    h("td", {}, clean(entry.UTENTE ?? "")),
    h("td", { class: "command" }, clean(entry.COMANDO ?? "")),
    h("td", { class: "num" }, entry.RIGHE),
    h("td", {}, action),
  );
}

function entriesTable(table) {
  const entries = records(table);
  if (!entries.length) return h("p", { class: "muted" }, t("Nothing was written yet"));
  const titles = Object.fromEntries(table.columns.map(({ name, title }) => [name, title]));
  const head = [["NUMERO", "num"], ["DATA"], ["UTENTE"], ["COMANDO"], ["RIGHE", "num"]];
  return h(
    "div",
    { class: "scroll" },
    h(
      "table",
      { class: "plain entries" },
      h(
        "thead",
        {},
        h(
          "tr",
          {},
          head.map(([name, look]) => h("th", { scope: "col", class: look ?? null }, titles[name])),
          h("th"),
        ),
      ),
      h("tbody", {}, entries.slice(0, NEWEST).map(entryLine)),
    ),
  );
}

export function showHistory({ path: [card], query }) {
  return show(async () => {
    const budget = query.budget ? parseName(query.budget) : null;
    const trail = [[t("Budgets"), link("budgets")]];
    if (budget) trail.push([query.budget, link("grid", pathOf(budget))]);
    if (card) trail.push([t("Card {}", card), link("card", [card])]);
    placeInFrame([...trail, [t("History"), ""]], budget, "history");
    const {
      tables: [table],
    } = await run("history", card ? { CARD: card } : {});
    const heading = h(
      "div",
      { class: "title" },
      h("h1", {}, card ? t("History of card {}", card) : t("History")),
      card ? h("a", { href: link("history", [], { budget: query.budget }) }, t("All entries")) : null,
    );
    if (!card) return [heading, entriesTable(table)];
    return [heading, table.rows.length ? plainTable(table) : h("p", { class: "muted" }, t("Nothing was written yet"))];
  });
}
