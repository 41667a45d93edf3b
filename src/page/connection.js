// The bar that tells that the server is away, and the way back in after it was started anew.

import { asksFor, connection, logIn } from "./api.js";
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
  const asked = await asksFor().catch(() => ({}));
  const user = asked.user ? h("input", { autocomplete: "username" }) : null;
  const secret = h("input", {
    type: asked.password ? "password" : "text",
    autocomplete: asked.password ? "current-password" : "off",
  });
  const given = () =>
    asked.password ? { password: secret.value, ...(user && { user: user.value }) } : { token: secret.value };
  const told = h("span", { class: "bad" });
  const enter = async (event) => {
    event.preventDefault();
    told.textContent = await logIn(given()).catch((error) => error.message);
  };
  showBar(
    h(
      "form",
      { onsubmit: enter },
      h("strong", {}, t("The server was started again or your visit has ended.")),
      user ? field(t("User"), user) : null,
      field(asked.password ? t("Password") : t("The address that it printed, or its token"), secret),
      h("button", { type: "submit" }, t("Go on")),
      told,
    ),
  );
  (user ?? secret).focus();
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
