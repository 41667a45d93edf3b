// What is done with a whole card: an amount spread over its periods, its deletion.

import { operations } from "./api.js";
import { runAsking } from "./asking.js";
import { nameOf, pathOf } from "./budget.js";
import { button } from "./dom.js";
import { openDrill } from "./drill.js";
import { measures, writtenKinds } from "./lists.js";
import { failureBox, notice } from "./notices.js";
import { go, showPlace } from "./router.js";
import { RunView } from "./runview.js";
import { t } from "./words.js";

const likenesses = () => [
  ["even", t("the same in each period")],
  ["days", t("by the days of each period")],
  ["last-year", t("like last year's actuals")],
  ["actual", t("like this year's actuals")],
];

/** Fills a place below the card with the options of a spread. */
async function showSpread(place, card, budget, name) {
  const title = t("Spread an amount over the periods");
  const box = openDrill(place, title);
  try {
    const [description, kind] = await Promise.all([operations(), writtenKinds(budget)]);
    const view = new RunView({
      command: "spread",
      operation: description.paths["/api/v1/jobs/spread"].post,
      fixed: { CARD: card },
      first: ["TOTAL", "like", "kind", "measure", "from", "to"],
      choices: { like: likenesses(), kind, measure: measures() },
      presets: { like: "even", kind: "budget", measure: "amount" },
      labels: {
        TOTAL: t("Amount or quantity"),
        like: t("How"),
        kind: t("Kind of values"),
        measure: t("Measure"),
        from: t("From period"),
        to: t("To period"),
      },
      target: name,
      onwritten: () => [button(t("Show the card"), showPlace, { class: "primary" })],
    });
    box.append(view.element);
    view.element.querySelector("input").focus();
  } catch (error) {
    box.append(failureBox(error));
  }
  box.scrollIntoView({ block: "nearest" });
}

async function remove(card, budget, name) {
  try {
    if (!(await runAsking("delete", { CARD: card }, t("Delete")))) return;
    notice(t("{} was deleted; the history can bring it back", name), "good");
    go("grid", pathOf(budget), { site: budget.site, kind: budget.kind });
  } catch (error) {
    notice(error.message, "bad");
  }
}

/** Buttons for a card that may be written. @param place  where more is shown */
export function cardActions(place, card, budget, name) {
  return [
    button(t("Spread…"), () => showSpread(place, card, budget, `${name} (${nameOf(budget)})`)),
    button(t("Delete…"), () => remove(card, budget, name)),
  ];
}
