#include "host/server/ServeCommand.h"

#include <pthread.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <csignal>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "host/Version.h"
#include "host/environment/Errors.h"
#include "host/environment/StandardStreams.h"
#include "host/environment/UserName.h"
#include "host/server/Desks.h"
#include "host/server/Gate.h"
#include "host/server/Jobs.h"
#include "host/server/Operations.h"
#include "host/server/Server.h"
#include "host/server/Site.h"
#include "host/server/Tls.h"
#include "language/Language.h"

namespace bukorval::host {
namespace {

constexpr const char* kLoopback = "127.0.0.1";
/// At the end: how often one looks, and how long is waited for commands that read, and for those that write.
constexpr auto kLook = std::chrono::milliseconds(50), kReading = std::chrono::milliseconds(700),
               kWriting = std::chrono::milliseconds(30000);

struct ServeOptions {
  std::string bind, passwordFile, certificate, key, clientCa, assets;
  std::vector<std::string> names;
  int port = 8765, workers = 4, patience = 10;
  bool readOnly = false;
};

bool isLoopback(const std::string& address) {
  return address == kLoopback || address == "::1" || address == "localhost";
}

/// Opens the database once, so that what is wrong with it is told now.
server::About aboutOf(Environment& environment) {
  auto& session = environment.session();
  return {userName(), session.RagioneSociale(), session.CodiceDitta(), session.SeparatoreDecimale(), versionText()};
}

/// Ends the server when the system says so, in a thread of its own: a signal's handler could do nothing safely.
class EndBySignal {
 public:
  /// @param stop      tells everybody to come to an end.
  /// @param isWriting  whether somebody may not be interrupted.
  EndBySignal(std::function<void()> stop, std::function<bool()> isWriting)
      : waiting_([this, stop = std::move(stop), isWriting = std::move(isWriting)](const std::stop_token& ended) {
          int signal = 0;
          sigwait(&signals_, &signal);
          stop();
          leaveAt(ended, isWriting);
        }) {}
  ~EndBySignal() { pthread_kill(waiting_.native_handle(), SIGINT); }
  EndBySignal(const EndBySignal&) = delete;
  EndBySignal& operator=(const EndBySignal&) = delete;

  /// In the first thread, before there is any other: they take it over.
  static void block() {
    const auto signals = ofEnd();
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
  }

 private:
  static sigset_t ofEnd() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGTERM);
    return signals;
  }

  /// Who only reads, and goes on reading, is left behind: nothing is lost with it. So is what writes for too long; the
  /// database takes back what it had begun.
  static void leaveAt(const std::stop_token& ended, const std::function<bool()>& isWriting) {
    using Clock = std::chrono::steady_clock;
    std::mutex mutex;
    std::unique_lock lock(mutex);
    std::condition_variable_any never;
    const auto begun = Clock::now();
    do {
      never.wait_for(lock, ended, kLook, [] { return false; });
      if (ended.stop_requested()) return;
    } while (Clock::now() < begun + kReading || (isWriting() && Clock::now() < begun + kWriting));
    std::_Exit(EXIT_SUCCESS);
  }

  sigset_t signals_ = ofEnd();
  std::jthread waiting_;
};

std::string addressOf(const std::string& bind, int port, bool encrypted, const std::string& token) {
  const bool sixth = bind.find(':') != std::string::npos;
  return (encrypted ? "https://" : "http://") + (sixth ? "[" + bind + "]" : bind) + ":" + std::to_string(port) +
         "/?token=" + token;
}

void serve(Environment& environment, const ServeOptions& options) {
  const auto bind = options.bind.empty() ? kLoopback : options.bind;
  const bool encrypted = !options.certificate.empty();
  if (encrypted == options.key.empty() || (!encrypted && !options.clientCa.empty()))
    throw UsageError(tr("--certificate and --key belong together, and --client-ca to both"));
  if (!isLoopback(bind) && options.passwordFile.empty() && options.clientCa.empty())
    throw UsageError(tr("--bind lets other machines in: give --password-file or --client-ca as well"));
  EndBySignal::block();
  server::Gate gate(options.passwordFile.empty() ? server::Accounts() : server::Accounts(options.passwordFile));
  const auto about = aboutOf(environment);
  const auto workers = static_cast<std::size_t>(options.workers);
  server::Desks desks(workers);
  server::Operations operations(environment.options, options.readOnly, desks);
  server::Jobs jobs(operations, std::max<std::size_t>(1, workers - 1));
  server::Site site(operations, jobs, gate, about, options.assets);
  const auto tls =
      encrypted ? std::make_unique<server::Tls>(options.certificate, options.key, options.clientCa) : nullptr;
  server::Server server([&](auto request) { return site.answer(std::move(request)); }, &server::Site::failure,
                        std::chrono::seconds(options.patience), tls.get());
  const int port = server.bind(bind, options.port);
  gate.setNames({bind, port, options.names, encrypted});
  const EndBySignal end(
      [&] {
        desks.close();
        jobs.stop();
        server.stop();
      },
      [&] { return operations.isWriting(); });
  std::cout << addressOf(bind, port, encrypted, gate.token()) << '\n';
  flushOutput();
  if (!isLoopback(bind) && !encrypted)
    environment.tell(
        tr("Nothing is encrypted: whoever is on the network can read all of it, passwords too. Give "
           "--certificate and --key, or put something in front that encrypts."));
  server.run();
  jobs.wait();
}

}  // namespace

Command serveCommand() {
  const auto options = std::make_shared<ServeOptions>();
  return {"serve",
          "Serve the budgets of a database to browsers",
          "  bukorval serve -d demo.db\n"
          "Prints the address to open; the key in it is made anew at every start. Ctrl-C ends it.\n"
          "Only this machine is served. With --bind others are, too, by their passwords in --password-file or their\n"
          "certificates. Encrypt with --certificate and --key, or put something in front that does, and name it with "
          "--name.",
          {{.flags = "--port",
            .help = "0 for any that is free",
            .target = &options->port,
            .showDefault = true,
            .range = {{0, 65535}}},
           {.flags = "--bind",
            .help = "address to listen on, instead of this machine alone",
            .target = &options->bind,
            .valueName = "ADDRESS"},
           {.flags = "--password-file",
            .help = "file with the users who may open a session, or one password for everybody",
            .target = &options->passwordFile,
            .valueName = "FILE"},
           {.flags = "--certificate",
            .help = "file with the certificate (PEM) to encrypt with, and --key",
            .target = &options->certificate,
            .valueName = "FILE"},
           {.flags = "--key", .help = "file with its key", .target = &options->key, .valueName = "FILE"},
           {.flags = "--client-ca",
            .help = "file with the authority whose certificates browsers must have",
            .target = &options->clientCa,
            .valueName = "FILE"},
           {.flags = "--name",
            .help = "a further name that browsers reach it by; again for more",
            .target = &options->names},
           {"--read-only", "offer nothing that writes", &options->readOnly},
           {.flags = "--workers",
            .help = "commands that run at once, each with a connection of its own",
            .target = &options->workers,
            .showDefault = true,
            .range = {{1, 64}}},
           {.flags = "--patience",
            .help = "seconds that a request may take to arrive",
            .target = &options->patience,
            .showDefault = true,
            .range = {{1, 600}}},
           {.flags = "--assets",
            .help = "folder to serve the page's files from, instead of those in the program",
            .target = &options->assets,
            .hidden = true}},
          [options](Environment& environment) { serve(environment, *options); }};
}

}  // namespace bukorval::host
