// What stands around every view: where one is, the views of a budget, and the keys.

import { currentSession } from "./api.js";
import { nameOf, pathOf } from "./budget.js";
import { ask } from "./dialog.js";
import { button, h } from "./dom.js";
import { announce, failureBox } from "./notices.js";
import { choicesLine } from "./printing.js";
import { link } from "./router.js";
import { t } from "./words.js";

let crumbs,
  tabs,
  main,
  turn = 0,
  leaving = [];

export function buildFrame() {
  const session = currentSession();
  crumbs = h("nav", { class: "crumbs", "aria-label": t("You are here") });
  tabs = h("nav", { class: "tabs", "aria-label": t("Views of the budget") });
  main = h("main", { id: "main", tabindex: -1 });
  const skip = button(t("Skip to the content"), () => main.focus(), { class: "skip" });
  const side = h(
    "div",
    { class: "side" },
    session.readOnly ? h("span", { class: "badge" }, t("Read only")) : null,
    h("span", { class: "user" }, session.user ?? ""),
    button("?", showKeys, { class: "quiet", "aria-label": t("Keys"), title: t("Keys") }),
  );
  document
    .getElementById("page")
    .replaceChildren(
      skip,
      h("header", { class: "top" }, h("a", { class: "home", href: link("budgets") }, "bukorval"), crumbs, side, tabs),
      choicesLine(main),
      main,
    );
}

const VIEWS = [
  ["grid", "Cards"],
  ["report", "Report"],
  ["compare", "Compare"],
  ["elaborate", "Elaborations"],
  ["history", "History"],
];

function addressOf(name, budget) {
  if (name === "compare") return link(name, [], { left: nameOf(budget) });
  if (name === "history") return link(name, [], { budget: nameOf(budget) });
  return link(name, pathOf(budget), { site: budget.site, kind: budget.kind });
}

/** @param trail  pairs of text and address; the last one is here. */
export function placeInFrame(trail, budget, active) {
  const parts = trail.map(([text, address], i) =>
    i + 1 < trail.length ? h("a", { href: address }, text) : h("span", { "aria-current": "page" }, text),
  );
  crumbs.replaceChildren(...parts);
  const offered = currentSession().readOnly ? VIEWS.filter(([name]) => name !== "elaborate") : VIEWS;
  tabs.replaceChildren(
    ...(budget
      ? offered.map(([name, text]) =>
          h("a", { href: addressOf(name, budget), "aria-current": name === active ? "page" : null }, t(text)),
        )
      : []),
  );
  const here = trail.at(-1)?.[0];
  document.title = here ? `${here} – bukorval` : "bukorval";
}

/**
 * Shows a view. One that comes too late, because another was asked for meanwhile, is not shown.
 * @param make  ({wanted, whenLeft}) => promise of its elements; wanted() tells whether it still comes in time, what is
 *              given to whenLeft is done when the view goes
 */
export async function show(make) {
  const mine = ++turn,
    leave = [];
  const wanted = () => mine === turn;
  main.setAttribute("aria-busy", "true");
  let elements;
  try {
    elements = await make({ wanted, whenLeft: (action) => leave.push(action) });
  } catch (error) {
    console.warn(error.message);
    elements = [failureBox(error)];
  }
  if (!wanted()) return leave.forEach((action) => action());
  leaving.forEach((action) => action());
  leaving = leave;
  main.replaceChildren(...[elements].flat().filter(Boolean));
  main.removeAttribute("aria-busy");
  main.scrollTop = 0;
  announce(document.title);
  // The keyboard goes on where the view begins, when what it was in has gone.
  if (document.activeElement === document.body) main.focus({ preventScroll: true });
  return undefined;
}

const KEYS = [
  ["↑ ↓ ← →", "Move in a grid; up from the first row are the titles"],
  ["Ctrl + ← →, Home, End", "First and last column"],
  ["Ctrl + Home, Ctrl + End", "First and last row"],
  ["Enter", "Open a card; sort by a title; begin an edit"],
  ["F2", "Edit what is in the cell"],
  ["Tab", "Keep the edit and go right"],
  ["Esc", "Leave the edit"],
  ["Shift + ↑ ↓ ← →", "Select cells of a card"],
  ["Ctrl + C, Ctrl + V", "Copy cells; paste a block of a spreadsheet"],
  ["Del", "Empty cells"],
  ["Ctrl + Z, Ctrl + Y", "Take an edit back, and make it again"],
  ["Ctrl + Enter", "Movements behind the cell"],
  ["/", "Search"],
];

function showKeys() {
  const lines = KEYS.map(([keys, text]) =>
    h("tr", {}, h("th", { scope: "row" }, h("kbd", {}, keys)), h("td", {}, t(text))),
  );
  ask({
    title: t("Keys"),
    body: [h("table", { class: "keys" }, h("tbody", {}, lines))],
    buttons: [[t("Close"), null]],
  });
}
