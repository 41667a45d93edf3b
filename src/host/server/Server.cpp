#include "host/server/Server.h"

#include <httplib.h>

#include <utility>

#include "dati/Failure.h"
#include "language/Language.h"

namespace bukorval::host::server {
namespace {

constexpr std::size_t kThreads = 96;  ///< a browser keeps several connections open, and each has one
constexpr int kMostKnocking = 512;
constexpr std::size_t kMostBytes = 1 << 20;
constexpr std::size_t kLongestPath = 512;
constexpr int kKeptSeconds = 5, kReadSeconds = 10, kWriteSeconds = 20;

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
  // From a provider, so that nothing is packed: on the way to the same machine that would cost more than it saves.
  const auto body = std::make_shared<std::string>(std::move(reply.body));
  http.set_content_provider(body->size(), reply.type,
                            [body](std::size_t from, std::size_t length, httplib::DataSink& sink) {
                              return sink.write(body->data() + from, length);
                            });
}

}  // namespace

Server::Server(Answer answer, std::function<Reply(int status)> failure)
    : http_(std::make_unique<httplib::Server>()), answer_(std::move(answer)) {
  auto& http = *http_;
  http.new_task_queue = [] { return new httplib::ThreadPool(kThreads); };
  http.set_default_headers(kHeaders);
  http.set_payload_max_length(kMostBytes);
  http.set_keep_alive_timeout(kKeptSeconds);
  http.set_keep_alive_max_count(10000);
  http.set_read_timeout(kReadSeconds);
  http.set_write_timeout(kWriteSeconds);
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
  // Parts of an answer are not served.
  http.set_pre_routing_handler([answered](const httplib::Request& request, httplib::Response& response) {
    auto& changed = const_cast<httplib::Request&>(request);
    changed.ranges.clear();
    if (request.method == "GET" || request.method == "HEAD") {
      answered(request, response);
      return httplib::Server::HandlerResponse::Handled;
    }
    if (request.path.size() > kLongestPath) changed.path = "/-";
    return httplib::Server::HandlerResponse::Unhandled;
  });
  http.Post(".*", answered);
  http.Delete(".*", answered);
  http.set_error_handler(httplib::Server::HandlerWithResponse(
      [failure = std::move(failure)](const httplib::Request&, httplib::Response& response) {
        if (response.body.empty() && response.content_length_ == 0) send(failure(response.status), response);
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

void Server::stop() { http_->stop(); }

}  // namespace bukorval::host::server
