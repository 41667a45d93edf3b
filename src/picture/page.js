"use strict";
// Headings sort the rows of a table: once, the other way, and back to the first order. The page is well-formed XML, so
// that no sign of the markup stands in here.
document.querySelectorAll("table.report").forEach((table) => {
  const body = table.tBodies[0];
  const original = Array.from(body.rows);
  const rows = original.filter((row) => !row.classList.contains("sub"));
  const headings = Array.from(table.querySelectorAll("th[data-column]"));

  const valueOf = (row, column) => {
    const cell = row.cells[column];
    return cell.dataset.value === undefined ? cell.textContent : cell.dataset.value;
  };
  // What has no value comes last, whichever way.
  const compare = (a, b, numbers, direction) => {
    if (a === "") return b === "" ? 0 : 1;
    if (b === "") return -1;
    const order = numbers ? Number(a) - Number(b) : a.localeCompare(b, document.documentElement.lang, { numeric: true });
    return order * direction;
  };
  const sort = (heading) => {
    const numbers = heading.classList.contains("num");
    const turns = numbers ? ["descending", "ascending", "none"] : ["ascending", "descending", "none"];
    const turn = turns[(turns.indexOf(heading.getAttribute("aria-sort")) + 1) % 3];
    headings.forEach((each) => each.setAttribute("aria-sort", "none"));
    heading.setAttribute("aria-sort", turn);
    table.classList.toggle("grouped", turn === "none");
    if (turn === "none") return body.replaceChildren(...original);
    const column = Number(heading.dataset.column);
    const direction = turn === "ascending" ? 1 : -1;
    const sorted = rows.slice().sort((a, b) => compare(valueOf(a, column), valueOf(b, column), numbers, direction));
    return body.replaceChildren(...sorted);
  };

  headings.forEach((heading) => {
    const button = document.createElement("button");
    button.type = "button";
    button.textContent = heading.textContent;
    button.addEventListener("click", () => sort(heading));
    heading.setAttribute("aria-sort", "none");
    heading.replaceChildren(button);
  });
});
document.querySelectorAll(".live").forEach((note) => { note.hidden = false; });
