// Questions. The browser's own dialog keeps the focus inside and gives it back.

import { button, h } from "./dom.js";

let titles = 0;

/**
 * @param buttons  [[text, answer, class]]; the answer may be a function that is asked when the button is pressed: while
 *                 it fails, the dialog stays and says why. Enter presses the one of class "primary".
 * @returns the answer, null when the dialog was left.
 */
export function ask({ title, body = [], buttons, wide = false }) {
  return new Promise((resolve) => {
    const id = `dialog-${++titles}`;
    const dialog = h("dialog", { class: wide ? "wide" : null, "aria-labelledby": id });
    const refused = h("p", { class: "bad", role: "alert" });
    let asked = false;
    const answer = async (value) => {
      if (asked) return;
      asked = true;
      refused.textContent = "";
      try {
        resolve(typeof value === "function" ? await value() : value);
        dialog.close();
      } catch (error) {
        refused.textContent = error.message;
      }
      asked = false;
    };
    const primary = buttons.find(([, , look]) => look === "primary");
    const submit = (event) => {
      event.preventDefault();
      if (primary) answer(primary[1]);
    };
    const press = ([text, value, look]) =>
      look === "primary"
        ? h("button", { type: "submit", class: look }, text)
        : button(text, () => answer(value), { class: look ?? null });
    const form = h(
      "form",
      { method: "dialog", onsubmit: submit },
      h("h2", { id }, title),
      body,
      refused,
      h(
        "div",
        { class: "buttons" },
        buttons.map(press),
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
