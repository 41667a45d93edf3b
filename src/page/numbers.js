// Figures come as exact texts ("1250.50") and stay texts: they are grouped, moved and summed without a binary fraction.

let decimalSign = ",",
  thousandsSign = ".";

export function chooseSigns(decimal, thousands) {
  decimalSign = decimal || ",";
  thousandsSign = thousands ?? (decimalSign === "," ? "." : ",");
}

const parts = (text) => {
  const [, sign, whole, fraction = ""] = /^(-?)(\d*)(?:\.(\d*))?$/.exec(String(text)) ?? [null, "", "0", ""];
  return { sign, whole: whole || "0", fraction };
};

const scaled = (text, decimals) => {
  const { sign, whole, fraction } = parts(text);
  const value = BigInt(whole + fraction.padEnd(decimals, "0").slice(0, decimals));
  return sign ? -value : value;
};

const unscaled = (value, decimals) => {
  const digits = (value < 0n ? -value : value).toString().padStart(decimals + 1, "0");
  const point = digits.length - decimals;
  return (value < 0n ? "-" : "") + digits.slice(0, point) + (decimals ? "." + digits.slice(point) : "");
};

/** "1250.5" with two decimals as people write it: 1.250,50. */
export function formatDecimal(text, decimals) {
  const { sign, whole, fraction } = parts(text);
  const grouped = whole.replace(/\B(?=(\d{3})+(?!\d))/g, thousandsSign);
  return sign + grouped + (decimals ? decimalSign + fraction.padEnd(decimals, "0").slice(0, decimals) : "");
}

/** "0.0224" as 2,24. */
export function formatPercent(ratio) {
  return formatDecimal(unscaled(scaled(ratio, 4), 2), 2);
}

/** What an edit begins with: 1250,5, without groups and needless zeros. */
export function plainDecimal(text) {
  const { sign, whole, fraction } = parts(text);
  const needed = fraction.replace(/0+$/, "");
  return sign + whole + (needed ? decimalSign + needed : "");
}

/** Signs of money and blanks that spreadsheets copy with a number. */
export function withoutOrnament(text) {
  return text.replace(/[\s\u00a0\u202f€$£]/g, "");
}

/** "1.250,50" as typed, as "1250.50"; null for what is no number or could be read two ways (1.250). */
export function parseDecimal(typed) {
  const text = withoutOrnament(typed);
  const at = text.lastIndexOf(decimalSign);
  const whole = at < 0 ? text : text.slice(0, at),
    fraction = at < 0 ? "" : text.slice(at + 1);
  const groups = whole.replace(/^[+-]/, "").split(thousandsSign);
  const grouped = groups.length > 1;
  if (grouped && (at < 0 || !groups.slice(1).every((group) => group.length === 3))) return null;
  const digits = groups.join("");
  if (!/^\d*$/.test(digits + fraction) || digits + fraction === "") return null;
  return (whole.startsWith("-") ? "-" : "") + (digits || "0") + (fraction ? "." + fraction : "");
}

/** The exact sum of texts; null when there is none. */
export function sum(texts, decimals) {
  let total = 0n,
    any = false;
  for (const text of texts) {
    if (text === null || text === undefined) continue;
    any = true;
    total += scaled(text, decimals);
  }
  return any ? unscaled(total, decimals) : null;
}

/** Whether two figures are the same amount, nothing being nothing. */
export function sameAmount(a, b) {
  if (a === null || b === null) return a === b;
  return scaled(a, 6) === scaled(b, 6);
}

/** "2025-03-01" and "2025-03-01T09:30:00" as the program writes dates. */
export function formatDate(iso) {
  const [, year, month, day, time = ""] = /^(\d{4})-(\d\d)-(\d\d)(?:[T ](\d\d:\d\d(?::\d\d)?))?/.exec(iso) ?? [];
  return year ? `${day}/${month}/${year}${time ? " " + time : ""}` : iso;
}
