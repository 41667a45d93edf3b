// Keys, clicks and the clipboard in a grid.

import { format } from "./cells.js";
import { valueOf } from "./gridcolumns.js";

const ARROWS = { ArrowUp: [-1, 0], ArrowDown: [1, 0], ArrowLeft: [0, -1], ArrowRight: [0, 1] };

const addressOf = (target) => {
  const cell = target.closest?.("[data-row]");
  return cell && { row: Number(cell.dataset.row), column: Number(cell.dataset.column) };
};

export class GridKeys {
  constructor(grid) {
    this.grid = grid;
    const on = (name, action) => grid.scroller.addEventListener(name, (event) => action.call(this, event));
    on("keydown", this.key);
    on("mousedown", this.press);
    on("click", this.click);
    on("dblclick", this.doubleClick);
    on("focusin", this.enter);
    on("copy", this.copy);
    on("paste", this.paste);
  }

  key(event) {
    const { grid } = this;
    if (grid.editor.open || event.defaultPrevented || event.isComposing) return;
    if (this.#move(event) || this.#act(event) || this.#begin(event)) event.preventDefault();
  }

  #move(event) {
    const { grid } = this;
    const { row, column } = grid.active;
    const extend = event.shiftKey && Boolean(grid.editing);
    const far = event.ctrlKey || event.metaKey;
    const page = Math.max(1, Math.floor(grid.scroller.clientHeight / grid.rowHeight) - 3);
    if (event.altKey) return false;
    const arrow = ARROWS[event.key];
    if (arrow && this.#foldsTree(event.key)) return true;
    const end = grid.rows.length - 1,
      right = grid.shown.length - 1;
    const target = arrow
      ? far
        ? [arrow[0] < 0 ? 0 : arrow[0] ? end : row, arrow[1] < 0 ? 0 : arrow[1] ? right : column]
        : [row + arrow[0], column + arrow[1]]
      : {
          Home: [far ? 0 : row, 0],
          End: [far ? end : row, right],
          PageUp: [Math.max(row - page, 0), column],
          PageDown: [Math.min(row + page, end), column],
        }[event.key];
    if (!target) return false;
    grid.moveTo(target[0], target[1], { extend });
    return true;
  }

  /** Left and right close and open a group in its first column. */
  #foldsTree(key) {
    const { grid } = this;
    const row = grid.activeRow();
    if (grid.active.column !== 0 || !row?.children) return false;
    if ((key === "ArrowRight") === Boolean(row.open) || !["ArrowLeft", "ArrowRight"].includes(key)) return false;
    grid.toggle(row);
    return true;
  }

  #act(event) {
    const { grid } = this;
    const row = grid.activeRow();
    if (event.key === " " || event.key === "Enter") {
      if (grid.active.row === -1) {
        grid.sortBy(grid.shown[grid.active.column]);
        grid.moveTo(-1, grid.active.column);
        return true;
      }
      if (row?.children) {
        grid.toggle(row);
        return true;
      }
      if (event.key === "Enter" && !event.ctrlKey && !grid.editing && row && grid.rowLink?.(row)) {
        location.hash = grid.rowLink(row);
        return true;
      }
    }
    return false;
  }

  #begin(event) {
    const { grid } = this;
    if (!grid.editing || event.ctrlKey || event.metaKey || event.altKey) return false;
    if (event.key === "Escape") return grid.editing.forget(grid.activeRow(), grid.shown[grid.active.column]);
    if (event.key === "Enter" || event.key === "F2") return grid.editor.begin(null);
    if (event.key === "Delete" || event.key === "Backspace") return grid.editor.clear();
    return event.key.length === 1 && event.key !== " " && grid.editor.begin(event.key);
  }

  press(event) {
    const at = addressOf(event.target);
    if (!at || at.row < 0 || !event.shiftKey || !this.grid.editing) return;
    event.preventDefault();
    this.grid.moveTo(at.row, at.column, { extend: true });
  }

  click(event) {
    const at = addressOf(event.target);
    if (!at || event.shiftKey) return;
    if (at.row === -1) return this.grid.sortBy(this.grid.shown[at.column]);
    const row = this.grid.rows[at.row];
    if (at.column === 0 && row?.children) this.grid.toggle(row);
  }

  doubleClick(event) {
    const at = addressOf(event.target);
    if (!at || at.row < 0) return;
    const row = this.grid.activeRow();
    if (this.grid.editing) this.grid.editor.begin(null);
    else if (row && this.grid.rowLink?.(row)) location.hash = this.grid.rowLink(row);
  }

  /** The focus came by a click or with Tab. */
  enter(event) {
    const { grid } = this;
    const at = addressOf(event.target);
    if (!at || grid.editor.open || (at.row === grid.active.row && at.column === grid.active.column)) return;
    grid.moveTo(at.row, at.column);
  }

  /** The selected cells as a block that spreadsheets read. */
  copy(event) {
    const { grid } = this;
    if (grid.editor.open || String(getSelection())) return;
    const { active } = grid,
      anchor = grid.anchor ?? active;
    const lines = [];
    for (let row = Math.min(active.row, anchor.row); row <= Math.max(active.row, anchor.row); ++row) {
      const cells = [];
      for (let at = Math.min(active.column, anchor.column); at <= Math.max(active.column, anchor.column); ++at) {
        const column = grid.shown[at];
        cells.push(grid.rows[row] ? format(valueOf(grid.rows[row].cells, column), column) : "");
      }
      lines.push(cells.join("\t"));
    }
    event.clipboardData.setData("text/plain", lines.join("\n"));
    event.preventDefault();
  }

  paste(event) {
    if (!this.grid.editing) return;
    const text = event.clipboardData.getData("text/plain");
    if (this.grid.editor.open && !/[\t\n]/.test(text.replace(/\r?\n$/, ""))) return;
    event.preventDefault();
    this.grid.editor.cancel();
    this.grid.editor.paste(text);
  }
}
