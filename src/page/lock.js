// A budget of a year that nobody may write, and its opening.

import { currentSession, run } from "./api.js";
import { nameOf } from "./budget.js";
import { ask } from "./dialog.js";
import { button, field, h } from "./dom.js";
import { notice } from "./notices.js";
import { showPlace } from "./router.js";
import { t } from "./words.js";

async function lock(name) {
  const reason = h("input", { autocomplete: "off", maxlength: 200 });
  const done = await ask({
    title: t("Lock {}?", name),
    body: [
      h("p", {}, t("Nobody writes into a locked budget, with whatever command, until it is opened again.")),
      field(t("Reason"), reason),
    ],
    buttons: [
      [t("No"), null],
      [
        t("Lock"),
        () => run("lock", { BUDGET: name, ...(reason.value.trim() && { reason: reason.value.trim() }) }),
        "primary",
      ],
    ],
  });
  if (!done) return;
  notice(t("{} is locked", name), "good");
  showPlace();
}

async function unlock(name) {
  const done = await ask({
    title: t("Open {}?", name),
    body: [h("p", {}, t("Everybody may write into it again."))],
    buttons: [
      [t("No"), null],
      [t("Open"), () => run("unlock", { BUDGET: name }), "primary"],
    ],
  });
  if (!done) return;
  notice(t("{} is open", name), "good");
  showPlace();
}

/** The button that fits; none on a server that writes nothing. */
export function lockButton(about, budget) {
  if (currentSession().readOnly) return null;
  const name = nameOf(budget);
  return about.locked
    ? button(t("Open the lock"), () => unlock(name), { class: "quiet" })
    : button(t("Lock"), () => lock(name), { class: "quiet" });
}
