#include "host/server/Server.h"

#include <httplib.h>
#include <sys/socket.h>

#include <thread>
#include <utility>

#include "dati/Failure.h"
#include "host/server/Connection.h"
#include "host/server/Crowd.h"
#include "language/Language.h"

namespace bukorval::host::server {
namespace {

constexpr std::size_t kThreads = 96;  ///< a browser keeps several connections open, and each has one
constexpr int kMostKnocking = 512;
constexpr std::size_t kMostConnectionsWaiting = 128;  ///< the others are left to the system, and take up no descriptor
constexpr auto kKnock = std::chrono::milliseconds(5);
constexpr std::size_t kMostBodyBytes = 1 << 20;
constexpr std::size_t kLongestPath = 512;
constexpr int kMostRequests = 10000;  ///< on one connection

const httplib::Headers kHeaders{
    {"Content-Security-Policy",
     "default-src 'self'; img-src 'self' data:; style-src 'self'; script-src 'self'; frame-ancestors 'none'; "
     "base-uri 'none'; form-action 'self'"},
    {"X-Content-Type-Options", "nosniff"},
    {"X-Frame-Options", "DENY"},
    // Without a referrer to ourselves a browser would hide from us that the form for the password is ours.
    {"Referrer-Policy", "same-origin"},
    {"Cross-Origin-Resource-Policy", "same-origin"}};

Request requestOf(const httplib::Request& http) {
  Request request;
  request.method = http.method == "HEAD" ? "GET" : http.method;
  request.path = http.path;
  for (const auto& [name, value] : http.params) request.query.emplace(name, value);
  request.body = http.body;
  request.remote = http.remote_addr;
  request.header = [&http](const char* name) { return http.get_header_value(name); };
  return request;
}

void send(Reply reply, httplib::Response& http) {
  http.status = reply.status;
  for (const auto& [name, value] : reply.headers) http.set_header(name, value);
  if (reply.type.empty()) return;
  http.set_header("Content-Type", reply.type);
  http.body = std::move(reply.body);
}

/// An answer where the library gives none.
std::string textOf(const Reply& reply) {
  std::string text = "HTTP/1.1 " + std::to_string(reply.status) +
                     " \r\nConnection: close\r\nContent-Type: " + reply.type +
                     "\r\nContent-Length: " + std::to_string(reply.body.size()) + "\r\n";
  const auto add = [&](const std::string& name, const std::string& value) {
    text.append(name).append(": ").append(value).append("\r\n");
  };
  for (const auto& [name, value] : kHeaders) add(name, value);
  for (const auto& [name, value] : reply.headers) add(name, value);
  return text + "\r\n" + reply.body;
}

/// Threads that take the connections on, one after another.
class Queue final : public httplib::TaskQueue {
 public:
  explicit Queue(Crowd& crowd) : crowd_(crowd), threads_(kThreads) {}
  void enqueue(std::function<void()> serve) override {
    while (crowd_.waiting() >= kMostConnectionsWaiting && !crowd_.isEnding()) std::this_thread::sleep_for(kKnock);
    crowd_.wait();
    threads_.enqueue([this, serve = std::move(serve)] {
      const Crowd::Place place(crowd_);
      serve();
    });
  }
  void shutdown() override { threads_.shutdown(); }

 private:
  Crowd& crowd_;
  httplib::ThreadPool threads_;
};

/// Whether the library could not make out a request: then nobody knows where the next one begins.
thread_local bool unreadable = false;

/// What a request may not have: it would be read in two ways, or become larger than it looks.
int statusOfFlaw(const httplib::Request& request) {
  for (const char* const name : {"Content-Length", "Host", "Transfer-Encoding"})
    if (request.get_header_value_count(name) > 1) return 400;
  const auto length = request.get_header_value("Content-Length");
  if (length.find_first_not_of("0123456789") != std::string::npos) return 400;
  if (!length.empty() && request.has_header("Transfer-Encoding")) return 400;
  return request.has_header("Content-Encoding") ? 415 : 0;
}

}  // namespace

/// The library's server on connections of ours.
class Server::Listener final : public httplib::Server {
 public:
  Listener(std::chrono::seconds patience, const Tls* tls, std::function<Reply(int status)> failure)
      : patience_(patience), tls_(tls), failure_(std::move(failure)) {
    new_task_queue = [this] { return new Queue(crowd_); };
  }

  /// Who has nothing running leaves; who has is answered.
  void disperse() { crowd_.disperse(); }
  Reply failure(int status) const { return failure_(status); }

 private:
  bool process_and_close_socket(socket_t socket) override {
    Connection connection(socket, crowd_, patience_, tls_);
    const Crowd::Guest guest(crowd_, peerOf(socket));
    if (guest.isTooMany()) connection.refuse(503);
    bool last = guest.isTooMany();
    for (int left = kMostRequests; !last && connection.awaitRequest(); --left) last = !serveOne(connection, left == 1);
    if (connection.refused() != 0) connection.turnAway(textOf(failure_(connection.refused())));
    return true;
  }

  /// @return whether another request may follow.
  bool serveOne(Connection& connection, bool last) {
    bool closed = false, whole = false;
    unreadable = false;
    const bool answered = process_request(connection, last, closed, [&](httplib::Request& request) {
      // The library takes what is no further part of a body for its end, and so for another request.
      whole = !request.has_header("Transfer-Encoding");
      request.ranges.clear();  // parts of an answer are not served
      // Nothing is packed: on the way to the same machine that would cost more than it saves.
      request.headers.erase("Accept-Encoding");
      if (const int status = statusOfFlaw(request)) connection.refuse(status);
    });
    return answered && whole && !unreadable && !closed && !last;
  }

  Crowd crowd_{kThreads};
  std::chrono::seconds patience_;
  const Tls* tls_;
  std::function<Reply(int status)> failure_;
};

Server::Server(Answer answer, std::function<Reply(int status)> failure, std::chrono::seconds patience, const Tls* tls)
    : http_(std::make_unique<Listener>(patience, tls, std::move(failure))), answer_(std::move(answer)) {
  auto& http = *http_;
  http.set_default_headers(kHeaders);
  http.set_payload_max_length(kMostBodyBytes);
  http.set_tcp_nodelay(true);
  // No other program may listen on the same port beside this one.
  http.set_socket_options([this](socket_t socket) {
    listening_ = socket;
    const int yes = 1;
    ::setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
  });
  const auto answered = [this](const httplib::Request& request, httplib::Response& response) {
    send(answer_(requestOf(request)), response);
  };
  // Paths are looked up by the site; here they would be matched one expression after another, and a long one deeply.
  http.set_pre_routing_handler([answered](const httplib::Request& request, httplib::Response& response) {
    if (request.method == "GET" || request.method == "HEAD") {
      answered(request, response);
      return httplib::Server::HandlerResponse::Handled;
    }
    if (request.path.size() > kLongestPath) const_cast<httplib::Request&>(request).path = "/-";
    return httplib::Server::HandlerResponse::Unhandled;
  });
  http.Post(".*", answered);
  http.Delete(".*", answered);
  http.set_error_handler(
      httplib::Server::HandlerWithResponse([&http](const httplib::Request&, httplib::Response& response) {
        if (!response.body.empty()) return httplib::Server::HandlerResponse::Handled;
        unreadable = response.status != 404;
        send(http.failure(response.status), response);
        return httplib::Server::HandlerResponse::Handled;
      }));
}

Server::~Server() = default;

int Server::bind(const std::string& address, int port) {
  const int bound = port == 0 ? http_->bind_to_any_port(address) : http_->bind_to_port(address, port) ? port : -1;
  if (bound < 0)
    throw dati::Refused(tr("Cannot listen on {}, port {}: it is taken, or not of this machine", address, port));
  // The library has the system keep five who knock at the same moment, and turn away the others.
  ::listen(listening_, kMostKnocking);
  return bound;
}

void Server::run() { http_->listen_after_bind(); }

void Server::stop() {
  http_->disperse();
  http_->stop();
}

}  // namespace bukorval::host::server
