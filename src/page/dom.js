// Elements are made by function and text enters them as text, so that nothing a database holds becomes markup.

const SVG = "http://www.w3.org/2000/svg";

function fill(element, attributes, children) {
  for (const [name, value] of Object.entries(attributes)) {
    if (value === undefined || value === null || value === false) continue;
    if (name.startsWith("on")) element.addEventListener(name.slice(2), value);
    else if (name === "value" || name === "checked" || name === "selected") element[name] = value;
    else element.setAttribute(name, value === true ? "" : value);
  }
  element.append(...children.flat().filter((child) => child !== null && child !== undefined && child !== false));
  return element;
}

/** An element of the page: h("button", {type: "button", onclick: go}, "Go"). */
export function h(name, attributes = {}, ...children) {
  return fill(document.createElement(name), attributes, children);
}

/** An element of a picture. */
export function svg(name, attributes = {}, ...children) {
  return fill(document.createElementNS(SVG, name), attributes, children);
}

export function button(text, onclick, attributes = {}) {
  return h("button", { type: "button", onclick, ...attributes }, text);
}

let labels = 0;

/** A control with its label; hint is read with it. */
export function field(label, control, hint = "") {
  control.id ||= `field-${++labels}`;
  if (!hint) return h("div", { class: "field" }, h("label", { for: control.id }, label), control);
  const note = h("small", { id: `${control.id}-hint` }, hint);
  control.setAttribute("aria-describedby", note.id);
  return h("div", { class: "field" }, h("label", { for: control.id }, label), control, note);
}

/** @param options  pairs of value and text, or texts. */
export function select(options, value, onchange) {
  const control = h("select", { onchange: (event) => onchange?.(event.target.value) });
  for (const option of options) {
    const [code, text] = Array.isArray(option) ? option : [option, option];
    control.append(h("option", { value: String(code), selected: String(code) === String(value ?? "") }, text));
  }
  return control;
}

export function check(label, checked, onchange) {
  return h(
    "label",
    { class: "check" },
    h("input", { type: "checkbox", checked, onchange: (event) => onchange(event.target.checked) }),
    label,
  );
}

/** Boxes that open below a title; Esc closes them, and so does leaving them. */
export function menu(title, boxes) {
  const element = h("details", { class: "menu" }, h("summary", {}, title), h("div", { class: "choices" }, boxes));
  element.addEventListener("keydown", (event) => {
    if (event.key !== "Escape") return;
    element.open = false;
    element.firstChild.focus();
  });
  element.addEventListener("focusout", (event) => {
    if (event.relatedTarget && !element.contains(event.relatedTarget)) element.open = false;
  });
  return element;
}

/** Waits until nothing has been asked for a while: the last call counts. */
export function debounce(milliseconds, action) {
  let timer = 0;
  const later = (...values) => {
    clearTimeout(timer);
    timer = setTimeout(action, milliseconds, ...values);
  };
  later.cancel = () => clearTimeout(timer);
  return later;
}
