// A table that is moved in by keyboard like a spreadsheet, sorted, searched, and drawn only where it is seen.

import { format } from "./cells.js";
import { h, debounce } from "./dom.js";
import { CellEditor } from "./grideditor.js";
import { applyChoice, columnMenu, gridColumns, isDelta, valueOf, widths } from "./gridcolumns.js";
import { GridKeys } from "./gridkeys.js";
import { arrange, comparison, countText, finder, nextTurn } from "./gridorder.js";
import { announce } from "./notices.js";
import { sum } from "./numbers.js";
import { t } from "./words.js";

const MARGIN = 6; // rows drawn above and below what is seen
const PRINTED = 10000; // rows that a printout has at most
const PHONE = 640; // pixels of a window that is narrow

export class DataGrid {
  /**
   * @param label    names the grid for screen readers
   * @param key      under which the choice of columns is remembered; none, no choice
   * @param search   whether there is a box for it
   * @param rowLink  (row) => address of what a row stands for
   * @param editing  {canEdit, text, commit, typing, look}, see card.js
   * @param deltas   (cells) => promise of the cells with their deltas, for the totals of what was found
   * @param tools    elements beside the search box
   * @param view     {find, sort}: what is searched for, and "column:ascending" or "column:descending", to begin with
   * @param onview   (view) what is told when that changes
   */
  constructor(options) {
    Object.assign(this, { search: true, view: {}, ...options });
    this.columns = [];
    this.shown = [];
    this.roots = [];
    this.rows = [];
    this.totals = [];
    const [, name = "", turn = "none"] = /^(.*):(ascending|descending)$/.exec(this.view.sort) ?? [];
    this.sort = { name, turn };
    this.text = this.view.find ?? "";
    this.active = { row: 0, column: 0 };
    this.anchor = null;
    this.drawn = new Map();
    this.rowHeight = 28;
    this.#build();
    this.editor = new CellEditor(this);
    this.keys = new GridKeys(this);
    this.#watch();
  }

  #build() {
    this.head = h("div", { class: "grid-head", role: "rowgroup" });
    this.body = h("div", { class: "grid-body", role: "rowgroup" });
    this.foot = h("div", { class: "grid-foot", role: "rowgroup" });
    this.inner = h("div", { class: "grid-inner", role: "presentation" }, this.head, this.body, this.foot);
    this.scroller = h(
      "div",
      {
        class: "grid",
        role: this.tree ? "treegrid" : "grid",
        "aria-label": this.label,
        "aria-multiselectable": this.editing ? "true" : null,
      },
      this.inner,
    );
    this.count = h("span", { class: "count", "aria-live": "polite" });
    this.searchBox = h("input", {
      type: "search",
      value: this.text,
      placeholder: t("Search"),
      "aria-label": t("Search"),
      oninput: debounce(80, () => this.find(this.searchBox.value)),
    });
    this.menuPlace = h("span");
    this.bar = h(
      "div",
      { class: "grid-bar" },
      this.search ? [this.searchBox, this.count] : null,
      this.tools ?? [],
      this.key ? this.menuPlace : null,
    );
    this.cut = h("p", { class: "printed" });
    this.element = h("div", { class: "grid-box" }, this.bar, this.cut, this.scroller);
  }

  #watch() {
    let asked = false;
    const later = () => {
      if (asked) return;
      asked = true;
      requestAnimationFrame(() => {
        asked = false;
        this.draw();
      });
    };
    this.scroller.addEventListener("scroll", later, { passive: true });
    new ResizeObserver(() => this.#measure()).observe(this.scroller);
    const printing = (all) => {
      if (!this.element.isConnected) return;
      this.printing = all;
      this.cut.textContent =
        this.rows.length > PRINTED ? t("The first {} of {} rows are printed", PRINTED, this.rows.length) : "";
      this.draw();
    };
    addEventListener("beforeprint", () => printing(true));
    addEventListener("afterprint", () => printing(false));
  }

  /** Shows a table of the server. @param rows  instead of the table's, with rows below them */
  show(table, { rows = null, keep = false } = {}) {
    this.table = table;
    const typing = keep ? this.editor.pause() : this.editor.cancel();
    const held = keep && this.body.contains(document.activeElement);
    const place = keep ? { top: this.scroller.scrollTop, left: this.scroller.scrollLeft } : null;
    this.columns = this.makeColumns?.(table) ?? gridColumns(table);
    applyChoice(this.columns, this.key);
    this.roots = rows ?? table.rows.map((cells) => ({ cells }));
    this.totals = table.totals ? [{ label: t("Total"), cells: table.totals }] : [];
    if (this.key) this.menuPlace.replaceChildren(columnMenu(this.columns, this.key, () => this.#layOut()));
    this.#layOut();
    if (!keep) this.active = { row: 0, column: 0 };
    if (place) this.scroller.scrollTo(place);
    if (typing) this.editor.resume(typing);
    else if (held) this.moveTo(this.active.row, this.active.column);
  }

  #layOut() {
    this.shown = this.columns.filter((column) => column.shown);
    this.#fit();
    this.scroller.setAttribute("aria-colcount", this.shown.length);
    this.#drawHead();
    this.arrange();
    this.#measure();
  }

  #fit() {
    const rows = this.#allRows()
      .map((row) => row.cells)
      .concat(this.totals.map((row) => row.cells));
    this.narrow = innerWidth <= PHONE;
    const sizes = widths(this.shown, rows, this.narrow);
    // The longest text takes what is left.
    const texts = sizes.map((size, i) => (this.shown[i].number || this.shown[i].figure ? 0 : size));
    const wide = texts.indexOf(Math.max(...texts));
    this.scroller.style.setProperty(
      "--columns",
      sizes.map((w, i) => (i === wide ? `minmax(${w}ch, 1fr)` : `${w}ch`)).join(" "),
    );
    this.scroller.style.setProperty("--least", `${sizes.reduce((a, b) => a + b, 0)}ch`);
  }

  #allRows() {
    const all = [];
    const add = (rows) =>
      rows.forEach((row) => {
        all.push(row);
        if (row.children) add(row.children);
      });
    add(this.roots);
    return all;
  }

  #measure() {
    if (this.shown.length && this.narrow !== innerWidth <= PHONE) this.#fit();
    const height = parseFloat(getComputedStyle(this.scroller).getPropertyValue("--row")) || this.rowHeight;
    if (height !== this.rowHeight) this.#forgetDrawn();
    this.rowHeight = height;
    this.body.style.height = `${this.rows.length * this.rowHeight}px`;
    this.draw();
  }

  #drawHead() {
    const heading = (column, place) => {
      const turn = this.sort.name === column.name ? this.sort.turn : "none";
      return h(
        "div",
        {
          role: "columnheader",
          class: `cell${column.figure || column.number ? " num" : ""}`,
          tabindex: -1,
          "aria-colindex": place + 1,
          "aria-sort": turn,
          "data-row": -1,
          "data-column": place,
          "data-name": column.name,
          "data-group": column.group || null,
        },
        h("span", {}, column.title || "\u00a0"),
      );
    };
    const groups = [];
    this.shown.forEach((column, place) => {
      const last = groups.at(-1);
      if (last && last.text === (column.group ?? "")) last.end = place + 2;
      else groups.push({ text: column.group ?? "", start: place + 1, end: place + 2 });
    });
    const above = h(
      "div",
      { class: "row groups", role: "presentation" },
      groups.map(({ text, start, end }) => {
        const cell = h("div", { class: "cell group" }, text);
        cell.style.gridColumn = `${start} / ${end}`;
        return cell;
      }),
    );
    this.head.replaceChildren(
      ...(groups.some((group) => group.text) ? [above] : []),
      h("div", { class: "row", role: "row", "aria-rowindex": 1 }, this.shown.map(heading)),
    );
  }

  /** Sorts, searches and draws anew. */
  arrange() {
    const column = this.columns.find((each) => each.name === this.sort.name);
    const found = finder(this.text, this.shown);
    this.rows = arrange(this.roots, comparison(column, this.sort.turn), found);
    this.count.textContent = countText(this.rows.length, found ? this.#allRows().length : this.rows.length);
    this.#total(found);
    this.scroller.setAttribute("aria-rowcount", this.rows.length + 1 + this.foot.childElementCount);
    this.body.style.height = `${this.rows.length * this.rowHeight}px`;
    this.active.row = Math.min(this.active.row, Math.max(this.rows.length - 1, 0));
    this.active.column = Math.min(this.active.column, Math.max(this.shown.length - 1, 0));
    this.anchor = null;
    this.#forgetDrawn();
    this.draw();
  }

  #forgetDrawn() {
    for (const element of this.drawn.values()) element.remove();
    this.drawn.clear();
  }

  #tellView() {
    const { name, turn } = this.sort;
    this.onview?.({ find: this.text, sort: turn === "none" ? "" : `${name}:${turn}` });
  }

  find(text) {
    this.text = text;
    this.scroller.scrollTop = 0;
    this.arrange();
    this.#tellView();
    announce(this.count.textContent);
  }

  sortBy(column) {
    const turn = nextTurn(column, this.sort.name === column.name ? this.sort.turn : "none");
    this.sort = { name: column.name, turn };
    this.#drawHead();
    this.arrange();
    this.#tellView();
  }

  /** The rows below the others: what the server summed, above it what was found. */
  #total(found) {
    const lines = [...this.totals];
    if (found && !this.tree && this.totals.length) lines.unshift(this.#foundTotal());
    const rows = lines.map((line, i) => {
      const row = this.#newRow(this.rows.length + i);
      row.classList.add("total");
      this.shown.forEach((column, place) => {
        const cell = row.children[place];
        const value = line.cells[column.index];
        cell.textContent = place === 0 && (value === null || value === undefined) ? line.label : format(value, column);
        cell.classList.toggle("negative", isDelta(column) && String(value).startsWith("-"));
      });
      return row;
    });
    this.foot.replaceChildren(...rows);
  }

  #foundTotal() {
    if (this.foundCells?.of === this.rows && this.foundCells.text === this.text) return this.foundCells.line;
    const cells = this.columns.map((column) => {
      const summed = column.figure && !isDelta(column) && this.totals[0].cells[column.index] !== null;
      return summed
        ? sum(
            this.rows.map((row) => row.cells[column.index]),
            column.decimals,
          )
        : null;
    });
    const line = { label: t("Found ({})", this.rows.length), cells };
    this.foundCells = { of: this.rows, text: this.text, line };
    this.deltas?.(cells, this.columns).then(
      (filled) => {
        if (this.foundCells.line !== line) return;
        line.cells = filled;
        this.#total(true);
      },
      () => {},
    );
    return line;
  }

  #newRow(index) {
    const cells = this.shown.map((column, place) => {
      const cell = document.createElement("div");
      cell.setAttribute("role", place === 0 ? "rowheader" : "gridcell");
      cell.setAttribute("aria-colindex", place + 1);
      cell.className = "cell";
      cell.tabIndex = -1;
      cell.dataset.row = index;
      cell.dataset.column = place;
      if (column.figure || column.number) cell.classList.add("num");
      return cell;
    });
    return h("div", { class: "row", role: "row", "aria-rowindex": index + 2 }, cells);
  }

  /** Rows that are seen, and the one that the keyboard is in. */
  draw() {
    const height = this.rowHeight;
    const top = Math.floor(this.scroller.scrollTop / height) - MARGIN;
    const seen = Math.ceil(this.scroller.clientHeight / height) + 2 * MARGIN;
    const first = this.printing ? 0 : Math.max(0, top);
    const last = this.printing ? Math.min(this.rows.length, PRINTED) : Math.min(this.rows.length, top + seen);
    const held = this.body.contains(document.activeElement) ? this.active.row : -1;
    for (const [index, element] of this.drawn) {
      if ((index >= first && index < last) || index === held) continue;
      element.remove();
      this.drawn.delete(index);
    }
    for (let index = first; index < last; ++index) this.#drawRow(index);
    this.#keepReachable();
  }

  #drawRow(index) {
    if (this.drawn.has(index) || !this.rows[index]) return;
    const element = this.#newRow(index);
    element.style.transform = `translateY(${index * this.rowHeight}px)`;
    this.drawn.set(index, element);
    this.#paint(index);
    this.body.append(element);
  }

  /** Puts what a row holds into its cells; one that is being edited is left alone. */
  #paint(index) {
    const row = this.rows[index],
      element = this.drawn.get(index);
    if (!row || !element) return;
    element.classList.toggle("changed", Boolean(row.changed));
    element.classList.toggle("sub", Boolean(row.children));
    if (row.level) element.setAttribute("aria-level", row.level);
    if (row.children) element.setAttribute("aria-expanded", Boolean(row.open || this.text));
    this.shown.forEach((column, place) => {
      const cell = element.children[place];
      if (!this.editor.isIn(index, place)) this.#paintCell(cell, row, column, place, index);
    });
  }

  #paintCell(cell, row, column, place, index) {
    const look = this.editing?.look(row, column) ?? {};
    const value = look.value === undefined ? valueOf(row.cells, column) : look.value;
    const text = look?.text ?? format(value, column);
    const address = place === 0 ? this.rowLink?.(row) : null;
    if (address) cell.replaceChildren(h("a", { href: address, tabindex: -1 }, text || "…"));
    else cell.textContent = text;
    if (place === 0 && row.level) cell.dataset.level = row.level;
    if (text.length > 30) cell.title = text;
    cell.classList.toggle("negative", isDelta(column) && String(value).startsWith("-"));
    cell.classList.toggle("selected", this.isSelected(index, place));
    if (!this.editing) return;
    const editable = this.editing.canEdit(row, column);
    cell.classList.toggle("editable", editable);
    cell.setAttribute("aria-readonly", !editable);
    cell.setAttribute("aria-selected", this.isSelected(index, place));
    cell.setAttribute("aria-invalid", look.state === "refused");
    cell.dataset.state = look.state ?? "";
    cell.title = look.message ?? "";
  }

  /** Paints what is drawn once more. */
  refresh() {
    for (const index of this.drawn.keys()) this.#paint(index);
  }

  /** New sums for what is shown already. */
  retotal(totals) {
    this.totals = totals ? [{ label: t("Total"), cells: totals }] : [];
    this.#fit();
    this.#total(finder(this.text, this.shown));
  }

  isSelected(row, column) {
    if (!this.anchor) return false;
    const inside = (at, a, b) => at >= Math.min(a, b) && at <= Math.max(a, b);
    return inside(row, this.anchor.row, this.active.row) && inside(column, this.anchor.column, this.active.column);
  }

  cell(row, column) {
    const line =
      row < 0
        ? this.head.lastChild
        : row >= this.rows.length
          ? this.foot.children[row - this.rows.length]
          : this.drawn.get(row);
    return line?.children[column];
  }

  /** One cell of the grid can be reached with Tab. */
  #keepReachable() {
    const wanted = this.cell(this.active.row, this.active.column) ?? this.head.lastChild?.firstChild;
    if (this.reachable === wanted) return;
    if (this.reachable) this.reachable.tabIndex = -1;
    this.reachable = wanted;
    if (wanted) wanted.tabIndex = 0;
  }

  /** Goes to a cell: -1 is the row of titles, behind the rows come the totals. */
  moveTo(row, column, { extend = false, focus = true } = {}) {
    const anchor = extend ? (this.anchor ?? { ...this.active }) : null;
    const last = this.rows.length + this.foot.childElementCount - 1;
    this.active = {
      row: Math.max(-1, Math.min(row, last)),
      column: Math.max(0, Math.min(column, this.shown.length - 1)),
    };
    const selectionChanged = Boolean(anchor || this.anchor);
    this.anchor = anchor;
    this.#drawRow(this.active.row);
    this.#scrollTo();
    if (selectionChanged) this.refresh();
    this.#keepReachable();
    if (focus) this.reachable?.focus({ preventScroll: true });
    this.onMove?.(this.activeRow(), this.shown[this.active.column]);
  }

  activeRow() {
    return this.rows[this.active.row] ?? null;
  }

  #scrollTo() {
    const { row, column } = this.active;
    const box = this.scroller;
    if (row >= 0 && row < this.rows.length) {
      const top = row * this.rowHeight;
      const room = box.clientHeight - this.head.offsetHeight - this.foot.offsetHeight;
      if (top < box.scrollTop) box.scrollTop = top;
      else if (top + this.rowHeight > box.scrollTop + room) box.scrollTop = top + this.rowHeight - room;
    }
    const cell = this.cell(row, column);
    if (!cell || column === 0) return;
    const frozen = this.head.lastChild.firstChild.offsetWidth;
    if (cell.offsetLeft < box.scrollLeft + frozen) box.scrollLeft = cell.offsetLeft - frozen;
    else if (cell.offsetLeft + cell.offsetWidth > box.scrollLeft + box.clientWidth)
      box.scrollLeft = cell.offsetLeft + cell.offsetWidth - box.clientWidth;
  }

  toggle(row) {
    if (!row?.children) return;
    row.open = !row.open;
    this.arrange();
    this.moveTo(this.active.row, this.active.column);
  }
}
