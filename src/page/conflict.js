// Two people on one card: what they wrote, what I want, and which of the two stays.

import { ask } from "./dialog.js";
import { h } from "./dom.js";
import { clean, format } from "./cells.js";
import { records } from "./lists.js";
import { t } from "./words.js";

/** Who has changed the card, from what the refusal shows. */
function who(failure) {
  const rows = failure.tables?.[0] ? records(failure.tables[0]) : [];
  const people = [...new Set(rows.map((row) => row.UTENTE).filter(Boolean))];
  return people.map(clean).join(", ");
}

/**
 * @param cells  [{edit, column, period, theirs, mine}]: names of the cell, and both values as texts
 * @returns the edits to write all the same
 */
export async function askWhose(cells, failure) {
  const person = who(failure),
    single = cells.length === 1;
  const choices = cells.map((cell, i) => ({
    cell,
    theirs: h("input", { type: "radio", name: `whose-${i}`, checked: true, hidden: single }),
    mine: h("input", { type: "radio", name: `whose-${i}`, hidden: single }),
  }));
  const lines = choices.map(({ cell, theirs, mine }) =>
    h(
      "tr",
      {},
      h("th", { scope: "row" }, `${cell.period} · ${cell.column.title}`),
      h(
        "td",
        { class: "num" },
        h(
          "label",
          { class: "check" },
          theirs,
          h("b", { class: "theirs" }, format(cell.theirs, cell.column) || t("nothing")),
        ),
      ),
      h(
        "td",
        { class: "num" },
        h("label", { class: "check" }, mine, h("b", { class: "mine" }, clean(cell.mine) || t("nothing"))),
      ),
    ),
  );
  const chosen = () => choices.filter(({ mine }) => mine.checked).map(({ cell }) => cell.edit);
  const answer = await ask({
    title: t("Somebody else has changed this card"),
    body: [
      h("p", {}, failure.message),
      person ? h("p", { class: "muted" }, t("By {}", person)) : null,
      h(
        "table",
        { class: "plain" },
        h(
          "thead",
          {},
          h("tr", {}, h("th"), h("th", { class: "num" }, t("Theirs")), h("th", { class: "num" }, t("Mine"))),
        ),
        h("tbody", {}, lines),
      ),
    ].filter(Boolean),
    buttons: single
      ? [
          [t("Keep theirs"), () => []],
          [t("Write mine"), () => cells.map(({ edit }) => edit), "primary"],
        ]
      : [
          [t("Keep all theirs"), () => []],
          [t("Write all mine"), () => cells.map(({ edit }) => edit)],
          [t("As chosen"), chosen, "primary"],
        ],
  });
  return answer ?? [];
}
