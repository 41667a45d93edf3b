#include "host/server/Jobs.h"

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <utility>

#include "dati/Failure.h"
#include "host/server/JsonText.h"
#include "host/server/Secrets.h"
#include "language/Language.h"

namespace bukorval::host::server {
namespace {

constexpr std::size_t kMostKept = 50;

Reply unknown() { return failed(404, "notFound", tr("There is no such job")); }

}  // namespace

/// One command in a thread of its own.
class Jobs::Job : public Watcher {
 public:
  Job(Operations& operations, std::string command, std::string body, std::string user)
      : thread_([this, &operations, command = std::move(command), body = std::move(body), user = std::move(user)] {
          finish(operations.run(command, body, user, this));
        }) {}
  ~Job() override { end_ = true; }

  void begin(std::string_view description, std::int64_t steps) override {
    const std::lock_guard lock(mutex_);
    description_ = description;
    steps_ = std::max<std::int64_t>(steps, 0);
    done_ = 0;
  }
  void step(std::int64_t done) override {
    if (end_) throw dati::Refused("");
    const std::lock_guard lock(mutex_);
    done_ = done;
  }
  void end() override {
    const std::lock_guard lock(mutex_);
    done_ = steps_;
  }

  bool ended() const override { return end_; }

  void stop() { end_ = true; }
  void wait() const {
    std::unique_lock lock(mutex_);
    hasFinished_.wait(lock, [this] { return finished_; });
  }
  bool isDone() const {
    const std::lock_guard lock(mutex_);
    return finished_;
  }

  std::string text(const std::string& id, bool withReply = true) const {
    const std::lock_guard lock(mutex_);
    const bool good = reply_.status == 200;
    std::string out = R"({"id":)" + quotedText(id) + R"(,"state":")" +
                      (!finished_ ? "running"
                       : good     ? "done"
                                  : "failed") +
                      R"(","progress":)";
    if (description_.empty())
      out += "null";
    else
      out.append(R"({"description":)")
          .append(quotedText(description_))
          .append(R"(,"steps":)")
          .append(std::to_string(steps_) + R"(,"done":)" + std::to_string(done_) + "}");
    if (!finished_ || !withReply) return out + "}";
    // A failure is an object of its own already, {"error": {…}}.
    const auto& body = reply_.body;
    return out + (good ? R"(,"result":)" + body : "," + body.substr(1, body.size() - 2)) + "}";
  }

 private:
  void finish(Reply reply) {
    const std::lock_guard lock(mutex_);
    reply_ = std::move(reply);
    finished_ = true;
    hasFinished_.notify_all();
  }

  mutable std::mutex mutex_;
  mutable std::condition_variable hasFinished_;
  std::string description_;
  std::int64_t steps_ = 0, done_ = 0;
  std::atomic<bool> end_ = false;
  bool finished_ = false;
  Reply reply_;
  std::jthread thread_;  ///< last: it ends before what it works with
};

Jobs::~Jobs() {
  stop();
  wait();
}

void Jobs::stop() {
  const std::lock_guard lock(mutex_);
  for (const auto& [id, job] : jobs_) job->stop();
}

void Jobs::wait() {
  decltype(jobs_) running;
  {
    const std::lock_guard lock(mutex_);
    running.swap(jobs_);
  }
}

Reply Jobs::start(std::string_view command, const std::string& body, const std::string& user) {
  const std::lock_guard lock(mutex_);
  const auto running = std::ranges::count_if(jobs_, [](const auto& job) { return !job.second->isDone(); });
  if (static_cast<std::size_t>(running) >= atOnce_)
    return failed(503, "busy", tr("As many jobs are running as this server takes: try again when one has ended"));
  forgetOldest();
  auto id = secret();
  jobs_[id] = std::make_shared<Job>(operations_, std::string(command), body, user);
  order_.push_back(id);
  return jsonReply(202, R"({"id":)" + quotedText(id) + "}");
}

void Jobs::forgetOldest() {
  std::erase_if(order_, [&](const std::string& id) { return !jobs_.contains(id); });
  for (auto id = order_.begin(); jobs_.size() >= kMostKept && id != order_.end(); ++id)
    if (jobs_[*id]->isDone()) jobs_.erase(*id);
}

std::shared_ptr<Jobs::Job> Jobs::find(const std::string& id) {
  const std::lock_guard lock(mutex_);
  const auto found = jobs_.find(id);
  return found == jobs_.end() ? nullptr : found->second;
}

Reply Jobs::look(const std::string& id) {
  const auto job = find(id);
  return job ? jsonReply(200, job->text(id)) : unknown();
}

Reply Jobs::forget(const std::string& id) {
  const auto job = find(id);
  if (!job) return unknown();
  const bool runs = !job->isDone();
  job->stop();
  job->wait();
  const std::lock_guard lock(mutex_);
  jobs_.erase(id);
  return jsonReply(200, job->text(id, runs));
}

}  // namespace bukorval::host::server
