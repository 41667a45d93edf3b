// Commands that ask before they write.

import { run } from "./api.js";
import { ask } from "./dialog.js";
import { h } from "./dom.js";
import { t } from "./words.js";

/** The program's own question, put to the user. */
export function confirmQuestion(question, go = t("Go on")) {
  return ask({
    title: t("The program asks"),
    body: [h("p", {}, question)],
    buttons: [
      [t("No"), false],
      [go, true, "danger"],
    ],
  });
}

/** Runs what writes; @returns its answer, null when the user said no to the program's question. */
export async function runAsking(command, options, go) {
  try {
    return await run(command, options, { again: false });
  } catch (failure) {
    if (failure.kind !== "question") throw failure;
    if (!(await confirmQuestion(failure.message, go))) return null;
    return run(command, { ...options, yes: true }, { again: false });
  }
}
