#include "host/server/Site.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <nlohmann/json.hpp>
#include <utility>

#include "host/environment/Errors.h"
#include "host/server/Assets.h"
#include "host/server/Figures.h"
#include "host/server/JsonText.h"
#include "host/server/OpenApi.h"
#include "host/server/Pages.h"
#include "language/Language.h"

namespace bukorval::host::server {
namespace {

using nlohmann::json;

Reply stranger() { return failed(401, "unauthorized", tr("Open the address that the server printed first")); }
Reply forbidden(std::string_view message) { return failed(403, "forbidden", message); }
Reply nothingThere() { return failed(404, "notFound", tr("There is nothing at this address")); }

Reply entered(const std::string& cookie) {
  return {303, "", "", {{"Location", "/"}, {"Set-Cookie", cookie}, {"Cache-Control", "no-store"}}};
}

/// The parameters of an address as options; they are all texts.
json optionsOf(const Request& request, std::initializer_list<std::string_view> others) {
  json options = json::object();
  for (const auto& [name, value] : request.query)
    if (std::ranges::find(others, name) == others.end()) options[name] = value;
  return options;
}

std::string parameterOf(const Request& request, const char* name, const char* otherwise = "") {
  const auto found = request.query.find(name);
  return found == request.query.end() ? otherwise : found->second;
}

}  // namespace

enum class Who { Anybody, Known };

struct Site::Route {
  std::string_view method, path;  ///< a path that ends in / has something behind it
  Who who;
  Reply (Site::*handler)(const Request& request, std::string_view rest);
};

const Site::Route Site::kRoutes[] = {
    {"GET", "/login", Who::Anybody, &Site::loginForm},      {"POST", "/login", Who::Anybody, &Site::login},
    {"GET", "/openapi.json", Who::Known, &Site::openApi},   {"GET", "/api/v1/session", Who::Known, &Site::session},
    {"POST", "/api/v1/run/", Who::Known, &Site::run},       {"POST", "/api/v1/jobs/", Who::Known, &Site::startJob},
    {"GET", "/api/v1/jobs/", Who::Known, &Site::lookAtJob}, {"DELETE", "/api/v1/jobs/", Who::Known, &Site::forgetJob},
    {"POST", "/api/v1/deltas", Who::Known, &Site::deltas},  {"GET", "/api/v1/changes", Who::Known, &Site::changes},
    {"GET", "/api/v1/picture/", Who::Known, &Site::drawn},  {"POST", "/api/v1/picture/", Who::Known, &Site::picture},
};

Reply Site::failure(int status) {
  if (status == 413 || status == 414 || status == 431)
    return failed(status, "tooLarge", tr("The request is too large"));
  if (status == 408) return failed(408, "tooSlow", tr("The request took too long to arrive"));
  if (status == 503) return failed(503, "busy", tr("Too many are at work here: try again in a moment"));
  if (status == 404) return nothingThere();
  return failed(status, status < 500 ? "usage" : "failed", tr("The request cannot be read"));
}

Reply Site::answer(Request request) noexcept {
  try {
    return route(request);
  } catch (const UsageError& e) {
    return failed(400, "usage", e.what());
  } catch (...) {
    return failure(500);
  }
}

Reply Site::route(Request& request) {
  if (!gate_.isForUs(request)) return forbidden(tr("This request is not for this server, or comes from another page"));
  if (request.path == "/" && request.method == "GET") return home(request, "");
  for (const auto& route : kRoutes) {
    const bool longer = route.path.ends_with('/');
    if (route.method == request.method && (longer ? request.path.starts_with(route.path) : request.path == route.path))
      return served(request, std::string_view(request.path).substr(longer ? route.path.size() : request.path.size()),
                    route);
  }
  if (request.path.starts_with("/api/") && !gate_.callerOf(request)) return stranger();
  if (request.method != "GET") return nothingThere();
  auto asset = assetReply(assetsFolder_, request.path);
  return asset ? std::move(*asset) : nothingThere();
}

Reply Site::served(Request& request, std::string_view rest, const Route& route) {
  if (route.who == Who::Known) {
    const auto caller = gate_.callerOf(request);
    if (!caller) return stranger();
    request.user = caller->user;
    if (request.method != "GET" && !Gate::isMeant(*caller, request))
      return forbidden(tr("The request lacks the sign of the page that it should come from"));
  }
  const auto begun = std::chrono::steady_clock::now();
  auto reply = (this->*route.handler)(request, rest);
  if (route.who == Who::Known) {
    const std::chrono::duration<double, std::milli> taken = std::chrono::steady_clock::now() - begun;
    reply.headers.emplace_back("Server-Timing", "run;dur=" + std::to_string(taken.count()));
  }
  return reply;
}

Reply Site::home(const Request& request, std::string_view) {
  if (const auto token = request.query.find("token"); token != request.query.end()) {
    const auto cookie = gate_.enterByToken(token->second);
    return cookie ? entered(*cookie) : strangerPage(gate_.accounts().areThere());
  }
  if (!gate_.callerOf(request)) return strangerPage(gate_.accounts().areThere());
  auto page = assetReply(assetsFolder_, "/index.html");
  return page ? std::move(*page) : nothingThere();
}

Reply Site::loginForm(const Request&, std::string_view) {
  return gate_.accounts().areThere() ? loginPage(200, "", gate_.accounts().haveNames()) : nothingThere();
}

Reply Site::login(const Request& request, std::string_view) {
  if (!gate_.accounts().areThere()) return nothingThere();
  const bool asJson = request.header("Content-Type").starts_with("application/json");
  const auto body = asJson ? parsedBody(request.body) : json::object();
  const auto given = [&](const char* name) {
    const auto value = asJson ? body.value(name, json()) : json(parameterOf(request, name));
    return value.is_string() ? value.get<std::string>() : "";
  };
  std::string cookie;
  const auto again = [&](int status, std::string_view problem) {
    return loginPage(status, problem, gate_.accounts().haveNames());
  };
  switch (gate_.enterByPassword(given("user"), given("password"), request.remote, cookie)) {
    case Gate::Login::Entered: return entered(cookie);
    case Gate::Login::TooSoon: return again(429, tr("Too soon after a wrong password: wait a little"));
    case Gate::Login::Wrong: break;
  }
  return again(401, tr("That is not the password"));
}

Reply Site::session(const Request& request, std::string_view) {
  const auto caller = gate_.callerOf(request);
  std::string out = R"({"csrf":)" + quotedText(caller ? caller->csrf : "") + R"(,"language":)" +
                    quotedText(chosenLanguage() == Language::Italian ? "it" : "en") + R"(,"readOnly":)" +
                    (operations_.readOnly() ? "true" : "false") + R"(,"user":)" +
                    quotedText(request.user.empty() ? about_.user : request.user) + R"(,"company":)";
  appendCell(out, about_.company, {});
  out += R"(,"companyName":)" + quotedText(about_.companyName) + R"(,"decimalSeparator":)" +
         quotedText(std::string(1, about_.decimalSeparator)) + R"(,"thousandsSeparator":)" +
         quotedText(about_.decimalSeparator == ',' ? "." : ",") + R"(,"version":)" + quotedText(about_.version) + "}";
  return jsonReply(200, std::move(out));
}

Reply Site::openApi(const Request&, std::string_view) {
  return jsonReply(200, server::openApi(operations_, about_.version));
}

Reply Site::run(const Request& request, std::string_view command) {
  if (operations_.isOffered(command)) return operations_.run(command, request.body, request.user);
  return operations_.writes(command) ? forbidden(tr("This server writes nothing")) : nothingThere();
}

Reply Site::startJob(const Request& request, std::string_view command) {
  if (operations_.isOffered(command)) return jobs_.start(command, request.body, request.user);
  return operations_.writes(command) ? forbidden(tr("This server writes nothing")) : nothingThere();
}

Reply Site::lookAtJob(const Request&, std::string_view id) { return jobs_.look(std::string(id)); }

Reply Site::forgetJob(const Request&, std::string_view id) { return jobs_.forget(std::string(id)); }

Reply Site::deltas(const Request& request, std::string_view) {
  return jsonReply(200, deltasOf(parsedBody(request.body)));
}

Reply Site::changes(const Request& request, std::string_view) {
  const auto since = parameterOf(request, "since");
  return operations_.with(
      [&](Environment& environment) { return changesSince(environment, since, operations_.commits().now()); },
      optionsOf(request, {"since"}), "grid");
}

Reply Site::drawn(const Request& request, std::string_view what) {
  if (what != "report") return nothingThere();
  auto options = optionsOf(request, {"chart"});
  return operations_.picture({{"options", options}, {"chart", parameterOf(request, "chart", "trend")}});
}

Reply Site::picture(const Request& request, std::string_view what) {
  return what == "report" ? operations_.picture(parsedBody(request.body)) : nothingThere();
}

}  // namespace bukorval::host::server
