// One card by period, edited like a spreadsheet.

import { currentSession, run } from "./api.js";
import { describe, nameOf, parseName, pathOf } from "./budget.js";
import { CardEditing } from "./cardedit.js";
import { cardActions } from "./cardactions.js";
import { clean, format } from "./cells.js";
import { ChangeWatch } from "./changes.js";
import { DataGrid } from "./datagrid.js";
import { button, check, h } from "./dom.js";
import { placeInFrame, show } from "./frame.js";
import { title } from "./heading.js";
import { records, tableWith } from "./lists.js";
import { showMovements } from "./movements.js";
import { notice } from "./notices.js";
import { link } from "./router.js";
import { plainTable } from "./plaintable.js";
import { t } from "./words.js";

/** What the budget's grid says of the card, by the names of its columns. */
function headerOf(answer) {
  const lines = records(tableWith(answer, "CAMPO") ?? { columns: [], rows: [] });
  return new Map(lines.map((line) => [line.CAMPO, line]));
}

function cardName(header, id) {
  const named =
    [...header.values()].find(({ CAMPO }) => CAMPO === "BU65_SCHEDA_BU07_DESCR") ??
    [...header.values()].find(({ CAMPO }) => CAMPO.endsWith("_DESCR") && !CAMPO.includes("CG31"));
  return clean(String(named?.VALORE ?? t("Card {}", id)));
}

/** Site, account and the like; numbers for programs stay out. */
function facts(header, name, kinds) {
  const shown = [...header.values()].filter(
    ({ CAMPO, VALORE }) => CAMPO.endsWith("_DESCR") && clean(String(VALORE)) !== name,
  );
  const lines = shown.map(({ NOME, VALORE }) => [NOME, clean(String(VALORE))]);
  const kind = header.get("BU65_INDCOSRIC_BU07");
  if (kind && kinds) lines.push([kind.NOME, Number(kind.VALORE) ? t("Revenues") : t("Costs")]);
  return h(
    "dl",
    { class: "facts" },
    lines.map(([term, value]) => h("div", {}, h("dt", {}, term), h("dd", {}, value))),
  );
}

function moreOf(answer) {
  const tables = ["RATE", "RIPARTIZIONE", "BU14_ID"]
    .map((name) => tableWith(answer, name))
    .filter((table) => table?.rows.length);
  const filled = tables.filter((table) => table.rows.some((row) => row.some((value) => value !== null)));
  if (!filled.length) return null;
  return h(
    "details",
    { class: "more" },
    h("summary", {}, t("Cash flow and percentages")),
    filled.map((table) => plainTable(table, table.title)),
  );
}

/** Buttons beside the grid, and the keys that press them. */
function toolsOf(editing, actions) {
  const undo = button(t("Undo"), () => editing.edits.undo(), { title: "Ctrl+Z" });
  const redo = button(t("Redo"), () => editing.edits.redo(), { title: "Ctrl+Y" });
  const update = () => {
    undo.disabled = !editing.edits.canUndo;
    redo.disabled = !editing.edits.canRedo;
  };
  editing.onhistory = update;
  update();
  return [
    editing.writable ? [undo, redo, ...actions.more] : [],
    button(t("Movements"), actions.movements, { title: "Ctrl+Enter" }),
    check(t("Explain forecasts"), false, actions.explain),
  ].flat();
}

function keysOf(grid, editing, actions) {
  grid.element.addEventListener("keydown", (event) => {
    if (!(event.ctrlKey || event.metaKey) || event.target.matches("input")) return;
    const key = event.key.toLowerCase();
    const action =
      key === "z" && !event.shiftKey
        ? () => editing.edits.undo()
        : key === "y" || key === "z"
          ? () => editing.edits.redo()
          : event.key === "Enter"
            ? actions.movements
            : null;
    if (!action) return;
    event.preventDefault();
    action();
  });
}

/** A card as it is, and what looks for changes of its budget from before that was read. */
async function watched(id, name, whenLeft) {
  const known = name || (await run("card", { CARD: id })).values.Budget;
  const watch = new ChangeWatch(parseName(known));
  whenLeft(() => watch.stop());
  await watch.start();
  const answer = await run("card", { CARD: id });
  if (answer.values.Budget === known) return { answer, watch };
  watch.stop();
  return watched(id, answer.values.Budget, whenLeft);
}

export function showCard({ path: [id], query }) {
  return show(async ({ whenLeft }) => {
    const { answer, watch } = await watched(id, query.budget, whenLeft);
    const budget = {
      ...parseName(answer.values.Budget),
      site: query.site ?? "",
      kind: query.kind ?? "",
    };
    const about = await describe(budget);
    const header = headerOf(answer),
      name = cardName(header, id);
    const back = link("grid", pathOf(budget), { site: budget.site, kind: budget.kind });
    placeInFrame(
      [
        [t("Budgets"), link("budgets")],
        [`${about.title} ${budget.year}`, back],
        [name, ""],
      ],
      budget,
      "grid",
    );

    const editing = new CardEditing({
      card: Number(id),
      budget,
      stamp: answer.values["Last change"],
      writable: !about.readOnly && !currentSession().readOnly,
    });
    const drill = h("div");
    const refused = h("p", { class: "bad", role: "alert" });
    const actions = {
      more: cardActions(drill, Number(id), budget, name),
      movements: () => {
        const row = grid.activeRow();
        showMovements(drill, id, row ? { number: editing.cells.period(row.cells), name: editing.rowName(row) } : null);
      },
      explain: async (wanted) => {
        editing.explain = wanted;
        grid.show(await editing.load(), { keep: true });
      },
    };
    const grid = new DataGrid({
      label: t("{} by period", name),
      key: `card:${budget.type}/${budget.subtype}`,
      search: false,
      editing,
      tools: toolsOf(editing, actions),
    });
    editing.grid = grid;
    editing.onrefused = (text) => {
      refused.textContent = text;
    };
    grid.show(await editing.load());
    keysOf(grid, editing, actions);
    watchOthers(watch, editing, id);
    const changed = h("span", { class: "muted" }, t("Last change {}", format(editing.edits.stamp.split(" #")[0], {})));
    return [
      title(
        { ...about, title: name },
        budget,
        changed,
        h("a", { class: "aside", href: link("history", [id], { budget: nameOf(budget) }) }, t("History")),
      ),
      facts(header, name, about.byKind),
      grid.element,
      refused,
      moreOf(answer),
      drill,
    ];
  });
}

function watchOthers(watch, editing, id) {
  watch.onchange = (cards) => {
    const mine = cards.find((card) => String(card.id) === id);
    if (mine?.lastChange) editing.others(mine.lastChange);
    else if (mine) notice(t("Somebody else has deleted this card"), "bad");
  };
}
