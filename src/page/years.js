// The accounting years that budgets are kept for: added, closed, opened again.

import { currentSession, run } from "./api.js";
import { ask } from "./dialog.js";
import { button, field, h } from "./dom.js";
import { format } from "./cells.js";
import { placeInFrame, show } from "./frame.js";
import { forget, isClosedState, years } from "./lists.js";
import { notice } from "./notices.js";
import { link, showPlace } from "./router.js";
import { t } from "./words.js";

const MONTHS = 12;

async function change(options, told) {
  await run("years", options, { again: false });
  forget();
  notice(told, "good");
  showPlace();
  return true;
}

function askState({ ANNO, PROGRESSIVO }, closed) {
  const options = { YEAR: ANNO, progressive: PROGRESSIVO };
  return ask({
    title: closed ? t("Open {} again?", ANNO) : t("Close {}?", ANNO),
    body: [
      h(
        "p",
        {},
        closed ? t("Its budgets can be written again.") : t("Nothing is written into a closed year any more."),
      ),
    ],
    buttons: [
      [t("No"), null],
      closed
        ? [t("Open again"), () => change({ ...options, ACTION: "reopen" }, t("{} is open", ANNO)), "primary"]
        : [t("Close the year"), () => change({ ...options, ACTION: "close" }, t("{} is closed", ANNO)), "primary"],
    ],
  });
}

function askNew(calendar) {
  const last = Math.max(0, ...calendar.map(({ ANNO }) => Number(ANNO)));
  const input = (type, value) => h("input", { type, value, autocomplete: "off" });
  const year = input("number", last ? last + 1 : ""),
    from = input("date", ""),
    months = input("number", MONTHS);
  const add = () =>
    change(
      {
        ACTION: "add",
        YEAR: Number(year.value),
        months: Number(months.value),
        ...(from.value && { from: from.value }),
      },
      t("{} was added", year.value),
    );
  return ask({
    title: t("New year"),
    body: [
      h(
        "div",
        { class: "fields" },
        field(t("Year"), year),
        field(t("First day"), from, t("without one, the day after the year before")),
        field(t("Months"), months),
      ),
    ],
    buttons: [
      [t("Cancel"), null],
      [t("Add"), add, "primary"],
    ],
  });
}

function yearLine(year, writable) {
  const closed = isClosedState(year.STATO);
  const text = closed ? t("Open again") : t("Close the year");
  return h(
    "tr",
    {},
    h("th", { scope: "row" }, year.ANNO),
    h("td", { class: "num" }, year.PROGRESSIVO),
    h("td", {}, format(year.DATAINIZIO, {})),
    h("td", {}, format(year.DATAFINE, {})),
    h("td", {}, closed ? t("closed") : t("open")),
    writable
      ? h("td", {}, button(text, () => askState(year, closed), { "aria-label": `${text}: ${year.ANNO}` }))
      : null,
  );
}

export function showYears() {
  placeInFrame([[t("Budgets"), link("budgets")], [t("Years"), ""]], null, "");
  return show(async () => {
    const writable = !currentSession().readOnly,
      calendar = await years();
    const titles = [t("Year"), t("Progressive"), t("From"), t("To"), t("State")];
    return [
      h(
        "div",
        { class: "title" },
        h("h1", {}, t("Years")),
        writable ? button(t("New year"), () => askNew(calendar), { class: "aside" }) : null,
      ),
      h("p", { class: "muted" }, t("Budgets are kept for these years; nothing is written into a closed one.")),
      h(
        "div",
        { class: "scroll" },
        h(
          "table",
          { class: "plain entries fitting" },
          h(
            "thead",
            {},
            h(
              "tr",
              {},
              titles.map((text, i) => h("th", { scope: "col", class: i === 1 ? "num" : null }, text)),
              writable ? h("td") : null,
            ),
          ),
          h(
            "tbody",
            {},
            calendar.map((year) => yearLine(year, writable)),
          ),
        ),
      ),
    ];
  });
}
