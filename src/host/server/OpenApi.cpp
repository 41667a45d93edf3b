#include "host/server/OpenApi.h"

#include <nlohmann/json.hpp>

#include "host/server/OptionValues.h"
#include "language/Language.h"

namespace bukorval::host::server {
namespace {

using json = nlohmann::ordered_json;

json reference(const char* schema) { return {{"$ref", std::string("#/components/schemas/") + schema}}; }
json content(const json& schema) { return {{"application/json", {{"schema", schema}}}}; }
json arrayOf(json items) { return {{"type", "array"}, {"items", std::move(items)}}; }
json textOrNull() { return {{"type", "string"}, {"nullable", true}}; }

json object(json properties, std::vector<std::string> required) {
  return {{"type", "object"}, {"properties", std::move(properties)}, {"required", std::move(required)}};
}

const json kText{{"type", "string"}}, kNumber{{"type", "integer"}}, kFlag{{"type", "boolean"}};

/// The shapes of answers; those of the rows are in JsonText.cpp, those of jobs in Jobs.cpp.
json schemas() {
  json cell{{"nullable", true}, {"oneOf", {kText, kNumber, kFlag}}};
  json all;
  all["Column"] = object({{"name", kText},
                          {"title", kText},
                          {"number", kFlag},
                          {"decimals", {{"type", "integer"}, {"nullable", true}}},
                          {"percentage", kFlag},
                          {"total", kFlag},
                          {"secondary", kFlag},
                          {"group", kText}},
                         {"name", "title", "number", "decimals", "percentage", "total", "secondary", "group"});
  all["Look"] = object({{"subtotal", kFlag}, {"alarm", arrayOf(kNumber)}}, {"subtotal", "alarm"});
  json totals = arrayOf(cell);
  totals["nullable"] = true;
  all["Table"] = object({{"title", kText},
                         {"columns", arrayOf(reference("Column"))},
                         {"rows", arrayOf(arrayOf(cell))},
                         {"totals", totals},
                         {"looks", arrayOf(reference("Look"))}},
                        {"title", "columns", "rows", "totals"});
  all["Result"] = object({{"tables", arrayOf(reference("Table"))},
                          {"values", {{"type", "object"}, {"additionalProperties", cell}}},
                          {"messages", arrayOf(kText)}},
                         {"tables", "values", "messages"});
  json kind = kText;
  kind["enum"] = {"usage",     "refused",      "question", "conflict", "busy",   "failed",
                  "forbidden", "unauthorized", "notFound", "tooLarge", "tooSlow"};
  const json problem = object(
      {{"kind", kind}, {"message", kText}, {"tables", arrayOf(reference("Table"))}, {"messages", arrayOf(kText)}},
      {"kind", "message", "tables", "messages"});
  all["Failure"] = object({{"error", problem}}, {"error"});
  json progress =
      object({{"description", kText}, {"steps", kNumber}, {"done", kNumber}}, {"description", "steps", "done"});
  progress["nullable"] = true;
  json state = kText;
  state["enum"] = {"running", "done", "failed"};
  all["Id"] = object({{"id", kText}}, {"id"});
  all["Job"] = object(
      {{"id", kText}, {"state", state}, {"progress", progress}, {"result", reference("Result")}, {"error", problem}},
      {"id", "state", "progress"});
  all["Session"] = object({{"csrf", kText},
                           {"language", kText},
                           {"readOnly", kFlag},
                           {"user", kText},
                           {"company", {{"oneOf", {kText, kNumber}}}},
                           {"companyName", kText},
                           {"decimalSeparator", kText},
                           {"thousandsSeparator", kText},
                           {"version", kText}},
                          {"csrf", "language", "readOnly", "user", "company", "companyName", "decimalSeparator",
                           "thousandsSeparator", "version"});
  const json figures{{"type", "object"}, {"additionalProperties", cell}};
  all["Figures"] = object({{"rows", arrayOf(figures)}}, {"rows"});
  all["Changes"] =
      object({{"now", kText},
              {"cards", arrayOf(object({{"id", kNumber}, {"lastChange", textOrNull()}}, {"id", "lastChange"}))}},
             {"now", "cards"});
  return all;
}

json schemaOf(const Option& option) {
  json schema;
  switch (typeOf(option)) {
    case ValueType::Flag: schema = kFlag; break;
    case ValueType::Number:
      schema = kNumber;
      if (option.range) {
        schema["minimum"] = option.range->first;
        schema["maximum"] = option.range->second;
      }
      break;
    case ValueType::Text:
      schema = {{"oneOf", {kText, kNumber}}};
      if (!option.oneOf.empty()) schema = {{"type", "string"}, {"enum", option.oneOf}};
      break;
    case ValueType::Texts: schema = arrayOf(kText); break;
  }
  schema["description"] = tr(option.help);
  return schema;
}

/// The options of a command as one object: an option of several names may go by any of them.
json optionsOf(const Bound& bound) {
  json properties = json::object();
  std::vector<std::string> required;
  for (const auto& option : bound.options) {
    const auto names = plainNames(option);
    for (const auto& name : names) properties[name] = schemaOf(option);
    if (option.required) required.push_back(names.back());
  }
  json options{{"type", "object"}, {"properties", properties}, {"additionalProperties", false}};
  if (!required.empty()) options["required"] = required;
  return options;
}

json answers(const char* status, json good) {
  json all;
  all[status] = std::move(good);
  all["default"] = {{"description", tr("What was wrong, in words")}, {"content", content(reference("Failure"))}};
  return all;
}

json answers(const char* status, const char* schema) {
  return answers(status, {{"description", "OK"}, {"content", content(reference(schema))}});
}

json operation(const std::string& id, const std::string& summary, json responses) {
  return {{"operationId", id}, {"summary", summary}, {"responses", std::move(responses)}};
}

json withBody(json operation, const json& body) {
  operation["requestBody"] = {{"required", true}, {"content", content(body)}};
  return operation;
}

json parameter(const char* name, const char* in, bool required) {
  return {{"name", name}, {"in", in}, {"required", required}, {"schema", kText}};
}

void addCommands(json& paths, const Operations& operations) {
  for (const auto name : operations.offered()) {
    const auto bound = operations.bind(name);
    const std::string command(name);
    const auto body = object({{"options", optionsOf(bound)}, {"forPeople", kFlag}}, {});
    const auto add = [&](const std::string& kind, json responses) {
      paths["/api/v1/" + kind + "/" + command]["post"] =
          withBody(operation(kind + "-" + command, tr(bound.command.summary), std::move(responses)), body);
    };
    add("run", answers("200", "Result"));
    add("jobs", answers("202", "Id"));
    if (command != "report") continue;
    const json drawn{{"description", "OK"}, {"content", {{"image/svg+xml", {{"schema", kText}}}}}};
    auto chart = body;
    chart["properties"].erase("forPeople");
    chart["properties"]["chart"] = {{"type", "string"}, {"enum", {"trend", "trend-narrow", "deltas", "deltas-narrow"}}};
    paths["/api/v1/picture/report"]["post"] =
        withBody(operation("picture-report", tr("Draw a report"), answers("200", drawn)), chart);
  }
}

void addOthers(json& paths) {
  paths["/api/v1/session"]["get"] = operation("session", tr("Who is asking whom"), answers("200", "Session"));
  auto& job = paths["/api/v1/jobs/{id}"];
  job["parameters"] = {parameter("id", "path", true)};
  job["get"] = operation("job", tr("How far a job is, and what came of it"), answers("200", "Job"));
  job["delete"] = operation("forget-job", tr("End a job, or forget what came of it"), answers("200", "Job"));
  const auto figures = object({{"type", {{"oneOf", {kText, kNumber}}}},
                               {"subtype", kText},
                               {"cells", {{"type", "object"}}},
                               {"rows", arrayOf({{"type", "object"}})}},
                              {});
  paths["/api/v1/deltas"]["post"] = withBody(
      operation("deltas", tr("The deltas of figures that are being typed"), answers("200", "Figures")), figures);
  auto changes = operation("changes", tr("Which cards have been changed since a moment"), answers("200", "Changes"));
  for (const auto* name : {"type", "subtype", "year"}) changes["parameters"].push_back(parameter(name, "query", true));
  changes["parameters"].push_back(parameter("since", "query", false));
  paths["/api/v1/changes"]["get"] = changes;
}

}  // namespace

std::string openApi(const Operations& operations, const std::string& version) {
  json paths;
  addOthers(paths);
  addCommands(paths, operations);
  json document{{"openapi", "3.0.3"}, {"info", {{"title", "bukorval"}, {"version", version}}}};
  document["paths"] = paths;
  document["components"]["schemas"] = schemas();
  document["components"]["securitySchemes"] = {
      {"token", {{"type", "http"}, {"scheme", "bearer"}}},
      {"session", {{"type", "apiKey"}, {"in", "cookie"}, {"name", "bukorval"}}}};
  document["security"] = {{{"token", json::array()}}, {{"session", json::array()}}};
  return document.dump();
}

}  // namespace bukorval::host::server
