// The movements behind a card or one of its periods.

import { run } from "./api.js";
import { DataGrid } from "./datagrid.js";
import { h } from "./dom.js";
import { openDrill } from "./drill.js";
import { tableWith } from "./lists.js";
import { failureBox, messagesOf } from "./notices.js";
import { plainTable } from "./plaintable.js";
import { t } from "./words.js";

/** Fills a place below the card. @param period  {number, name}, or null for all of them */
export async function showMovements(place, card, period) {
  const title = period ? t("Movements of {}", period.name) : t("Movements of the card");
  const box = openDrill(place, title);
  try {
    const answer = await run("movements", { card, ...(period && { period: period.number }) });
    const movements = tableWith(answer, "CG41_NUMREG"),
      cells = tableWith(answer, "SCHEDA");
    box.append(...messagesOf(answer));
    if (cells?.rows.length) box.append(plainTable(cells));
    if (movements.rows.length) {
      const grid = new DataGrid({ label: title, key: "movements", search: movements.rows.length > 12 });
      box.append(grid.element);
      grid.show(movements);
    } else {
      box.append(h("p", { class: "muted" }, t("No movements")));
    }
  } catch (error) {
    box.append(failureBox(error));
  }
  box.scrollIntoView({ block: "nearest" });
  box.querySelector("h2").focus({ preventScroll: true });
}
