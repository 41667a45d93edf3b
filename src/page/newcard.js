// A new card: a code for each column that the budget is analysed by.

import { run } from "./api.js";
import { cardKinds, nameOf, wholeBudget } from "./budget.js";
import { ask } from "./dialog.js";
import { field, h, select } from "./dom.js";
import { analysisColumns, codes, sites } from "./lists.js";
import { notice } from "./notices.js";
import { go } from "./router.js";
import { t } from "./words.js";

const SITE = "BU65_CODICE_CG31",
  KIND = "BU65_INDCOSRIC_BU07";

/** What a column is given, as the program takes it: a code stays a text whatever it looks like. */
const assignment = ({ COLONNA, TIPO }, value) => `${COLONNA}=${TIPO === "number" ? value : `'${value}'`}`;

/** Any code can be typed, those that are known are offered. */
function codeBox(column, known, place) {
  const list = h(
    "datalist",
    { id: `codes-${place}` },
    known.map(({ CODICE, DESCRIZIONE }) => h("option", { value: CODICE }, DESCRIZIONE ?? "")),
  );
  const input = h("input", {
    list: list.id,
    autocomplete: "off",
    maxlength: column.LUNGHEZZA,
    inputmode: column.TIPO === "number" ? "numeric" : null,
  });
  return { input, element: [field(column.DESCRIZIONE, input), list] };
}

async function controls(budget) {
  const [columns, known, places] = await Promise.all([analysisColumns(budget), codes(budget), sites()]);
  const fixed = {
    [SITE]: [budget.site, places.map(({ CODICE, DESCRIZIONE }) => [CODICE, `${CODICE} - ${DESCRIZIONE}`])],
    [KIND]: [budget.kind, cardKinds()],
  };
  return columns.map((column, place) => {
    const [preset, offered] = fixed[column.COLONNA] ?? [];
    if (!offered)
      return {
        column,
        ...codeBox(
          column,
          known.filter(({ COLONNA }) => COLONNA === column.COLONNA),
          place,
        ),
      };
    const input = select(offered, preset);
    return { column, input, element: field(column.DESCRIZIONE, input) };
  });
}

export async function askNewCard(budget) {
  const fields = await controls(budget);
  const create = async () => {
    const given = fields.filter(({ input }) => input.value.trim() !== "");
    const columns = given.map(({ column, input }) => assignment(column, input.value.trim()));
    const { tables } = await run("new", { ...wholeBudget(budget), "NAME=VALUE": columns }, { again: false });
    return tables[0].rows[0];
  };
  const created = await ask({
    title: t("New card of {}", nameOf(budget)),
    body: [
      h("p", { class: "muted" }, t("It begins with empty values for every period.")),
      h(
        "div",
        { class: "fields" },
        fields.flatMap(({ element }) => element),
      ),
    ],
    buttons: [
      [t("Cancel"), null],
      [t("Create"), create, "primary"],
    ],
  });
  if (!created) return;
  const [card, details] = created;
  notice(t("Card {} was created, with {} empty details", card, details), "good");
  go("card", [card], { budget: nameOf(budget), site: budget.site, kind: budget.kind });
}
