// How one value of a column looks.

import { formatDate, formatDecimal, formatPercent } from "./numbers.js";
import { t } from "./words.js";

const DATE = /^\d{4}-\d\d-\d\d(?:[T ]\d\d:\d\d(?::\d\d)?)?$/;
// Signs that would hide or turn what stands beside them.
const UNSEEN = /[\u0000-\u001f\u007f-\u009f\u200b-\u200f\u202a-\u202e\u2066-\u2069]/g;

/** A text with what cannot be seen written out. */
export function clean(text) {
  return text.replace(UNSEEN, (sign) => "\\u" + sign.charCodeAt(0).toString(16).padStart(4, "0"));
}

export function isFigure(column) {
  return Boolean(column.percentage) || (column.number && column.decimals > 0);
}

export function format(value, column) {
  if (value === null || value === undefined) return "";
  if (typeof value === "boolean") return value ? t("Yes") : t("No");
  if (column.percentage) return formatPercent(value);
  if (isFigure(column)) return formatDecimal(value, column.decimals);
  if (typeof value === "string") return DATE.test(value) ? formatDate(value) : column.words ? t(value) : clean(value);
  return String(value);
}
