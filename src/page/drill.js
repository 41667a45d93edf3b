// The place below a card in which what is behind it is shown, until it is closed.

import { button, h } from "./dom.js";
import { t } from "./words.js";

/** @returns the section, with its title */
export function openDrill(place, title) {
  const close = button("×", () => place.replaceChildren(), { class: "quiet", "aria-label": t("Close") });
  const box = h(
    "section",
    { class: "drill", "aria-label": title },
    h("div", { class: "title" }, h("h2", { tabindex: -1 }, title), close),
  );
  place.replaceChildren(box);
  return box;
}
