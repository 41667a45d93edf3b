// The options of a run as a form, made from the server's own description of it.

import { check, field, h, select } from "./dom.js";
import { t } from "./words.js";

// The budget is where one is, the rest is how the page runs things.
const LEFT_OUT = ["type", "subtype", "year", "dry-run", "write", "yes", "fields", "company", "CodiceDitta"];

/** An option goes by several names, each with the same description; the wanted one of them is kept. */
function optionsOf(operation, first, given) {
  const { properties, required = [] } = operation.requestBody.content["application/json"].schema.properties.options;
  const groups = new Map();
  for (const [name, schema] of Object.entries(properties)) {
    const group = groups.get(schema.description) ?? { names: [], schema };
    group.names.push(name);
    groups.set(schema.description, group);
  }
  return [...groups.values()]
    .filter(({ names }) => !names.some((name) => LEFT_OUT.includes(name) || given.includes(name)))
    .map(({ names, schema }) => {
      const name = names.find((each) => first.includes(each)) ?? names[0];
      return { name, schema, place: first.indexOf(name), required: required.some((each) => names.includes(each)) };
    });
}

function control({ name, schema, required }, choices, preset, values, label) {
  const take = (value) => {
    if (value === "" || value === false) delete values[name];
    else values[name] = value;
  };
  if (preset) values[name] = preset;
  const text = label ?? schema.description,
    hint = label ? "" : name;
  if (schema.type === "boolean") return check(text, false, take);
  if (choices || schema.enum) return field(text, select([["", ""], ...(choices ?? schema.enum)], preset, take), hint);
  const date = /Data$/.test(name),
    whole = schema.type === "integer";
  return field(
    text,
    h("input", {
      type: date ? "date" : whole ? "number" : "text",
      value: preset ?? "",
      required,
      autocomplete: "off",
      onchange: (event) =>
        take(whole && event.target.value !== "" ? Number(event.target.value) : event.target.value.trim()),
    }),
    hint,
  );
}

/**
 * @param choices  pairs of code and text, by option
 * @param presets  values of options to begin with
 * @param given    names of options that are given elsewhere
 * @param labels   what options are called here, for those that the program calls too long
 */
export function optionFields(operation, { first, choices, presets, given, labels = {} }) {
  const values = {};
  const make = (option) => control(option, choices[option.name], presets[option.name], values, labels[option.name]);
  const options = optionsOf(operation, first, given);
  const shown = options.filter(({ place }) => place >= 0).sort((a, b) => a.place - b.place);
  const more = options.filter(({ place }) => place < 0);
  const element = h(
    "div",
    {},
    h("div", { class: "fields" }, shown.map(make)),
    more.length
      ? h(
          "details",
          { class: "more" },
          h("summary", {}, t("More options")),
          h("div", { class: "fields" }, more.map(make)),
        )
      : null,
  );
  return { element, values: () => ({ ...values }) };
}
