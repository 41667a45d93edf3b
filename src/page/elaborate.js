// Elaborations: their options, a trial with the differences it would make, then the write.

import { currentSession, forgetJob, jobState, operations, startJob } from "./api.js";
import { budgetOf, cardKinds, describe, nameOf, pathOf, wholeBudget } from "./budget.js";
import { DataGrid } from "./datagrid.js";
import { ask } from "./dialog.js";
import { button, h, select } from "./dom.js";
import { placeInFrame, show } from "./frame.js";
import { title } from "./heading.js";
import { detailKinds, forget, sites, years } from "./lists.js";
import { failureBox, notice } from "./notices.js";
import { plainTable } from "./plaintable.js";
import { go, link } from "./router.js";
import { optionFields } from "./runoptions.js";
import { t } from "./words.js";

const LOOK_EVERY = 150; // milliseconds between two looks at a job
const SMALL = 12; // rows of a table that needs no grid

/**
 * What runs there are, how each is tried and written, its options that stand first, and whether it begins with the cards
 * one came from.
 */
const RUNS = {
  "elaborate-cards": {
    title: "Actuals from movements",
    trial: { "dry-run": true },
    write: {},
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
    trial: { "dry-run": true },
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
    trial: { "dry-run": true },
    write: {},
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
    trial: { "dry-run": true },
    write: {},
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
    kind: kinds.filter(({ NOME }) => NOME !== "orders").map(({ NOME, DESCRIZIONE }) => [NOME, DESCRIZIONE]),
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
    const view = new RunView(budget, name, description, choices, Boolean(about.readOnly || currentSession().readOnly));
    return [title(about, budget), choice, view.element];
  });
}

class RunView {
  constructor(budget, name, description, choices, readOnly) {
    Object.assign(this, { budget, name, readOnly });
    const operation = description.paths[`/api/v1/jobs/${name}`].post;
    this.fields = optionFields(
      operation,
      RUNS[name].first,
      choices,
      RUNS[name].here ? { CodiceSede: budget.site, BdgTipoScheda: budget.kind } : {},
    );
    this.tryButton = h("button", { type: "submit", class: "primary" }, t("Try"));
    this.progress = h("div", { class: "progress", role: "status" });
    this.result = h("div", { class: "result" });
    this.element = h(
      "form",
      {
        class: "run",
        onsubmit: (event) => {
          event.preventDefault();
          this.#try();
        },
      },
      h("p", { class: "muted" }, operation.summary),
      this.fields.element,
      h("div", { class: "buttons" }, this.tryButton, h("span", { class: "muted" }, t("A trial writes nothing"))),
      this.progress,
      this.result,
    );
  }

  #options(mode) {
    return { ...wholeBudget(this.budget), ...this.fields.values(), ...RUNS[this.name][mode] };
  }

  /** Runs a job and follows it; a question of the program is put to the user. */
  async #run(options) {
    this.tryButton.disabled = true;
    try {
      const { id } = await startJob(this.name, options);
      for (;;) {
        const job = await jobState(id);
        this.#follow(job.progress);
        if (job.state === "done") {
          forgetJob(id).catch(() => {});
          return job.result;
        }
        if (job.state === "failed") {
          if (job.error.kind !== "question" || !(await this.#confirm(job.error.message)))
            throw Object.assign(new Error(job.error.message), job.error);
          return await this.#run({ ...options, yes: true });
        }
        await new Promise((resolve) => setTimeout(resolve, LOOK_EVERY));
      }
    } finally {
      this.progress.replaceChildren();
      this.tryButton.disabled = false;
    }
  }

  #confirm(question) {
    return ask({
      title: t("The program asks"),
      body: [h("p", {}, question)],
      buttons: [
        [t("No"), false],
        [t("Go on"), true, "danger"],
      ],
    });
  }

  #follow(progress) {
    if (!progress) return this.progress.replaceChildren(h("progress", {}), t("Working…"));
    const { description, steps, done } = progress;
    return this.progress.replaceChildren(
      h("progress", { max: Math.max(steps, 1), value: done }),
      h("span", {}, `${description} ${done}/${steps}`),
    );
  }

  #showTables(answer, heading) {
    const tables = answer.tables
      .filter((table) => table.rows.length)
      .map((table) => {
        if (table.rows.length <= SMALL) return plainTable(table, table.title);
        const grid = new DataGrid({ label: table.title || heading, search: true });
        grid.show(table);
        return h("div", {}, table.title ? h("h3", {}, table.title) : null, grid.element);
      });
    this.result.replaceChildren(
      h("h2", { tabindex: -1 }, heading),
      ...(answer.messages ?? []).map((text) => h("p", { class: "muted" }, text)),
      ...(answer.tables[0]?.rows.length ? [] : [h("p", {}, t("Nothing would change"))]),
      ...tables,
    );
    this.result.firstChild.focus({ preventScroll: true });
    this.result.scrollIntoView({ block: "nearest" });
  }

  async #try() {
    this.result.replaceChildren();
    try {
      const answer = await this.#run(this.#options("trial"));
      this.#showTables(answer, t("What it would write"));
      if (this.readOnly) this.result.append(h("p", { class: "bad" }, t("This budget cannot be written")));
      else
        this.result.append(
          h(
            "div",
            { class: "buttons" },
            button(t("Write it"), () => this.#write(), { class: "primary" }),
          ),
        );
    } catch (error) {
      this.result.replaceChildren(failureBox(error));
    }
  }

  async #write() {
    const sure = await ask({
      title: t("Write it into {}?", nameOf(this.budget)),
      body: [h("p", {}, t("It is one entry of the history, which can be taken back."))],
      buttons: [
        [t("No"), false],
        [t("Write it"), true, "primary"],
      ],
    });
    if (!sure) return;
    try {
      const answer = await this.#run(this.#options("write"));
      forget();
      this.#showTables(answer, t("Written"));
      const { site, kind } = this.budget;
      this.result.append(
        h(
          "div",
          { class: "buttons" },
          h("a", { class: "button", href: link("grid", pathOf(this.budget), { site, kind }) }, t("Cards")),
          h("a", { class: "button", href: link("history", [], { budget: nameOf(this.budget) }) }, t("History")),
        ),
      );
      notice(t("Written"), "good");
    } catch (error) {
      this.result.replaceChildren(failureBox(error));
    }
  }
}
