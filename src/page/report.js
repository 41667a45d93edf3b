// A budget by any axes, with its charts.

import { AxisBoard, NO_COLUMNS } from "./axes.js";
import { budgetOf, describe, nameOf, pathOf } from "./budget.js";
import { format } from "./cells.js";
import { trendChart, waterfallChart } from "./charts.js";
import { DataGrid } from "./datagrid.js";
import { check, debounce, field, h, menu, select } from "./dom.js";
import { placeInFrame, show } from "./frame.js";
import { title } from "./heading.js";
import { detailKinds, measures, years } from "./lists.js";
import { failureBox, messagesOf } from "./notices.js";
import { sum } from "./numbers.js";
import { axesOf, groupedReport, report, seriesOf, stepsOf, valuesOf } from "./reportdata.js";
import { link, stay } from "./router.js";
import { t } from "./words.js";

const STEPS = 9;

/** What is asked for, as the address says it. */
function queryOf(query, axes) {
  const split = (text) => (text ? text.split(",") : []);
  const first = axes.find((axis) => axis.row)?.name;
  return {
    rows: "rows" in query ? split(query.rows) : split(first),
    columns: query.columns || NO_COLUMNS,
    values: split(query.values || "budget,actual,delta,delta%"),
    measure: query.measure || "amount",
    to: query.to || "",
    where: query.where || "",
    sort: query.sort || "",
    top: query.top || "",
  };
}

export function showReport({ path, query }) {
  const budget = budgetOf(path, query);
  return show(async () => {
    const [about, axes, values, kinds] = await Promise.all([
      describe(budget),
      axesOf(budget),
      valuesOf(budget),
      detailKinds(budget),
    ]);
    placeInFrame(
      [
        [t("Budgets"), link("budgets")],
        [`${about.title} ${budget.year}`, link("grid", pathOf(budget), { site: budget.site, kind: budget.kind })],
        [t("Report"), ""],
      ],
      budget,
      "report",
    );
    const view = new ReportView(budget, axes, values, kinds, queryOf(query, axes));
    await view.load();
    return [title(about, budget), view.element];
  });
}

class ReportView {
  constructor(budget, axes, values, kinds, query) {
    Object.assign(this, { budget, axes, values, query });
    this.forecasts = kinds.filter(({ NOME }) => NOME.startsWith("forecast")).map(({ DESCRIZIONE }) => DESCRIZIONE);
    this.board = new AxisBoard({
      axes,
      rows: query.rows,
      columns: query.columns,
      onchange: (rows, columns) => this.#change({ rows, columns }),
    });
    this.grid = new DataGrid({ label: t("Report on {}", nameOf(budget)), tree: true, makeColumns: reportColumns });
    this.charts = h("div", { class: "charts" });
    this.failed = h("div");
    this.loadLater = debounce(120, () => this.load());
    this.element = h(
      "div",
      { class: "report" },
      this.board.element,
      this.#controls(),
      this.charts,
      this.failed,
      this.grid.element,
    );
  }

  #controls() {
    const chosen = () => this.query.values;
    const boxes = this.values.map(([name, text]) =>
      check(text, chosen().includes(name), (wanted) =>
        this.#change({
          values: this.values
            .map(([each]) => each)
            .filter((each) => (each === name ? wanted : chosen().includes(each))),
        }),
      ),
    );
    return h(
      "div",
      { class: "grid-bar" },
      menu(t("Values"), boxes),
      field(
        t("Measure"),
        select(measures(), this.query.measure, (measure) => this.#change({ measure })),
      ),
      field(
        t("Up to the month"),
        h("input", {
          type: "month",
          value: this.query.to,
          onchange: (event) => this.#change({ to: event.target.value }),
        }),
      ),
      this.#selectors(),
    );
  }

  /** Which rows: of some codes, in an order, the first ones. */
  #selectors() {
    const box = (name, attributes) =>
      h("input", {
        value: this.query[name],
        autocomplete: "off",
        onchange: (event) => this.#change({ [name]: event.target.value.trim() }),
        ...attributes,
      });
    const syntax = t("axis=codes, with * for any; several with ;");
    const example = this.axes.find(({ row }) => row)?.name ?? "account";
    this.sorting = h(
      "select",
      { onchange: (event) => this.#change({ sort: event.target.value }) },
      this.#sortings(),
    );
    return [
      field(t("Only"), box("where", { placeholder: `${example}=1,2; …`, title: syntax })),
      field(t("Sorted by"), this.sorting),
      field(t("First rows"), box("top", { type: "number", min: 1, class: "short" })),
    ];
  }

  #sortings() {
    const chosen = this.values.filter(([name]) => this.query.values.includes(name));
    const ways = chosen.flatMap(([name, text]) => [
      [name, `${text} ↓`],
      [`${name}:asc`, `${text} ↑`],
    ]);
    return [["", t("Code")], ...ways].map(([value, text]) =>
      h("option", { value, selected: value === this.query.sort }, text),
    );
  }

  #change(change) {
    Object.assign(this.query, change);
    const { rows, columns, values, ...more } = this.query;
    if (!values.includes(more.sort.split(":")[0])) more.sort = this.query.sort = this.sorting.value = "";
    this.sorting.replaceChildren(...this.#sortings());
    const { site, kind } = this.budget;
    stay("report", pathOf(this.budget), {
      site,
      kind,
      rows: rows.join(",") || ",",
      columns,
      values: values.join(","),
      ...more,
    });
    this.loadLater();
  }

  async load() {
    const turn = (this.turn = (this.turn ?? 0) + 1);
    const values = this.query.values.length ? this.query.values : ["budget"];
    try {
      const [grouped, charts] = await Promise.all([
        groupedReport(this.budget, { ...this.query, values }),
        this.#makeCharts(),
      ]);
      if (turn !== this.turn) return;
      this.failed.replaceChildren(...messagesOf(grouped.table));
      this.charts.replaceChildren(...charts);
      this.grid.show(grouped.table, { rows: grouped.rows });
    } catch (error) {
      if (turn === this.turn) this.failed.replaceChildren(failureBox(error));
    }
  }

  async #makeCharts() {
    const { measure, to, where } = this.query;
    const lines = ["budget", "actual", ...this.forecasts.map((_, i) => `forecast${i + 1}`)];
    const byPeriod = await report(this.budget, { columns: "period", values: lines, measure, to, where });
    const { labels, series } = seriesOf(byPeriod, this.forecasts);
    const charts = labels.length > 1 && series.length ? [trendChart(t("By period"), labels, series)] : [];
    const axis = this.axes.find(({ name }) => name === this.query.rows[0]) ?? this.axes.find(({ row }) => row);
    const lived = to || (await this.#monthsWithActuals(series));
    const found = stepsOf(
      await report(this.budget, { rows: [axis.name], values: ["budget", "actual", "delta"], measure, to: lived, where }),
      STEPS,
    );
    if (found) charts.push(this.#waterfall(found, axis, lived));
    return charts;
  }

  /** A budget of twelve months is not compared with the actuals of nine. */
  async #monthsWithActuals(series) {
    const actuals = series.find(({ look }) => look === "actual")?.values ?? [];
    const months = ((actuals.findLastIndex((value) => value !== null) + 1) * 12) / actuals.length;
    const year = (await years()).find(({ ANNO }) => String(ANNO) === this.budget.year);
    const inJanuary = String(year?.DATAINIZIO).slice(5, 7) === "01";
    return inJanuary && months > 0 && months < 12
      ? `${this.budget.year}-${String(Math.ceil(months)).padStart(2, "0")}`
      : "";
  }

  #waterfall({ ends, steps, rest, column }, axis, until) {
    if (rest.length) {
      const value = sum(
        rest.map((step) => step.value),
        column.decimals,
      );
      steps.push({ title: t("Others ({})", rest.length), value, text: format(value, column) });
    }
    const what = until
      ? t("From budget to actual, by {}, up to {}", axis.title, until.split("-").reverse().join("/"))
      : t("From budget to actual, by {}", axis.title);
    return waterfallChart(what, ends, steps);
  }
}

/** Every figure that was asked for is shown; the first column names the rows. */
function reportColumns(table) {
  return table.columns.map((column, index) => ({
    ...column,
    index,
    shown: true,
    figure: column.number || Boolean(column.percentage),
  }));
}
