// What the server is asked. A request outlives a server that is away for a while: it waits until the server is back or
// the user has logged in again, and goes on.

import { t } from "./words.js";

export class Failure extends Error {
  constructor(status, { kind = "failed", message = "", tables = [] } = {}) {
    super(message || `HTTP ${status}`);
    Object.assign(this, { status, kind, tables });
  }
}

/** Tells "lost", "login" and "back". */
export const connection = new EventTarget();

const BUSY_TRIES = 5;
let session = { csrf: "" };
let returning = null; // promises while the server is away, or while nobody is logged in
let loggingIn = null;

const pause = (milliseconds) => new Promise((resolve) => setTimeout(resolve, milliseconds));
const tell = (name) => connection.dispatchEvent(new Event(name));

/** Answers when the server does. */
function serverReturns() {
  returning ??= (async () => {
    tell("lost");
    for (let wait = 500; ; wait = Math.min(wait * 1.5, 5000)) {
      await pause(wait);
      try {
        await fetch("/api/v1/session", { cache: "no-store" });
        break;
      } catch {
        /* still away */
      }
    }
    returning = null;
    tell("back");
  })();
  return returning;
}

/** Answers when logIn() has succeeded. */
function userReturns() {
  if (!loggingIn) {
    loggingIn = {};
    loggingIn.done = new Promise((resolve) => {
      loggingIn.resolve = resolve;
    });
    tell("login");
  }
  return loggingIn.done;
}

async function answerOf(response) {
  const type = response.headers.get("Content-Type") ?? "";
  return type.includes("json") ? response.json() : response.text();
}

async function send(path, method, body) {
  const headers = { "X-Bukorval-Csrf": session.csrf };
  if (body !== undefined) headers["Content-Type"] = "application/json";
  return fetch(path, {
    method,
    headers,
    cache: "no-store",
    keepalive: method === "DELETE", // also of a page that is just being closed
    body: body === undefined ? undefined : JSON.stringify(body),
  });
}

/** @param again  whether it may be sent a second time when no answer came: not for what writes without a stamp. */
async function request(path, { method = "GET", body, again = true } = {}) {
  let refreshed = false;
  for (let busy = 0; ;) {
    let response, answer;
    try {
      response = await send(path, method, body);
      answer = await answerOf(response);
    } catch {
      const back = serverReturns();
      if (!again) throw new Failure(0, { kind: "lost", message: t("The server does not answer") });
      await back;
      continue;
    }
    if (response.ok) return answer;
    if (response.status === 401) {
      await userReturns();
      continue;
    }
    const failure = new Failure(response.status, answer?.error);
    if (response.status === 403 && !refreshed) {
      refreshed = true;
      const before = session.csrf;
      await openSession();
      if (session.csrf !== before) continue;
    }
    if (response.status === 503 && again && ++busy < BUSY_TRIES) {
      await pause(200 * 2 ** busy);
      continue;
    }
    throw failure;
  }
}

export async function openSession() {
  session = await request("/api/v1/session");
  return session;
}

export const currentSession = () => session;

/** Runs a command; its tables, its named values and what it told. */
export function run(command, options, { again = true } = {}) {
  return request(`/api/v1/run/${command}`, { method: "POST", body: { options }, again });
}

export const startJob = (command, options) =>
  request(`/api/v1/jobs/${command}`, { method: "POST", body: { options }, again: false });
export const jobState = (id) => request(`/api/v1/jobs/${encodeURIComponent(id)}`);
/** Ends a job that still runs. What came of it. */
export const endJob = (id) => request(`/api/v1/jobs/${encodeURIComponent(id)}`, { method: "DELETE" });
export const deltas = (body) => request("/api/v1/deltas", { method: "POST", body });
export const changes = (query) => request(`/api/v1/changes?${new URLSearchParams(query)}`);

let description = null;

/** The description of the operations, asked for once. */
export function operations() {
  description ??= request("/openapi.json").catch((error) => {
    description = null;
    throw error;
  });
  return description;
}

/** What the server asks for at its door: a password, with a user's name; else it prints an address with a token. */
export async function asksFor() {
  const answer = await fetch("/login", { cache: "no-store" });
  return { password: answer.ok, user: answer.ok && (await answer.text()).includes('name="user"') };
}

/**
 * @param secret  {password, user}, or {token}: a token or the address that holds one
 * @returns what is wrong with it, "" for nothing
 */
export async function logIn({ token: text, ...secret }) {
  if (text === undefined) {
    const given = await fetch("/login", { method: "POST", body: new URLSearchParams(secret) });
    if (given.status === 429) return t("Too soon after a wrong password: wait a little");
  } else {
    const token = /[?&]token=([^&#\s]+)/.exec(text)?.[1] ?? encodeURIComponent(text.trim());
    await fetch(`/?token=${token}`);
  }
  const answer = await fetch("/api/v1/session", { cache: "no-store" });
  if (!answer.ok) return t("That is not right");
  session = await answer.json();
  loggingIn?.resolve();
  loggingIn = null;
  tell("back");
  return "";
}
