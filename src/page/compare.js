// Two budgets, years or kinds of detail side by side.

import { run } from "./api.js";
import { nameOf, parseName, pathOf, yearsWithCards } from "./budget.js";
import { DataGrid } from "./datagrid.js";
import { check, h, select } from "./dom.js";
import { placeInFrame, show } from "./frame.js";
import { budgets, detailKinds } from "./lists.js";
import { failureBox } from "./notices.js";
import { go, link } from "./router.js";
import { t } from "./words.js";

/** "4/01@2025:actual" as the budget's name and the kind. */
const sideOf = (text) => {
  const [name, kind = "budget"] = (text ?? "").split(":");
  return { name, kind };
};

/** Two choices: of the budget with its year, and of the kind of its values. */
async function sideChoice(label, side, offered, onchange) {
  const kinds = (await detailKinds(parseName(side.name))).filter(({ NOME }) => NOME !== "orders");
  const budget = select(offered, side.name, (name) => onchange(`${name}:${side.kind}`));
  const kind = select(
    kinds.map(({ NOME, DESCRIZIONE }) => [NOME, DESCRIZIONE]),
    side.kind,
    (name) => onchange(`${side.name}:${name}`),
  );
  budget.setAttribute("aria-label", `${label}: ${t("Budget")}`);
  kind.setAttribute("aria-label", `${label}: ${t("Kind of values")}`);
  return h("fieldset", { class: "side-choice" }, h("legend", {}, label), budget, kind);
}

export function showCompare({ query }) {
  return show(async () => {
    const { rows } = await budgets();
    const names = rows.flatMap((row) =>
      yearsWithCards(row).map(({ year }) => [
        `${row.TIPO}/${row.SOTTOTIPO}@${year}`,
        `${row.TIPO}/${row.SOTTOTIPO} ${year} ${row.DESCRIZIONE}`,
      ]),
    );
    const left = sideOf(query.left || names[0]?.[0]);
    const right = sideOf(query.right || `${left.name}:${left.kind === "budget" ? "actual" : "budget"}`);
    const again = (change) =>
      go("compare", [], {
        ...query,
        left: `${left.name}:${left.kind}`,
        right: `${right.name}:${right.kind}`,
        ...change,
      });
    const budget = parseName(left.name);
    placeInFrame(
      [
        [t("Budgets"), link("budgets")],
        [nameOf(budget), link("grid", pathOf(budget))],
        [t("Compare"), ""],
      ],
      budget,
      "compare",
    );
    const options = {
      LEFT: `${left.name}:${left.kind}`,
      RIGHT: `${right.name}:${right.kind}`,
      ...(query.by && { by: "month" }),
      ...(query.changed && { "only-changed": true }),
    };
    const [choices, result] = await Promise.all([
      Promise.all([
        sideChoice(t("Left"), left, names, (text) => again({ left: text })),
        sideChoice(t("Right"), right, names, (text) => again({ right: text })),
      ]),
      run("compare", options).then(
        ({ tables }) => tables[0],
        (error) => error,
      ),
    ]);
    const bar = h(
      "div",
      { class: "grid-bar" },
      choices,
      check(t("By period"), Boolean(query.by), (wanted) => again({ by: wanted ? "month" : "" })),
      check(t("Only what differs"), Boolean(query.changed), (wanted) => again({ changed: wanted ? "1" : "" })),
    );
    const heading = h("div", { class: "title" }, h("h1", {}, t("Compare")));
    if (result instanceof Error) return [heading, bar, failureBox(result)];
    const grid = new DataGrid({ label: t("{} beside {}", options.LEFT, options.RIGHT), key: "compare" });
    grid.show(result);
    return [heading, bar, grid.element];
  });
}
