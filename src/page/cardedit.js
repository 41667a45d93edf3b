// A card's grid as something to edit: what its cells show while they are typed, written, refused.

import { deltas, run } from "./api.js";
import { addressOf, CardCells } from "./cardcells.js";
import { askWhose } from "./conflict.js";
import { debounce } from "./dom.js";
import { Edits, isLater, textOf } from "./edits.js";
import { isDelta } from "./gridcolumns.js";
import { announce, notice } from "./notices.js";
import { parseDecimal, sameAmount } from "./numbers.js";
import { t } from "./words.js";

const SAVED_SECONDS = 2;

export class CardEditing {
  /** @param writable  whether the budget may be written at all */
  constructor({ card, budget, stamp, writable }) {
    Object.assign(this, { card, budget, writable, explain: false });
    this.looks = new Map(); // of cells that are being written, were refused, were changed by others
    this.typed = null; // {row, column, text}: what stands in the editor
    this.previews = new Map(); // row => deltas as they would be
    this.edits = new Edits({
      card,
      stamp,
      onstate: (...state) => this.#mark(...state),
      isAsSeen: (edit) => this.#isAsSeen(edit),
      onconflict: (edits, failure) => this.#conflict(edits, failure),
      ondrained: () => this.#drained(),
    });
    this.previewLater = debounce(60, () => this.#preview());
    this.onhistory = () => {};
  }

  async load() {
    const {
      tables: [table],
    } = await run("periods", { CARD: this.card, ...(this.explain && { explain: true }) });
    for (const column of table.columns) column.secondary ||= column.name === "PERIODO";
    const description = table.columns.findIndex((column) => column.name === "DESCRIZIONE");
    if (description >= 0) table.columns[description].title = t("Period");
    this.cells = new CardCells(table);
    return table;
  }

  // What the grid asks.

  canEdit(row, column) {
    const address = this.writable && addressOf(column);
    return Boolean(address) && this.cells.isWritable(row.cells, address);
  }

  rowName(row) {
    return this.cells.name(row.cells);
  }

  /** What the cell of an edit holds, though the grid was made anew since; undefined where it is gone. */
  #now({ column, period, detail }) {
    const now = this.grid.columns.find(({ name }) => name === column.name);
    const row = this.grid.roots.find(
      ({ cells }) => this.cells.period(cells) === period && this.cells.detail(cells, addressOf(column)) === detail,
    );
    return now && row?.cells[now.index];
  }

  #isAsSeen(edit) {
    const now = this.#now(edit);
    return now !== undefined && sameAmount(edit.over, now);
  }

  #lookOf(row, column) {
    return this.looks.get(this.cells.key(row.cells, column));
  }

  text(row, column) {
    return this.#lookOf(row, column)?.typed ?? textOf(row.cells[column.index]);
  }

  look(row, column) {
    const preview = this.previews.get(row);
    if (preview && isDelta(column) && column.name in preview) return { value: preview[column.name], state: "preview" };
    const look = this.#lookOf(row, column);
    return look?.typed === undefined ? (look ?? {}) : { ...look, text: look.typed };
  }

  /** What somebody begins to type belongs to what they see now. */
  opened(row, column) {
    const { cells } = row;
    this.begun = {
      look: this.edits.look,
      over: cells[column.index],
      column,
      period: this.cells.period(cells),
      own: this.cells.own(cells, addressOf(column)),
    };
  }

  /** Where one types in a grid that was made anew meanwhile: the places of row and column, negative where it is gone. */
  typedAt() {
    const { column, period, own } = this.begun;
    const { rows, shown } = this.grid;
    const place = shown.findIndex(({ name }) => name === column.name);
    const isIt = (row) =>
      this.cells.period(row.cells) === period &&
      this.canEdit(row, shown[place]) &&
      (own === null || own === this.cells.own(row.cells, addressOf(shown[place])));
    return [place < 0 ? -1 : rows.findIndex(isIt), place];
  }

  typing(row, column, text) {
    this.typed = text === null ? null : { row, column, text };
    if (this.typed) return this.previewLater();
    this.begun = undefined;
    this.ended?.();
    if (!this.edits.busy) this.#forgetPreviews();
    return this.waiting && this.others(this.waiting);
  }

  /** Gives up what was refused. */
  forget(row, column) {
    if (!row || this.#lookOf(row, column)?.state !== "refused") return false;
    this.looks.delete(this.cells.key(row.cells, column));
    this.grid.refresh();
    return true;
  }

  commit(cells) {
    const edits = cells.map(({ row, column, text }) => ({
      ...addressOf(column),
      period: this.cells.period(row.cells),
      detail: this.cells.detail(row.cells, addressOf(column)),
      text,
      row,
      column,
      over: this.begun ? this.begun.over : row.cells[column.index],
    }));
    this.edits.write(edits, this.begun?.look);
    this.#previewRows([...new Set(cells.map(({ row }) => row))]);
  }

  pasted(cells, left) {
    if (left.length)
      notice(t("{} values of the block stand where nothing can be written: they were left out", left.length), "bad");
    if (cells.length) this.commit(cells);
    if (cells.length > 1) announce(t("{} cells pasted", cells.length));
  }

  // What happens to edits.

  #mark(edit, state, message = "") {
    const key = this.cells.key(edit.row.cells, edit.column);
    this.looks.set(key, { state, message, ...(state !== "saved" && { typed: edit.text }) });
    if (state === "refused") {
      announce(message);
      this.onrefused?.(`${this.rowName(edit.row)} · ${edit.column.title}: ${message}`);
    }
    if (state === "saved") {
      edit.row.cells[edit.column.index] = parseDecimal(edit.text);
      setTimeout(() => {
        if (this.looks.get(key)?.state === "saved") this.looks.delete(key);
        this.grid.refresh();
      }, SAVED_SECONDS * 1000);
    }
    this.grid.refresh();
    this.onhistory();
  }

  /** The card as it is now beside what is to be written; what somebody wrote just the same is no conflict. */
  async #conflict(edits, failure) {
    await this.#seeNow();
    const now = (edit) => this.#now(edit) ?? null;
    const differing = [];
    for (const edit of edits) {
      const mine = edit.text === "" ? null : parseDecimal(edit.text);
      if (sameAmount(mine, now(edit)) && (mine !== null || edit.text === "")) this.#mark(edit, "saved");
      else differing.push(edit);
    }
    if (!differing.length) return [];
    // A question would take half of what is being typed for the whole.
    if (this.grid.editor.open) await new Promise((go) => (this.ended = go));
    const kept = await askWhose(
      differing.map((edit) => ({
        edit,
        column: edit.column,
        period: this.rowName(edit.row),
        theirs: now(edit),
        mine: edit.text,
      })),
      failure,
    );
    for (const edit of differing.filter((each) => !kept.includes(each)))
      this.looks.delete(this.cells.key(edit.row.cells, edit.column));
    return kept;
  }

  async #drained() {
    announce(
      [...this.looks.values()].some(({ state }) => state === "refused") ? t("Not everything was saved") : t("Saved"),
    );
    await this.#reload([]);
    this.onhistory();
    if (this.waiting) this.others(this.waiting);
  }

  // What others do.

  /** First the stamp, then the values: these are as new as it, or newer. It counts from when they are shown. */
  async #seeNow() {
    const { values } = await run("card", { CARD: this.card });
    const changed = await this.#reload(null);
    this.edits.stamp = values["Last change"];
    return changed;
  }

  /** @param change  the card's last change as the server tells it */
  async others(change) {
    this.waiting = change;
    if (this.edits.busy) return;
    if (isLater(change, this.edits.stamp) && this.grid.editor.open) {
      if (this.told !== change) notice(t("Somebody else has changed this card"));
      this.told = change;
      return;
    }
    this.waiting = null;
    if (!isLater(change, this.edits.stamp)) return;
    const changed = await this.#seeNow();
    notice(
      changed === 0
        ? t("Somebody else has changed this card")
        : changed === 1
          ? t("Somebody else has changed a value of this card")
          : t("Somebody else has changed {} values of this card", changed),
    );
  }

  /** Loads the values anew and marks those that are not as they were, unless they are one's own. */
  async #reload(own) {
    const table = await this.load();
    const rows = this.grid.roots;
    let changed = 0;
    if (table.rows.length !== rows.length || table.columns.length !== this.grid.columns.length) {
      this.grid.show(table, { keep: true });
    } else {
      table.rows.forEach((cells, i) => {
        for (const column of own === null ? this.grid.columns : []) {
          if (!addressOf(column) || sameAmount(cells[column.index], rows[i].cells[column.index])) continue;
          ++changed;
          this.looks.set(this.cells.key(cells, column), {
            state: "theirs",
            message: t("Changed by somebody else"),
          });
        }
        rows[i].cells = cells;
      });
      this.grid.retotal(table.totals);
    }
    if (!this.typed) this.#forgetPreviews();
    this.grid.refresh();
    return changed;
  }

  // Deltas as one types.

  #forgetPreviews() {
    this.previewLater.cancel();
    this.previews.clear();
    this.grid.refresh();
  }

  #preview() {
    if (this.typed) this.#previewRows([this.typed.row]);
  }

  async #previewRows(rows) {
    const turn = (this.previewTurn = (this.previewTurn ?? 0) + 1);
    const { type, subtype } = this.budget;
    const sent = rows.map((row) => this.#figures(row));
    let answer;
    try {
      answer = await deltas({ type, subtype, rows: sent });
    } catch {
      return; // the write tells what is wrong
    }
    if (turn !== this.previewTurn || (!this.typed && !this.edits.busy)) return;
    rows.forEach((row, i) => this.previews.set(row, answer.rows[i]));
    this.grid.refresh();
  }

  /** The values of a row with what is typed or being written in their place. */
  #figures(row) {
    const figures = {};
    for (const column of this.grid.columns) {
      if (!addressOf(column)) continue;
      const text =
        this.typed?.row === row && this.typed.column === column ? this.typed.text : this.#lookOf(row, column)?.typed;
      const value = text === undefined ? row.cells[column.index] : parseDecimal(text);
      if (value !== null) figures[column.name] = value;
    }
    return figures;
  }
}
