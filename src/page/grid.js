// The cards of a budget with their totals and deltas.

import { currentSession, deltas, run } from "./api.js";
import { budgetOf, cardKinds, describe, nameOf, pathOf, selection, yearsWithCards } from "./budget.js";
import { ChangeWatch } from "./changes.js";
import { DataGrid } from "./datagrid.js";
import { button, h, select } from "./dom.js";
import { placeInFrame, show } from "./frame.js";
import { isDelta } from "./gridcolumns.js";
import { title } from "./heading.js";
import { sites } from "./lists.js";
import { lockButton } from "./lock.js";
import { askNewCard } from "./newcard.js";
import { announce, messagesOf, notice } from "./notices.js";
import { go, link, stay } from "./router.js";
import { t } from "./words.js";

const MANY = 1500; // cards of a budget whose first ones are shown before the others are there
const FIRST = 60; // rows that no screen is too high for
const FIXED = ["BU65_CODICE_CG31", "BU65_INDCOSRIC_BU07"]; // what the selection says already

/** The budget with a site and a kind of card, where it is kept so: the first ones, or those of the address. */
async function complete(budget, about) {
  if (about.perSite && budget.site === "") budget.site = String((await sites())[0]?.CODICE ?? 1);
  if (about.byKind && budget.kind === "") budget.kind = "0";
  return budget;
}

async function selectors(budget, about) {
  const again = (change) => go("grid", pathOf(budget), { site: budget.site, kind: budget.kind, ...change });
  const controls = [];
  if (about.perSite) {
    const offered = (await sites()).map(({ CODICE, DESCRIZIONE }) => [CODICE, `${CODICE} - ${DESCRIZIONE}`]);
    const site = select(offered, budget.site, (value) => again({ site: value }));
    site.setAttribute("aria-label", t("Site"));
    controls.push(site);
  }
  if (about.byKind) {
    const kind = select(cardKinds(), budget.kind, (value) => again({ kind: value }));
    kind.setAttribute("aria-label", t("Kind of card"));
    controls.push(kind);
  }
  if (!about.readOnly && !currentSession().readOnly)
    controls.push(button(t("New card…"), () => askNewCard(budget).catch((error) => notice(error.message, "bad"))));
  return controls;
}

/** The deltas of a row of sums, by the object's own formulas. */
async function withDeltas(budget, cells, columns) {
  const { type, subtype } = budget;
  const sent = Object.fromEntries(
    columns
      .filter((column) => column.figure && !isDelta(column) && cells[column.index] !== null)
      .map((column) => [column.name, cells[column.index]]),
  );
  const [answer] = (await deltas({ type, subtype, rows: [sent] })).rows;
  return columns.map((column) => (isDelta(column) ? (answer[column.name] ?? null) : cells[column.index]));
}

/** @returns (view) what puts the view into the address, as long as one is there */
function addressKeeper(path, { site, kind }) {
  let address = "";
  return (view) => {
    if (address && location.hash !== address) return;
    stay("grid", path, { site, kind, ...view });
    address = location.hash;
  };
}

export function showGrid({ path, query }) {
  const budget = budgetOf(path, query);
  return show(async ({ wanted, whenLeft }) => {
    const watch = new ChangeWatch(budget);
    whenLeft(() => watch.stop());
    const begun = watch.start();
    const [about] = await Promise.all([describe(budget), sites()]);
    await complete(budget, about);
    const { find, sort } = query;
    const keepView = addressKeeper(path, budget);
    if (wanted()) keepView({ find, sort });
    placeInFrame(
      [
        [t("Budgets"), link("budgets")],
        [`${about.title} ${budget.year}`, ""],
      ],
      budget,
      "grid",
    );
    const all = begun.then(() => load(budget));
    const some = cardsOf(about, budget) > MANY ? load(budget, { first: FIRST }) : all;
    const [table, tools] = await Promise.all([Promise.race([some, all]), selectors(budget, about)]);
    const grid = new DataGrid({
      label: t("Cards of {}", nameOf(budget)),
      key: `grid:${budget.type}/${budget.subtype}`,
      tools,
      view: { find, sort },
      onview: keepView,
      rowLink: ({ cells }) =>
        link("card", [cells[grid.id]], { budget: nameOf(budget), site: budget.site, kind: budget.kind }),
      deltas: (cells, columns) => withDeltas(budget, cells, columns),
    });
    display(grid, table);
    if (!table.totals) completeLater(grid, all, wanted);
    whenLeft(watchOthers(watch, grid, budget));
    const lock = h("span", { class: "aside" }, lockButton(about, budget));
    return [title(about, budget, lock), ...messagesOf(table), grid.element];
  });
}

const cardsOf = (about, { year }) => yearsWithCards(about).find((each) => each.year === year)?.cards ?? 0;

/** The first cards are on the screen already; the others and the totals come when they are there. */
async function completeLater(grid, all, wanted) {
  grid.element.setAttribute("aria-busy", "true");
  grid.count.textContent = t("The first {} of all rows…", grid.roots.length);
  try {
    const table = await all;
    if (wanted()) display(grid, table, true);
  } catch (error) {
    if (wanted()) notice(error.message, "bad");
  }
  grid.element.removeAttribute("aria-busy");
}

async function load(budget, more = {}) {
  const {
    tables: [table],
    messages,
  } = await run("grid", { ...selection(budget), ...more });
  table.messages = messages;
  for (const column of table.columns) if (FIXED.some((name) => column.name.startsWith(name))) column.secondary = true;
  return table;
}

/** What names a card comes first; its number is for programs. */
function display(grid, table, keep = false) {
  grid.id = table.columns.findIndex((column) => column.name === "BU65_ID");
  if (grid.id >= 0) table.columns[grid.id].secondary = true;
  grid.show(table, { keep });
}

/**
 * Cards that others have changed are marked and told; they are loaded anew when the user says so.
 * @returns what ends it
 */
function watchOthers(watch, grid, budget) {
  let told = null;
  watch.onchange = (cards) => {
    const changed = new Set(cards.map((card) => String(card.id)));
    for (const row of grid.roots) row.changed ||= changed.has(String(row.cells[grid.id]));
    grid.refresh();
    const count = grid.roots.filter((row) => row.changed).length;
    if (!count) return;
    told?.close();
    told = notice(count === 1 ? t("Somebody has changed a card") : t("Somebody has changed {} cards", count), "info", [
      t("Show the changes"),
      async () => {
        display(grid, await load(budget), true);
        announce(t("Loaded anew"));
      },
    ]);
  };
  return () => told?.close();
}
