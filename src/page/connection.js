// The bar that tells that the server is away, and the way back in after it was started anew.

import { asksForPassword, connection, logIn } from "./api.js";
import { button, field, h } from "./dom.js";
import { announce } from "./notices.js";
import { t } from "./words.js";

let bar = null;

function showBar(...content) {
  bar ??= document.body.insertBefore(h("div", { class: "connection", role: "alert" }), document.body.firstChild);
  bar.replaceChildren(...content);
}

function hideBar() {
  if (!bar) return;
  bar.remove();
  bar = null;
  announce(t("The server is back"));
}

async function showLogin() {
  const password = await asksForPassword().catch(() => false);
  const secret = h("input", {
    type: password ? "password" : "text",
    autocomplete: password ? "current-password" : "off",
  });
  const told = h("span", { class: "bad" });
  const enter = async (event) => {
    event.preventDefault();
    told.textContent = await logIn(secret.value, password).catch((error) => error.message);
  };
  showBar(
    h(
      "form",
      { onsubmit: enter },
      h("strong", {}, t("The server was started again or your visit has ended.")),
      field(password ? t("Password") : t("The address that it printed, or its token"), secret),
      h("button", { type: "submit" }, t("Go on")),
      told,
    ),
  );
  secret.focus();
}

export function watchConnection() {
  connection.addEventListener("lost", () =>
    showBar(
      h("strong", {}, t("The server does not answer. Trying again…")),
      button(t("Reload the page"), () => location.reload()),
    ),
  );
  connection.addEventListener("login", showLogin);
  connection.addEventListener("back", hideBar);
}
