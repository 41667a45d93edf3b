// The box that a cell is edited in, and blocks that are pasted.

import { h } from "./dom.js";
import { notice } from "./notices.js";
import { t } from "./words.js";

/** "1\t2\r\n3\t4" as rows of texts; a spreadsheet ends with a line's end. */
export function blockOf(text) {
  return text
    .replace(/\r\n?/g, "\n")
    .replace(/\n$/, "")
    .split("\n")
    .map((line) => line.split("\t").map((cell) => cell.trim()));
}

export class CellEditor {
  constructor(grid) {
    this.grid = grid;
    this.open = false;
  }

  isIn(row, column) {
    return this.open && this.row === row && this.column === column;
  }

  #target() {
    const { grid } = this;
    return [grid.activeRow(), grid.shown[grid.active.column]];
  }

  /** @param typed  the key that began it, which replaces what is there; null keeps it. */
  begin(typed) {
    const { grid } = this;
    const [row, column] = this.#target();
    if (!row || !column || !grid.editing.canEdit(row, column)) return false;
    const before = grid.editing.text(row, column);
    grid.editing.opened(row, column);
    this.#show({ typed: typed !== null, before, text: typed ?? before });
    if (typed === null) this.input.select();
    else grid.editing.typing(row, column, typed);
    return true;
  }

  #show({ typed, before, text }) {
    const { grid } = this;
    const [row, column] = this.#target();
    Object.assign(this, { open: true, row: grid.active.row, column: grid.active.column, typed, before });
    this.input = h("input", {
      class: "edit",
      inputmode: "decimal",
      autocomplete: "off",
      maxlength: 64,
      "aria-label": `${column.title}, ${grid.editing.rowName(row)}`,
      value: text,
      onkeydown: (event) => this.#key(event),
      onblur: () => this.#left(),
      oninput: () => grid.editing.typing(row, column, this.input.value),
    });
    grid.cell(this.row, this.column).replaceChildren(this.input);
    this.input.focus();
  }

  /** Takes the box away while the grid is made anew. @return what `resume` goes on from; null where none is open */
  pause() {
    if (!this.open) return null;
    const { typed, before, input } = this;
    this.#close();
    return { typed, before, text: input.value, marked: [input.selectionStart, input.selectionEnd] };
  }

  resume(held) {
    const { grid } = this;
    const [row, column] = grid.editing.typedAt();
    if (row < 0) {
      grid.editing.typing(null, null, null);
      return notice(t("The cell is gone: {} was not saved", held.text), "bad");
    }
    grid.moveTo(row, column, { focus: false });
    this.#show(held);
    this.input.setSelectionRange(...held.marked);
    return grid.editing.typing(...this.#target(), held.text);
  }

  #key(event) {
    const moves = {
      Enter: [event.shiftKey ? -1 : 1, 0],
      Tab: [0, event.shiftKey ? -1 : 1],
      ArrowUp: [-1, 0],
      ArrowDown: [1, 0],
      ...(this.typed && { ArrowLeft: [0, -1], ArrowRight: [0, 1] }),
    };
    if (event.key === "Escape") this.cancel(true);
    else if (event.isComposing || !moves[event.key]) return;
    else this.#commit(...moves[event.key], true);
    event.preventDefault();
    event.stopPropagation();
  }

  /** A window that is left for a moment keeps what is being typed. */
  #left() {
    if (document.activeElement !== this.input) this.#commit(0, 0, false);
  }

  #close() {
    this.open = false;
    this.input = null;
  }

  #commit(down, right, focus) {
    if (!this.open) return;
    const { grid } = this;
    const row = grid.rows[this.row],
      column = grid.shown[this.column],
      text = this.input.value.trim();
    const at = [this.row, this.column];
    this.#close();
    if (text !== this.before) grid.editing.commit([{ row, column, text }]);
    grid.editing.typing(row, column, null);
    grid.refresh();
    if (focus) grid.moveTo(at[0] + down, at[1] + right);
  }

  cancel(focus = false) {
    if (!this.open) return;
    const { grid } = this;
    const row = grid.rows[this.row],
      column = grid.shown[this.column];
    this.#close();
    grid.editing.typing(row, column, null);
    grid.refresh();
    if (focus) grid.moveTo(grid.active.row, grid.active.column);
  }

  /** Empties what is selected. */
  clear() {
    const { grid } = this;
    const cells = [];
    grid.rows.forEach((row, index) =>
      grid.shown.forEach((column, place) => {
        const chosen = grid.anchor
          ? grid.isSelected(index, place)
          : index === grid.active.row && place === grid.active.column;
        if (chosen && grid.editing.canEdit(row, column) && grid.editing.text(row, column) !== "")
          cells.push({ row, column, text: "" });
      }),
    );
    if (cells.length) grid.editing.commit(cells);
    return cells.length > 0;
  }

  /** A block goes over the cells from the active one on, one value over all that is selected. */
  paste(text) {
    const { grid } = this;
    const block = blockOf(text);
    const start = grid.anchor
      ? { row: Math.min(grid.anchor.row, grid.active.row), column: Math.min(grid.anchor.column, grid.active.column) }
      : grid.active;
    const single = block.length === 1 && block[0].length === 1 && grid.anchor;
    const cells = [],
      left = [];
    const put = (index, place, value) => {
      const row = grid.rows[index],
        column = grid.shown[place];
      if (row && column && grid.editing.canEdit(row, column)) cells.push({ row, column, text: value });
      else if (value !== "") left.push(value);
    };
    if (single) {
      grid.rows.forEach((_, index) =>
        grid.shown.forEach((__, place) => {
          if (grid.isSelected(index, place)) put(index, place, block[0][0]);
        }),
      );
    } else {
      block.forEach((line, down) => line.forEach((value, right) => put(start.row + down, start.column + right, value)));
    }
    grid.editing.pasted(cells, left);
  }
}
