#include "host/server/Pages.h"

#include <string>

#include "language/Language.h"
#include "picture/Markup.h"

namespace bukorval::host::server {
namespace {

Reply page(int status, const picture::Markup& body) {
  picture::Markup out;
  out.raw("<!DOCTYPE html>\n").open("html", {{"lang", chosenLanguage() == Language::Italian ? "it" : "en"}});
  out.open("head").empty("meta", {{"charset", "utf-8"}});
  out.empty("meta", {{"name", "viewport"}, {"content", "width=device-width, initial-scale=1"}});
  out.element("title", {}, "bukorval").empty("link", {{"rel", "stylesheet"}, {"href", "/door.css"}}).close("head");
  out.open("body").open("main").element("h1", {}, "bukorval").raw(body.str()).close("main").close("body").close("html");
  return {status, "text/html; charset=utf-8", out.str(), {{"Cache-Control", "no-store"}}};
}

}  // namespace

Reply strangerPage(bool hasPassword) {
  picture::Markup body;
  body.element("p", {}, tr("Open the address that the server printed when it was started; it holds the key."));
  if (hasPassword) body.open("p").element("a", {{"href", "/login"}}, tr("Or enter the password")).close("p");
  return page(401, body);
}

Reply loginPage(int status, std::string_view problem, bool named) {
  picture::Markup body;
  if (!problem.empty()) body.element("p", {{"role", "alert"}}, problem);
  body.open("form", {{"method", "post"}, {"action", "/login"}});
  if (named) {
    body.element("label", {{"for", "user"}}, tr("User"));
    body.empty("input", {{"id", "user"},
                         {"name", "user"},
                         {"autocomplete", "username"},
                         {"required", "required"},
                         {"autofocus", "autofocus"}});
  }
  body.element("label", {{"for", "password"}}, tr("Password"));
  body.empty("input", {{"type", "password"},
                       {"id", "password"},
                       {"name", "password"},
                       {"autocomplete", "current-password"},
                       {"required", "required"},
                       {"autofocus", "autofocus"}});
  body.element("button", {}, tr("Enter")).close("form");
  return page(status, body);
}

}  // namespace bukorval::host::server
