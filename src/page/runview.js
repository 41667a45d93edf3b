// One run with its options: a trial with the differences it would make, then, after a question, the write.

import { endJob, jobState, startJob } from "./api.js";
import { confirmQuestion } from "./asking.js";
import { DataGrid } from "./datagrid.js";
import { ask } from "./dialog.js";
import { button, h } from "./dom.js";
import { forget } from "./lists.js";
import { failureBox, messagesOf, notice } from "./notices.js";
import { plainTable } from "./plaintable.js";
import { optionFields } from "./runoptions.js";
import { t } from "./words.js";

const LOOK_EVERY = 150; // milliseconds between two looks at a job
const SMALL = 12; // rows of a table that needs no grid

export class RunView {
  /**
   * @param command    what is run
   * @param operation  the server's description of it
   * @param fixed      options that are given already
   * @param first      names of those that stand first
   * @param choices    pairs of code and text, by option
   * @param presets    values of options to begin with
   * @param labels     what options are called here
   * @param write      options for the write; a trial has "dry-run"
   * @param target     what is written into, for the question
   * @param onwritten  () => elements to go on with
   */
  constructor(options) {
    Object.assign(this, { write: {}, readOnly: false, ...options });
    const { operation, fixed } = this;
    this.fields = optionFields(operation, { ...options, given: Object.keys(fixed) });
    this.tryButton = h("button", { type: "submit", class: "primary" }, t("Try"));
    this.stopButton = button(t("Stop"), null, { hidden: true });
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
      h(
        "div",
        { class: "buttons" },
        this.tryButton,
        this.stopButton,
        h("span", { class: "muted" }, t("A trial writes nothing")),
      ),
      this.progress,
      this.result,
    );
  }

  #options(more) {
    return { ...this.fixed, ...this.fields.values(), ...more };
  }

  /** Runs a job and follows it; a question of the program is put to the user. A trial ends with its page. */
  async #run(options) {
    const left = new AbortController();
    let ended = null;
    this.tryButton.disabled = true;
    try {
      const { id } = await startJob(this.command, options);
      const end = () => {
        this.stopButton.disabled = true;
        ended ??= endJob(id);
      };
      const trial = options["dry-run"];
      if (trial) addEventListener("pagehide", end, { signal: left.signal });
      this.stopButton.onclick = end;
      this.stopButton.disabled = this.stopButton.hidden = false;
      for (;;) {
        const job = await (ended ?? jobState(id).catch((failure) => ended ?? Promise.reject(failure)));
        this.#follow(job.progress);
        if (job.state !== "running") {
          this.stopButton.disabled = true;
          if (!ended) endJob(id).catch(() => {});
          return await this.#outcome(job, options);
        }
        if (trial && !this.element.isConnected) end();
        else await new Promise((resolve) => setTimeout(resolve, LOOK_EVERY));
      }
    } finally {
      left.abort();
      this.progress.replaceChildren();
      this.stopButton.hidden = true;
      this.tryButton.disabled = false;
    }
  }

  async #outcome(job, options) {
    if (job.state === "done") return job.result;
    if (job.error.kind !== "question" || !(await confirmQuestion(job.error.message)))
      throw Object.assign(new Error(job.error.message), job.error);
    return this.#run({ ...options, yes: true });
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
      ...messagesOf(answer),
      ...(answer.tables[0]?.rows.length ? [] : [h("p", {}, t("Nothing would change"))]),
      ...tables,
    );
    this.result.firstChild.focus({ preventScroll: true });
    this.result.scrollIntoView({ block: "nearest" });
  }

  async #try() {
    this.result.replaceChildren();
    try {
      const answer = await this.#run(this.#options({ "dry-run": true }));
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
      title: t("Write it into {}?", this.target),
      body: [h("p", {}, t("It is one entry of the history, which can be taken back."))],
      buttons: [
        [t("No"), false],
        [t("Write it"), true, "primary"],
      ],
    });
    if (!sure) return;
    try {
      const answer = await this.#run(this.#options(this.write));
      forget();
      this.#showTables(answer, t("Written"));
      this.result.append(h("div", { class: "buttons" }, this.onwritten()));
      notice(t("Written"), "good");
    } catch (error) {
      this.result.replaceChildren(failureBox(error));
    }
  }
}
