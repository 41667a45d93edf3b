// The cells of a card by period: what each is called by `set`, and whether it can be written.

const VALUE = /^(IMP|QTA1|QTA2)_((BUDGET)|(CONSUNTIVO)|(ORDINI)|FORECAST(\d+))$/;
const MEASURES = { IMP: "amount", QTA1: "qty1", QTA2: "qty2" };

/** {kind, measure, id} of a column of values; null for another one. */
export function addressOf(column) {
  const [, measure, detail, budget, actual, orders, forecast] = VALUE.exec(column.name) ?? [];
  if (!measure) return null;
  const kind = budget ? "budget" : actual ? "actual" : orders ? "orders" : `forecast${forecast}`;
  return { kind, measure: MEASURES[measure], id: `ID_${detail}` };
}

export class CardCells {
  constructor(table) {
    this.places = Object.fromEntries(table.columns.map((column, index) => [column.name, index]));
    this.details = new Map();
    for (const cells of table.rows)
      for (const [name, index] of Object.entries(this.places))
        if (name.startsWith("ID_") && cells[index] !== null) this.#count(`${this.period(cells)} ${name}`);
    this.first = new Map();
    for (const cells of table.rows) if (!this.first.has(this.period(cells))) this.first.set(this.period(cells), cells);
  }

  #count(key) {
    this.details.set(key, (this.details.get(key) ?? 0) + 1);
  }

  period(cells) {
    return cells[this.places.PERIODO];
  }

  name(cells) {
    return cells[this.places.DESCRIZIONE] ?? String(this.period(cells));
  }

  /** The detail in a cell, also where it is its period's only one; null for none yet. */
  own(cells, address) {
    return cells[this.places[address.id]];
  }

  /** Which detail a cell stands for where its period has several of a kind; null where there is one, or none yet. */
  detail(cells, address) {
    const several = (this.details.get(`${this.period(cells)} ${address.id}`) ?? 0) > 1;
    return several ? this.own(cells, address) : null;
  }

  /** The first row of a period has its only details, each row one of several. */
  isWritable(cells, address) {
    const several = (this.details.get(`${this.period(cells)} ${address.id}`) ?? 0) > 1;
    return several ? this.detail(cells, address) !== null : this.first.get(this.period(cells)) === cells;
  }

  /** Names a cell, whatever becomes of its row. */
  key(cells, column) {
    const address = addressOf(column);
    return `${this.period(cells)} ${column.name} ${(address && this.detail(cells, address)) ?? ""}`;
  }
}
