// Pictures of a report, drawn as wide as there is room. Figures are only measured here; what is written beside a bar or a
// point is the text the server gave.

import { h, svg } from "./dom.js";
import { formatDecimal } from "./numbers.js";
import { t } from "./words.js";

const HEIGHT = 250,
  LEFT = 76,
  RIGHT = 14,
  TOP = 14,
  BOTTOM = 34,
  TICKS = 5,
  LETTER = 6.5;

/** Round numbers from least to greatest, both inside. */
function ticksOf(least, greatest) {
  const span = greatest - least || Math.abs(greatest) || 1;
  const rough = span / TICKS,
    power = 10 ** Math.floor(Math.log10(rough));
  const step = [1, 2, 2.5, 5, 10].map((factor) => factor * power).find((each) => each >= rough);
  const ticks = [];
  for (let i = Math.floor(least / step); i <= Math.ceil(greatest / step); ++i) ticks.push(i * step);
  return ticks;
}

const tickText = (value) => formatDecimal(String(Math.round(value * 100) / 100), Number.isInteger(value) ? 0 : 2);

/** A picture that is drawn anew when its room changes. @param draw  (width) => its parts */
function picture(label, title, legend, draw) {
  const place = svg("svg", { role: "img", "aria-label": label, height: HEIGHT });
  const figure = h("figure", {}, h("figcaption", {}, h("strong", {}, title), legend), place);
  new ResizeObserver(() => {
    const width = Math.max(280, Math.floor(figure.clientWidth));
    if (place.getAttribute("width") === String(width)) return;
    place.setAttribute("width", width);
    place.setAttribute("viewBox", `0 0 ${width} ${HEIGHT}`);
    place.replaceChildren(...draw(width));
  }).observe(figure);
  return figure;
}

function scale(ticks) {
  const least = ticks[0],
    greatest = ticks.at(-1),
    room = HEIGHT - TOP - BOTTOM;
  return (value) => TOP + room - ((value - least) / (greatest - least || 1)) * room;
}

function gridLines(ticks, y, width) {
  return ticks.flatMap((tick) => [
    svg("line", { class: tick === 0 ? "zero" : "rule", x1: LEFT, x2: width - RIGHT, y1: y(tick), y2: y(tick) }),
    svg("text", { class: "tick end", x: LEFT - 8, y: y(tick) + 4 }, tickText(tick)),
  ]);
}

function legendOf(series) {
  return h(
    "span",
    { class: "legend" },
    series.map(({ title, look }) =>
      h(
        "span",
        {},
        svg(
          "svg",
          { width: 22, height: 10, "aria-hidden": "true" },
          svg("path", { class: `line ${look}`, d: "M0 5H22" }),
        ),
        title,
      ),
    ),
  );
}

const shorten = (text, length) => (text.length > length ? text.slice(0, length - 1) + "…" : text);

/** @param series  [{title, look, values: [text|null], texts}]; @param labels  of the periods */
export function trendChart(title, labels, series) {
  const numbers = series
    .flatMap(({ values }) => values)
    .filter((value) => value !== null)
    .map(Number);
  const ticks = ticksOf(Math.min(0, ...numbers), Math.max(0, ...numbers)),
    y = scale(ticks);
  const spoken = series.map(
    (each) =>
      `${each.title}: ${each.texts
        .map((text, i) => text && `${labels[i]} ${text}`)
        .filter(Boolean)
        .join(", ")}`,
  );
  return picture(`${title}. ${spoken.join(". ")}`, title, legendOf(series), (width) => {
    const step = (width - LEFT - RIGHT) / labels.length,
      x = (i) => LEFT + step * (i + 0.5);
    const lines = series.map(({ values, look }) => {
      const d = values
        .map((value, i) =>
          value === null
            ? ""
            : `${i === 0 || values[i - 1] === null ? "M" : "L"}${x(i).toFixed(1)} ${y(Number(value)).toFixed(1)}`,
        )
        .join("");
      return svg("path", { class: `line ${look}`, d });
    });
    const points = series.flatMap(({ values, texts, look, title: name }) =>
      values
        .map((value, i) =>
          value === null
            ? null
            : svg(
                "circle",
                { class: `point ${look}`, cx: x(i), cy: y(Number(value)), r: 3.2 },
                svg("title", {}, `${name} · ${labels[i]}: ${texts[i]}`),
              ),
        )
        .filter(Boolean),
    );
    const fits = labels.every((label) => label.length * LETTER < step);
    const names = labels.map((label, i) =>
      svg("text", { class: "tick middle", x: x(i), y: HEIGHT - 12 }, fits ? label : label.slice(0, 3)),
    );
    return [...gridLines(ticks, y, width), ...lines, ...points, ...names];
  });
}

/** From one amount to another by steps. @param steps  [{title, value, text}] @param ends  [{title, value, text, look}] */
export function waterfallChart(title, ends, steps) {
  const bars = [];
  let level = Number(ends[0].value);
  bars.push({ ...ends[0], from: 0, to: level });
  for (const step of steps) {
    const to = level + Number(step.value);
    bars.push({ ...step, from: level, to, look: to < level ? "down" : "up" });
    level = to;
  }
  bars.push({ ...ends[1], from: 0, to: Number(ends[1].value) });
  const middle = bars.slice(1, -1).flatMap(({ from, to }) => [from, to]);
  const levels = [...middle, bars[0].to, bars.at(-1).to];
  // Steps that are small beside the totals would not be seen on a scale from zero.
  const least = Math.min(...levels),
    greatest = Math.max(...levels),
    span = greatest - least;
  const cut = least > 0 && span < greatest / 4;
  const ticks = ticksOf(cut ? least - span * 0.15 : Math.min(0, least), Math.max(0, greatest)),
    y = scale(ticks);
  const base = cut ? ticks[0] : 0;
  return picture(
    `${title}. ${bars.map((bar) => `${bar.title}: ${bar.text}`).join(". ")}`,
    title,
    cut ? h("span", { class: "muted" }, t("the scale does not begin at zero")) : null,
    (width) => {
      const step = (width - LEFT - RIGHT) / bars.length,
        room = Math.min(step * 0.7, 64);
      const length = Math.max(3, Math.floor(step / LETTER));
      return [
        ...gridLines(ticks, y, width),
        ...bars
          .flatMap((bar, i) => {
            const x = LEFT + step * i + (step - room) / 2;
            const from = bar.from === 0 ? base : bar.from;
            const top = Math.min(y(from), y(bar.to)),
              height = Math.max(1, Math.abs(y(from) - y(bar.to)));
            const joint =
              i + 1 < bars.length
                ? svg("line", { class: "joint", x1: x + room, x2: x + step, y1: y(bar.to), y2: y(bar.to) })
                : null;
            return [
              svg(
                "rect",
                { class: `bar ${bar.look}`, x, y: top, width: room, height, rx: 1.5 },
                svg("title", {}, `${bar.title}: ${bar.text}`),
              ),
              joint,
              svg(
                "text",
                { class: "tick middle", x: x + room / 2, y: HEIGHT - 12 },
                shorten(bar.title, length),
                svg("title", {}, bar.title),
              ),
            ];
          })
          .filter(Boolean),
      ];
    },
  );
}
