// Starts the page: the session, its language and its signs, then the view that the address names.

import { openSession } from "./api.js";
import { showBudgets } from "./budgets.js";
import { showCard } from "./card.js";
import { showCompare } from "./compare.js";
import { watchConnection } from "./connection.js";
import { showElaborations } from "./elaborate.js";
import { buildFrame } from "./frame.js";
import { showGrid } from "./grid.js";
import { showHistory } from "./history.js";
import { chooseSigns } from "./numbers.js";
import { showReport } from "./report.js";
import { startRouter, view } from "./router.js";
import { chooseLanguage } from "./words.js";
import { showYears } from "./years.js";

watchConnection();
const session = await openSession();
chooseLanguage(session.language);
chooseSigns(session.decimalSeparator, session.thousandsSeparator);
buildFrame();
view("budgets", showBudgets);
view("grid", showGrid);
view("card", showCard);
view("report", showReport);
view("compare", showCompare);
view("elaborate", showElaborations);
view("history", showHistory);
view("years", showYears);
addEventListener("keydown", (event) => {
  const typing = event.target.closest("input, select, textarea, [aria-multiselectable]");
  if (event.key !== "/" || typing || event.ctrlKey || event.metaKey) return;
  const box = document.querySelector("input[type=search]");
  box?.focus();
  if (box) event.preventDefault();
});
startRouter();
