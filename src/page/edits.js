// Edits of one card, written one after the other. Each names the last change of the card that was seen when it was begun,
// so that nobody's work is written over unseen; what was written can be taken back, edit by edit.

import { run } from "./api.js";
import { plainDecimal, withoutOrnament } from "./numbers.js";

const column = (table, name) => table.columns.findIndex((each) => each.name === name);

/** What `set` takes: a text in the company's signs, or nothing. */
const valueText = (text) => withoutOrnament(text) || "NULL";
export const textOf = (value) => (value === null ? "" : plainDecimal(value));

/** Whether a last change ("2025-10-06 09:30:00 #17") is later than another; one without a history has only its date. */
export function isLater(change, than) {
  const entry = (text) => Number(/#(\d+)/.exec(text)?.[1] ?? 0);
  const date = (text) => text.split(" #")[0];
  if (entry(change) && entry(change) !== entry(than)) return entry(change) > entry(than);
  return date(change) > date(than);
}

export class Edits {
  /**
   * @param stamp       the card's last change that was seen
   * @param onstate     (edit, state, message): "saving", "saved", "refused"
   * @param isAsSeen    (edit) => whether its cell still holds what it is to be written over
   * @param onconflict  (edits, failure) => promise of those to write all the same
   * @param ondrained   when nothing is left to write
   */
  constructor({ card, stamp, onstate, isAsSeen, onconflict, ondrained }) {
    Object.assign(this, { card, onstate, isAsSeen, onconflict, ondrained });
    this.stamps = [stamp]; // the last change as it was at each look at the card; one's own writes go on from it
    this.queue = [];
    this.done = [];
    this.undone = [];
    this.busy = false;
  }

  /** Which look at the card was the last. */
  get look() {
    return this.stamps.length - 1;
  }
  get stamp() {
    return this.stamps.at(-1);
  }
  /** The card was looked at anew. */
  set stamp(change) {
    this.stamps.push(change);
  }

  /**
   * @param edits  [{period, detail, kind, measure, text}]: one step for undo
   * @param look   at which they were begun
   */
  write(edits, look = this.look) {
    this.undone = [];
    return this.#add({ edits: this.#saving(edits.map((edit) => ({ ...edit, look }))), into: this.done });
  }

  get canUndo() {
    return this.done.length > 0;
  }
  get canRedo() {
    return this.undone.length > 0;
  }

  undo() {
    return this.#turn(this.done, this.undone);
  }
  redo() {
    return this.#turn(this.undone, this.done);
  }

  /** What is still being written is taken back first. */
  #turn(from, into) {
    if (!from.length && !this.busy) return null;
    return this.#add({ from, into });
  }

  /** The last step backwards: over what it left, the values of before are written like any others. */
  #back(from) {
    const back = (edit) => ({ ...edit, over: edit.after, text: textOf(edit.before) });
    return this.#saving((from.pop() ?? []).map(back).reverse());
  }

  #saving(edits) {
    for (const edit of edits) this.onstate(edit, "saving");
    return edits;
  }

  #add(group) {
    this.queue.push(group);
    return this.#drain();
  }

  async #drain() {
    if (this.busy) return;
    this.busy = true;
    try {
      while (this.queue.length) await this.#writeGroup(this.queue.shift());
    } finally {
      this.busy = false;
    }
    await this.ondrained();
  }

  async #writeGroup({ from, edits = this.#back(from), into }) {
    const written = [];
    for (let rest = edits.slice(); rest.length;) {
      try {
        written.push(await this.#writeOne(rest[0]));
        rest.shift();
      } catch (failure) {
        if (failure.status === 409) {
          const kept = await this.onconflict(rest, failure);
          rest = kept.map((edit) => ({ ...edit, look: this.look }));
        } else {
          this.onstate(rest.shift(), "refused", failure.message);
        }
      }
    }
    if (written.length) into.push(written);
  }

  async #writeOne(edit) {
    if (edit.look !== this.look && this.isAsSeen(edit)) edit.look = this.look;
    const { period, detail, kind, measure, text, look } = edit;
    const options = { CARD: this.card, PERIOD: period, VALUE: valueText(text), kind, measure, seen: this.stamps[look] };
    if (detail !== null) options.detail = detail;
    const {
      tables: [table],
    } = await run("set", options);
    const [row] = table.rows;
    this.stamps[look] = row[column(table, "ULTIMAMODIFICA")] ?? this.stamps[look];
    this.onstate(edit, "saved");
    return { ...edit, before: row[column(table, "PRIMA")], after: row[column(table, "DOPO")] };
  }
}
