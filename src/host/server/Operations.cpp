#include "host/server/Operations.h"

#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <iostream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <thread>

#include "host/SharedOptions.h"
#include "host/commands/Commands.h"
#include "host/environment/Errors.h"
#include "host/environment/Outcome.h"
#include "host/output/SafeText.h"
#include "host/server/JsonText.h"
#include "host/server/OptionValues.h"
#include "language/Language.h"

namespace bukorval::host::server {
namespace {

using nlohmann::json;

/// A command that may be run from afar, and those of its options that may not be given.
struct Allowed {
  std::string_view command;
  bool writes = false;
  std::array<std::string_view, 2> withheld = {};
  std::array<std::string_view, 5> writing = {};  ///< of a command that also shows: they write
};
constexpr Allowed kAllowed[] = {
    {"budgets"},
    {"years", false, {}, {"ACTION", "YEAR", "from", "months", "progressive"}},
    {"batches", false, {"remove", "yes"}},
    {"list"},
    {"grid"},
    {"periods"},
    {"report", false, {"html", "plot"}},
    {"card"},
    {"movements"},
    {"compare"},
    {"history"},
    {"check"},
    {"set", true},
    {"spread", true},
    {"raise", true},
    {"clear", true},
    {"new", true},
    {"delete", true},
    {"align", true},
    {"elaborate-cards", true},
    {"elaborate-balances", true, {"percent-file"}},
    {"duplicate", true},
    {"lock", true},
    {"unlock", true},
    {"undo", true},
};

/// Of the options that every command has, the others are about this machine.
constexpr std::string_view kWithheld[] = {"database", "connection", "wait",     "format", "all",
                                          "wide",     "lang",       "no-pager", "force",  "no-history"};

/// An option whose text is a file's name when it ends so; files of this machine are nobody's from afar.
constexpr std::string_view kMayBeFile = "like", kFile = ".csv";

constexpr std::size_t kDeepest = 6;

/// Somebody at the same moment is met so often, and waited for so long.
constexpr int kMostTries = 5;
constexpr auto kPause = std::chrono::milliseconds(20);

/// A drawing opened by itself has its style with it, and nothing else.
const std::pair<std::string, std::string> kDrawingPolicy{"Content-Security-Policy",
                                                         "default-src 'none'; style-src 'unsafe-inline'; sandbox"};

std::string refuseFile(const std::string& text) {
  return text.ends_with(kFile) ? tr("{} is no file that can be named from here", text) : "";
}

bool isWithheld(const Allowed& allowed, const Option& option, bool readOnly) {
  const auto isOneOf = [name = plainNames(option).back()](const auto& names) {
    return std::ranges::find(names, name) != std::end(names);
  };
  return isOneOf(kWithheld) || isOneOf(allowed.withheld) || (readOnly && isOneOf(allowed.writing));
}

const Allowed* findAllowed(std::string_view command) {
  const auto* const found = std::ranges::find(kAllowed, command, &Allowed::command);
  return found == std::end(kAllowed) ? nullptr : found;
}

/// How a failure is told.
struct Told {
  OutcomeKind kind;
  int status;
  std::string_view name;
};
constexpr Told kTold[] = {{OutcomeKind::Usage, 400, "usage"},         {OutcomeKind::Refused, 422, "refused"},
                          {OutcomeKind::Unanswered, 422, "question"}, {OutcomeKind::Overtaken, 409, "conflict"},
                          {OutcomeKind::Busy, 503, "busy"},           {OutcomeKind::Repeatable, 503, "busy"},
                          {OutcomeKind::Failed, 500, "failed"}};

/// What a run-time error says is for who looks after the server. @return its number in the log.
int logged(const std::string& message) {
  static std::atomic<int> count{0};
  const int number = ++count;
  std::cerr << "bukorval: " + tr("error {}", number) + ": " + safeText(message) + "\n";
  return number;
}

std::string told(const Outcome& outcome) {
  if (outcome.kind != OutcomeKind::Failed) return outcome.message;
  return tr("Something went wrong here; the server's log has it under number {}", logged(outcome.message));
}

/// A connection to work with. A database that is away for a while is no fault of the request.
ado::ConnectionPtr connected(Environment& environment) {
  try {
    return environment.connection();
  } catch (...) {
    const auto outcome = currentOutcome();
    if (outcome.kind != OutcomeKind::Failed) throw;
    throw Crowded(
        tr("The database cannot be reached; the server's log says why under number {}", logged(outcome.message)));
  }
}

bool answers(ado::Connection& connection) {
  try {
    connection.Execute(" SELECT 1 AS UNO ");
    return true;
  } catch (const std::exception&) {
    return false;
  }
}

/// Counts what runs as long as it does.
class Counted {
 public:
  explicit Counted(std::atomic<int>* count) : count_(count) {
    if (count_) ++*count_;
  }
  ~Counted() {
    if (count_) --*count_;
  }
  Counted(const Counted&) = delete;
  Counted& operator=(const Counted&) = delete;

 private:
  std::atomic<int>* count_;
};

const json& member(const json& body, const char* name, const json& otherwise) {
  const auto found = body.find(name);
  return found == body.end() ? otherwise : *found;
}

void refuseOthers(const json& body, std::initializer_list<std::string_view> known) {
  for (const auto& [name, value] : body.items())
    if (std::ranges::find(known, name) == known.end()) throw UsageError(tr("Unknown option: {}", name));
}

}  // namespace

Reply failed(int status, std::string_view kind, std::string_view message) {
  return jsonReply(status, Collector().failure(kind, message));
}

json parsedBody(const std::string& body) {
  bool tooDeep = false;
  json parsed;
  try {
    parsed = json::parse(body, [&](int depth, json::parse_event_t, json&) {
      tooDeep = tooDeep || depth > static_cast<int>(kDeepest);
      return !tooDeep;
    });
  } catch (const json::exception&) {
    throw UsageError(tr("The request is no JSON"));
  }
  if (tooDeep || !parsed.is_object()) throw UsageError(tr("The request is no JSON object as this server knows them"));
  return parsed;
}

std::vector<std::string_view> Operations::offered() const {
  std::vector<std::string_view> names;
  for (const auto& allowed : kAllowed)
    if (!readOnly_ || !allowed.writes) names.push_back(allowed.command);
  return names;
}

bool Operations::writes(std::string_view command) const {
  const auto* const allowed = findAllowed(command);
  return allowed && allowed->writes;
}

bool Operations::isOffered(std::string_view command) const {
  const auto* const allowed = findAllowed(command);
  return allowed && !(readOnly_ && allowed->writes);
}

Bound Operations::bind(std::string_view command) const {
  Bound bound{std::make_unique<Environment>(), {}, {}};
  bound.environment->options = shared_;
  auto all = commands();
  bound.command = std::move(*std::ranges::find(all, command, &Command::name));
  const auto& allowed = *findAllowed(command);
  for (auto& option : commandOptions(bound.command, bound.environment->options)) {
    if (isWithheld(allowed, option, readOnly_)) continue;
    if (plainNames(option).back() == kMayBeFile) option.check = refuseFile;
    bound.options.push_back(std::move(option));
  }
  return bound;
}

Reply Operations::attempt(const Work& work, Watcher* watcher) {
  for (int tried = 1;; ++tried) {
    Collector collector(watcher);
    try {
      return work(collector);
    } catch (const Crowded& e) {
      return jsonReply(503, collector.failure("busy", e.what()));
    } catch (...) {
      const auto outcome = currentOutcome();
      if (watcher && watcher->ended())
        return jsonReply(422, collector.failure("refused", tr("Ended from outside: nothing was written")));
      if (outcome.kind == OutcomeKind::Repeatable && tried < kMostTries) {
        std::this_thread::sleep_for(kPause * tried);
        continue;
      }
      const auto& how = *std::ranges::find(kTold, outcome.kind, &Told::kind);
      return jsonReply(how.status, collector.failure(how.name, told(outcome)));
    }
  }
}

/// A connection keeps to its file, though it be removed: what is written there would be lost with it.
void Operations::followFile() {
  if (!shared_.connectionString.empty() || shared_.database.empty()) return;
  struct stat there {};
  const bool isThere = ::stat(shared_.database.c_str(), &there) == 0;
  const auto file = isThere ? std::to_string(there.st_dev) + ":" + std::to_string(there.st_ino) : "";
  {
    const std::lock_guard lock(fileMutex_);
    if (file != file_ && !file_.empty()) {
      desks_.renew();
      commits_.renew();
    }
    if (isThere) file_ = file;
  }
  if (!isThere) throw dati::Refused(tr("The database is not where it was any more"));
}

void Operations::runBound(Bound& bound, Collector& collector, const std::function<void(Environment&)>& work) {
  followFile();
  auto lease = desks_.take();
  const Counted writing(writes(bound.command.name) ? &writing_ : nullptr);
  // The database may have ended the connection while nobody used it.
  if (lease.connection() && !answers(*lease.connection())) lease.connection() = nullptr;
  // The object lets go of the connection before the next one gets it.
  const auto environment = std::move(bound.environment);
  environment->redirect(collector);
  if (lease.connection()) environment->useConnection(lease.connection());
  lease.connection() = connected(*environment);
  // What has failed may be the connection itself: the next command gets another one.
  try {
    work(*environment);
  } catch (...) {
    if (currentOutcome().kind == OutcomeKind::Failed) lease.connection() = nullptr;
    throw;
  }
}

Reply Operations::run(std::string_view command, const std::string& text, const std::string& user, Watcher* watcher) {
  return attempt(
      [&](Collector& collector) {
        const auto body = parsedBody(text);
        refuseOthers(body, {"options", "forPeople"});
        auto bound = bind(command);
        auto& options = bound.environment->options;
        options.commandText = take(member(body, "options", json::object()), command, bound.options);
        options.user = user;
        options.format = member(body, "forPeople", false) == true ? "table" : "json";
        runBound(bound, collector, bound.command.run);
        return jsonReply(200, collector.answer());
      },
      watcher);
}

Reply Operations::picture(const json& body) {
  return attempt([&](Collector& collector) {
    refuseOthers(body, {"options", "chart"});
    auto bound = bind("report");
    auto& shared = bound.environment->options;
    take(member(body, "options", json::object()), "report", bound.options);
    shared.format = "table";
    for (const auto& option : bound.command.options)
      if (option.flags == "--plot") *std::get<bool*>(option.target) = true;
    runBound(bound, collector, bound.command.run);
    const auto chart = member(body, "chart", "trend");
    const auto& pictures = collector.pictures();
    const auto found = chart.is_string() ? pictures.find(chart.get<std::string>()) : pictures.end();
    if (found == pictures.end())
      throw UsageError(tr("{}: {} not in {}", "chart", chart.dump(), "{trend,trend-narrow,deltas,deltas-narrow}"));
    return Reply{200, "image/svg+xml", found->second, {{"Cache-Control", "no-store"}, kDrawingPolicy}};
  });
}

Reply Operations::with(const std::function<std::string(Environment&)>& work, const json& options,
                       std::string_view like) {
  return attempt([&](Collector& collector) {
    auto bound = bind(like);
    take(options, like, bound.options);
    std::string answer;
    runBound(bound, collector, [&](Environment& environment) { answer = work(environment); });
    return jsonReply(200, answer);
  });
}

}  // namespace bukorval::host::server
