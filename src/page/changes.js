// Looks now and then, and when the page comes to the front, whether others have changed cards of a budget.

import { changes } from "./api.js";
import { isLater } from "./edits.js";

const SECONDS = 4;

export class ChangeWatch {
  constructor({ type, subtype, year }) {
    this.query = { type, subtype, year };
    this.since = "";
    this.told = new Map(); // last changes by card
    this.onchange = () => {};
    this.seen = () => this.look();
  }

  /** The server may tell a change twice. */
  #isNews({ id, lastChange }) {
    const told = this.told.get(id);
    this.told.set(id, lastChange);
    return told && lastChange ? isLater(lastChange, told) : told !== lastChange;
  }

  /** From now on; what is loaded afterwards is at least as new. */
  async start() {
    try {
      this.since = (await changes(this.query)).now;
    } catch {
      return; // a budget without cards, or one that the object refuses: its view tells
    }
    if (this.stopped) return;
    this.timer = setInterval(this.seen, SECONDS * 1000);
    document.addEventListener("visibilitychange", this.seen);
  }

  async look() {
    if (document.hidden || this.looking) return;
    this.looking = true;
    try {
      const { now, cards } = await changes({ ...this.query, since: this.since });
      if (this.stopped) return;
      this.since = now;
      const news = cards.filter((card) => this.#isNews(card));
      if (news.length) this.onchange(news);
    } catch {
      /* the next look tells */
    } finally {
      this.looking = false;
    }
  }

  stop() {
    this.stopped = true;
    clearInterval(this.timer);
    document.removeEventListener("visibilitychange", this.seen);
  }
}
