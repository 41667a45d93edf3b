// A printout says what was chosen in its view: the controls themselves stay on the screen.

import { h } from "./dom.js";

const nameOf = (control) => (control.ariaLabel || control.labels?.[0]?.textContent || "").trim();

function chosen(control) {
  if (control.type === "checkbox") return control.checked ? nameOf(control) : "";
  const value = control.selectedOptions ? control.selectedOptions[0]?.textContent : control.value.trim();
  return value ? `${nameOf(control)}: ${value}` : "";
}

/** The line for it, filled when something is printed. @param view  where the controls stand */
export function choicesLine(view) {
  const line = h("p", { class: "printed" });
  addEventListener("beforeprint", () => {
    const controls = [...view.querySelectorAll(".grid-bar :is(input, select)")];
    line.textContent = controls
      .filter((control) => !control.closest(".menu"))
      .map(chosen)
      .filter(Boolean)
      .join(" · ");
  });
  return line;
}
