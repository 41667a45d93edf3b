// Where the page is stands in the address, so that it can be kept, sent and gone back to: #/grid/4/01/2025?site=1&kind=0

const views = new Map();

export function view(name, show) {
  views.set(name, show);
}

/** link("grid", ["4", "01"], {site: 1}) is the address of a view; what is empty is left out of it. */
export function link(name, path = [], query = {}) {
  const kept = Object.entries(query).filter(([, value]) => value !== "" && value !== null && value !== undefined);
  const text = new URLSearchParams(kept).toString();
  return "#/" + [name, ...path].map(encodeURIComponent).join("/") + (text ? "?" + text : "");
}

export function go(...where) {
  location.hash = link(...where);
}

/** Changes the address of what is shown already. */
export function stay(...where) {
  history.replaceState(null, "", link(...where));
}

export function place() {
  const [path, query = ""] = location.hash.replace(/^#\/?/, "").split(/\?(.*)/s);
  const decode = (part) => {
    try {
      return decodeURIComponent(part);
    } catch {
      return part;
    }
  };
  const [name, ...rest] = path.split("/").map(decode);
  return { name: name || "budgets", path: rest, query: Object.fromEntries(new URLSearchParams(query)) };
}

export function showPlace() {
  const where = place();
  (views.get(where.name) ?? views.get("budgets"))(where);
}

export function startRouter() {
  addEventListener("hashchange", showPlace);
  showPlace();
}
