// What heads the views of a budget.

import { nameOf } from "./budget.js";
import { h } from "./dom.js";

/** @param about  what is known of the budget; @param more  elements behind its name */
export function title(about, budget, ...more) {
  return h(
    "div",
    { class: "title" },
    h("h1", {}, about.title),
    h("span", { class: "code" }, nameOf(budget)),
    about.readOnly ? h("span", { class: "badge locked" }, about.readOnly) : null,
    more,
  );
}
