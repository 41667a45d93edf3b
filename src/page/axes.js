// The axes of a report as chips that are dragged between three places: what there is, the rows, the columns. By keyboard
// up and down change the place, left and right the order.

import { button, h } from "./dom.js";
import { announce } from "./notices.js";
import { t } from "./words.js";

const PLACES = ["free", "rows", "columns"];
const DRAGGED = 5; // pixels that make a press a drag
export const NO_COLUMNS = "year";

export class AxisBoard {
  /** @param axes  [{name, title, row, column}]: where each may stand */
  constructor({ axes, rows, columns, onchange }) {
    Object.assign(this, { axes, onchange });
    this.rows = rows.filter((name) => this.#axis(name)?.row);
    this.columns = this.#axis(columns)?.column ? columns : NO_COLUMNS;
    const zone = (name, title) =>
      h(
        "div",
        { class: "zone", "data-zone": name, role: "group", "aria-label": title },
        h("span", { class: "zone-title", "aria-hidden": "true" }, title),
        h("div", { class: "chips" }),
      );
    this.zones = {
      free: zone("free", t("Axes")),
      rows: zone("rows", t("Rows")),
      columns: zone("columns", t("Columns")),
    };
    this.element = h("div", { class: "axes" }, Object.values(this.zones));
    this.#draw();
  }

  #axis(name) {
    return this.axes.find((axis) => axis.name === name);
  }

  #placeOf(name) {
    return this.rows.includes(name) ? "rows" : this.columns === name ? "columns" : "free";
  }

  #draw(focus = null) {
    const chips = { free: [], rows: [], columns: [] };
    for (const axis of this.axes)
      if (this.#placeOf(axis.name) === "free" && axis.name !== NO_COLUMNS) chips.free.push(axis.name);
    chips.rows = this.rows;
    if (this.columns !== NO_COLUMNS) chips.columns = [this.columns];
    for (const [place, names] of Object.entries(chips))
      this.zones[place].lastChild.replaceChildren(
        ...(names.length
          ? names.map((name) => this.#chip(name, place))
          : [
              h(
                "span",
                { class: "muted" },
                place === "columns" ? t("the whole year") : place === "rows" ? t("drag axes here") : "",
              ),
            ]),
      );
    if (focus) this.element.querySelector(`[data-axis="${CSS.escape(focus)}"]`)?.focus();
  }

  #chip(name, place) {
    const axis = this.#axis(name);
    const chip = h(
      "span",
      {
        class: "chip",
        "data-axis": name,
        tabindex: 0,
        role: "button",
        "aria-description": t("Arrow keys move it: up and down to another place, left and right in its order"),
        onkeydown: (event) => this.#key(event, name, place),
        onpointerdown: (event) => this.#press(event, name, place),
      },
      axis.title,
    );
    if (place !== "free")
      chip.append(
        button("×", () => this.#put(name, "free"), { tabindex: -1, "aria-label": t("Remove {}", axis.title) }),
      );
    return chip;
  }

  #key(event, name, place) {
    const at = this.rows.indexOf(name);
    const turn = { ArrowLeft: -1, ArrowRight: 1 }[event.key];
    const step = { ArrowUp: -1, ArrowDown: 1 }[event.key];
    if (turn && place === "rows") this.#put(name, "rows", Math.max(0, at + turn));
    else if (step) this.#step(name, place, step);
    else if (event.key === "Enter" || event.key === " ") this.#step(name, place, place === "free" ? 1 : -3);
    else if (event.key === "Delete" || event.key === "Backspace") this.#put(name, "free");
    else return;
    event.preventDefault();
  }

  /** To the next place that takes it. */
  #step(name, place, step) {
    const from = PLACES.indexOf(place);
    if (step === -3) return this.#put(name, "free");
    for (let to = from + step; PLACES[to]; to += step)
      if (this.#takes(PLACES[to], name)) return this.#put(name, PLACES[to]);
    return undefined;
  }

  #takes(place, name) {
    const axis = this.#axis(name);
    return place === "free" || (place === "rows" ? axis.row : axis.column);
  }

  /** @param at  position among the rows, the last one without it */
  #put(name, place, at = this.rows.length) {
    if (!this.#takes(place, name)) return;
    const rows = this.rows.filter((each) => each !== name);
    if (this.columns === name) this.columns = NO_COLUMNS;
    if (place === "rows") rows.splice(at, 0, name);
    if (place === "columns") this.columns = name;
    this.rows = rows;
    this.#draw(name);
    announce(`${this.#axis(name).title}: ${this.zones[place].getAttribute("aria-label")}`);
    this.onchange(this.rows, this.columns);
  }

  #press(event, name, place) {
    if (event.button !== 0 || event.target.closest("button")) return;
    const chip = event.currentTarget,
      start = { x: event.clientX, y: event.clientY };
    let ghost = null;
    const move = (moved) => {
      if (!ghost && Math.hypot(moved.clientX - start.x, moved.clientY - start.y) < DRAGGED) return;
      if (!ghost) {
        ghost = document.body.appendChild(h("span", { class: "chip ghost" }, this.#axis(name).title));
        chip.classList.add("lifted");
      }
      ghost.style.transform = `translate(${moved.clientX + 8}px, ${moved.clientY + 8}px)`;
      this.#mark(this.#under(moved), name);
    };
    const end = (ended) => {
      removeEventListener("pointermove", move);
      removeEventListener("pointerup", end);
      removeEventListener("pointercancel", end);
      ghost?.remove();
      chip.classList.remove("lifted");
      const zone = ghost && ended.type === "pointerup" ? this.#under(ended) : null;
      this.#mark(null, name);
      if (zone) this.#put(name, zone.dataset.zone, this.#positionIn(zone, ended, name));
      else if (!ghost && place === "free") this.#step(name, "free", 1);
    };
    addEventListener("pointermove", move);
    addEventListener("pointerup", end);
    addEventListener("pointercancel", end);
  }

  #under(event) {
    const zone = document.elementFromPoint(event.clientX, event.clientY)?.closest(".zone");
    return this.element.contains(zone) ? zone : null;
  }

  #mark(zone, name) {
    for (const each of Object.values(this.zones))
      each.classList.toggle("target", each === zone && this.#takes(each.dataset.zone, name));
  }

  /** Among the chips of the rows, where it was let go. */
  #positionIn(zone, event, name) {
    const others = [...zone.querySelectorAll("[data-axis]")].filter((chip) => chip.dataset.axis !== name);
    const after = others.filter((chip) => {
      const box = chip.getBoundingClientRect();
      return event.clientY > box.bottom || (event.clientY > box.top && event.clientX > box.left + box.width / 2);
    });
    return after.length;
  }
}
