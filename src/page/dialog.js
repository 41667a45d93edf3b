// Questions. The browser's own dialog keeps the focus inside and gives it back.

import { button, h } from "./dom.js";

let titles = 0;

/**
 * @param buttons  [[text, answer, class]]; the answer may be a function that is asked when the button is pressed.
 * @returns the answer, null when the dialog was left.
 */
export function ask({ title, body = [], buttons, wide = false }) {
  return new Promise((resolve) => {
    const id = `dialog-${++titles}`;
    const dialog = h("dialog", { class: wide ? "wide" : null, "aria-labelledby": id });
    const answer = (value) => {
      resolve(typeof value === "function" ? value() : value);
      dialog.close();
    };
    const form = h(
      "form",
      { method: "dialog", onsubmit: (event) => event.preventDefault() },
      h("h2", { id }, title),
      body,
      h(
        "div",
        { class: "buttons" },
        buttons.map(([text, value, look]) => button(text, () => answer(value), { class: look ?? null })),
      ),
    );
    dialog.append(form);
    dialog.addEventListener("close", () => {
      resolve(null);
      dialog.remove();
    });
    document.body.append(dialog);
    dialog.showModal();
  });
}
