// Edits of one card, written one after the other. Each names the change of the card that was seen last, so that nobody's
// work is written over unseen; what was written can be taken back, edit by edit.

import { run } from "./api.js";
import { plainDecimal, withoutOrnament } from "./numbers.js";

const column = (table, name) => table.columns.findIndex((each) => each.name === name);

/** What `set` takes: a text in the company's signs, or nothing. */
const valueText = (text) => withoutOrnament(text) || "NULL";
export const textOf = (value) => (value === null ? "" : plainDecimal(value));

/** Whether a last change ("2025-10-06 09:30:00 #17") is later than another. */
export function isLater(change, than) {
  const entry = (text) => Number(/#(\d+)/.exec(text)?.[1] ?? 0);
  if (entry(change) !== entry(than)) return entry(change) > entry(than);
  return change > than;
}

export class Edits {
  /**
   * @param stamp       the card's last change that was seen
   * @param onstate     (edit, state, message): "saving", "saved", "refused"
   * @param onconflict  (edits, failure) => promise of those to write all the same
   * @param ondrained   when nothing is left to write
   */
  constructor({ card, stamp, onstate, onconflict, ondrained }) {
    Object.assign(this, { card, stamp, onstate, onconflict, ondrained });
    this.queue = [];
    this.done = [];
    this.undone = [];
    this.busy = false;
  }

  /** @param edits  [{period, detail, kind, measure, text}]: one step for undo. */
  write(edits) {
    this.undone = [];
    return this.#add({ edits, into: this.done });
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

  /** The values of before are written like any others. */
  #turn(from, into) {
    const step = from.pop();
    if (!step) return null;
    return this.#add({ edits: step.map((edit) => ({ ...edit, text: textOf(edit.before) })).reverse(), into });
  }

  #add(group) {
    this.queue.push(group);
    for (const edit of group.edits) this.onstate(edit, "saving");
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

  async #writeGroup({ edits, into }) {
    const written = [];
    for (let rest = edits.slice(); rest.length;) {
      try {
        written.push(await this.#writeOne(rest[0]));
        rest.shift();
      } catch (failure) {
        if (failure.status === 409) {
          rest = await this.onconflict(rest, failure);
        } else {
          this.onstate(rest.shift(), "refused", failure.message);
        }
      }
    }
    if (written.length) into.push(written);
  }

  async #writeOne(edit) {
    const { period, detail, kind, measure, text } = edit;
    const options = { CARD: this.card, PERIOD: period, VALUE: valueText(text), kind, measure, seen: this.stamp };
    if (detail !== null) options.detail = detail;
    const {
      tables: [table],
    } = await run("set", options);
    const [row] = table.rows;
    this.stamp = row[column(table, "ULTIMAMODIFICA")] ?? this.stamp;
    this.onstate(edit, "saved");
    return { ...edit, before: row[column(table, "PRIMA")], after: row[column(table, "DOPO")] };
  }
}
