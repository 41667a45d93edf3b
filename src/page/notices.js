// What the page tells beside what was asked for: aloud for screen readers, for a moment on the page, or until it is read.

import { button, h } from "./dom.js";
import { t } from "./words.js";

const SECONDS = 6;
let stack = null,
  passing = null;

/** Read out, not shown. */
export function announce(text) {
  const live = document.getElementById("live");
  live.textContent = "";
  // A text that comes again is read again.
  setTimeout(() => {
    live.textContent = text;
  }, 50);
}

/**
 * @param kind  "info" and "good" go by themselves, "bad" stays until it is closed.
 * @param action  [text, function] of a button beside it.
 */
export function notice(text, kind = "info", action = null) {
  stack ??= document.body.appendChild(h("div", { class: "notices" }));
  const shown = h("div", { class: `notice ${kind}`, role: kind === "bad" ? "alert" : null }, h("span", {}, text));
  const close = () => shown.remove();
  if (action)
    shown.append(
      button(action[0], () => {
        close();
        action[1]();
      }),
    );
  shown.append(button("×", close, { class: "quiet", "aria-label": t("Close") }));
  if (kind !== "bad") {
    announce(text);
    // What was said in passing makes room for what is said now.
    if (!action) {
      passing?.();
      passing = close;
      setTimeout(close, SECONDS * 1000);
    }
  }
  stack.append(shown);
  return { close };
}

/** What the program told beside a table. */
export const messagesOf = ({ messages = [] }) => messages.map((text) => h("p", { class: "muted" }, text));

/** What a view shows instead of itself when it failed. */
export function failureBox(error) {
  return h("div", { class: "failure", role: "alert" }, h("p", {}, error.message));
}
