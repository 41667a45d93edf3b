// The elaborations of a budget.

import { currentSession, operations } from "./api.js";
import { budgetOf, cardKinds, describe, nameOf, pathOf, wholeBudget } from "./budget.js";
import { h, select } from "./dom.js";
import { placeInFrame, show } from "./frame.js";
import { title } from "./heading.js";
import { detailKinds, measures, sites, writtenKinds, years } from "./lists.js";
import { go, link } from "./router.js";
import { RunView } from "./runview.js";
import { t } from "./words.js";

/**
 * What runs there are, the options that make one write where it needs some, those that stand first, and whether it begins
 * with the cards one came from.
 */
const RUNS = {
  "elaborate-cards": {
    title: "Actuals from movements",
    first: [
      "CodiceSede",
      "BdgTipoScheda",
      "TipoDettaglioDestinazione",
      "TipoDataMovimenti",
      "DaData",
      "AData",
      "DaScheda",
      "AScheda",
    ],
  },
  "elaborate-balances": {
    title: "Budget from balances",
    write: { write: true },
    first: [
      "AnnoEsercizioMovimenti",
      "TipoDettaglioDestinazione",
      "DaConto",
      "AConto",
      "percent",
      "IsSovrascriviEsistenti",
    ],
  },
  duplicate: {
    title: "Copy into another budget",
    here: true,
    first: [
      "CodiceSede",
      "BdgTipoScheda",
      "BdgDestinazioneSottoTipo",
      "BdgDestinazioneAnnoEsercizio",
      "BdgDestinazioneProgressivoEsercizio",
      "BdgDestinazioneCodiceSede",
      "percent",
      "IsSovrascriviEsistenti",
    ],
  },
  raise: {
    title: "Raise by a percentage",
    here: true,
    first: ["PERCENT", "kind", "measure", "CodiceSede", "BdgTipoScheda", "DaScheda", "AScheda"],
  },
};

/** Options whose codes are known. */
async function choicesOf(budget) {
  const [places, kinds, calendar] = await Promise.all([sites(), detailKinds(budget), years()]);
  const site = places.map(({ CODICE, DESCRIZIONE }) => [CODICE, `${CODICE} - ${DESCRIZIONE}`]);
  const kind = kinds.map(({ TIPO, DESCRIZIONE }) => [TIPO, DESCRIZIONE]);
  const year = [...new Set(calendar.map(({ ANNO }) => ANNO))];
  return {
    CodiceSede: site,
    BdgDestinazioneCodiceSede: site,
    BdgTipoScheda: cardKinds(),
    TipoDettaglioDestinazione: kind,
    TipoDettaglioOrigine: kind,
    AnnoEsercizioMovimenti: year,
    BdgDestinazioneAnnoEsercizio: year,
    kind: await writtenKinds(budget),
    measure: measures(),
  };
}

export function showElaborations({ path, query }) {
  const budget = budgetOf(path, query);
  return show(async () => {
    const [about, description, choices] = await Promise.all([describe(budget), operations(), choicesOf(budget)]);
    placeInFrame(
      [
        [t("Budgets"), link("budgets")],
        [`${about.title} ${budget.year}`, link("grid", pathOf(budget), { site: budget.site, kind: budget.kind })],
        [t("Elaborations"), ""],
      ],
      budget,
      "elaborate",
    );
    const offered = Object.keys(RUNS).filter((name) => description.paths[`/api/v1/jobs/${name}`]);
    const name = offered.includes(query.run) ? query.run : offered[0];
    if (!name) return [title(about, budget), h("p", {}, t("This server writes nothing"))];
    const choice = select(
      offered.map((each) => [each, t(RUNS[each].title)]),
      name,
      (run) => go("elaborate", path, { site: budget.site, kind: budget.kind, run }),
    );
    choice.setAttribute("aria-label", t("Elaboration"));
    const { site, kind } = budget;
    const view = new RunView({
      command: name,
      operation: description.paths[`/api/v1/jobs/${name}`].post,
      fixed: wholeBudget(budget),
      first: RUNS[name].first,
      choices,
      presets: RUNS[name].here ? { CodiceSede: site, BdgTipoScheda: kind } : {},
      write: RUNS[name].write,
      target: nameOf(budget),
      readOnly: Boolean(about.readOnly || currentSession().readOnly),
      onwritten: () => [
        h("a", { class: "button", href: link("grid", pathOf(budget), { site, kind }) }, t("Cards")),
        h("a", { class: "button", href: link("history", [], { budget: nameOf(budget) }) }, t("History")),
      ],
    });
    return [title(about, budget), choice, view.element];
  });
}
