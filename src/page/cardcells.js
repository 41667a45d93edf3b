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

  /** A period may have several details of a kind, which no single value stands for. */
  isSingle(cells, address) {
    const count = this.details.get(`${this.period(cells)} ${address.id}`) ?? 0;
    return count < 2 && this.first.get(this.period(cells)) === cells;
  }
}
