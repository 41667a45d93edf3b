#include "host/server/Connection.h"

#include <fcntl.h>
#include <netdb.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstring>

namespace bukorval::host::server {
namespace {

using namespace std::chrono_literals;

constexpr std::size_t kMostInLines = 64 << 10;  ///< the first line, the headers, and the lines between parts of a body
constexpr std::size_t kMostRequestBytes = (1 << 20) + kMostInLines;
constexpr auto kIdle = 5s;     ///< between two requests
constexpr auto kGrace = 1s;    ///< to arrive, or to be taken, while others wait for a place or the server ends
constexpr auto kAnswer = 20s;  ///< to take an answer, and a second more for each of these
constexpr std::size_t kPace = 64 << 10;
constexpr auto kFarewell = 1s;  ///< to read that one was turned away
constexpr auto kSlice = 100ms;  ///< how often who waits looks around

struct Endpoint {
  std::string address;
  int port = 0;
};

Endpoint endpointOf(socket_t socket, int (*name)(int, sockaddr*, socklen_t*)) {
  sockaddr_storage storage{};
  socklen_t size = sizeof storage;
  auto* const where = reinterpret_cast<sockaddr*>(&storage);
  std::array<char, NI_MAXHOST> address{};
  std::array<char, NI_MAXSERV> service{};
  if (name(socket, where, &size) != 0 || getnameinfo(where, size, address.data(), address.size(), service.data(),
                                                     service.size(), NI_NUMERICHOST | NI_NUMERICSERV) != 0)
    return {};
  Endpoint endpoint{address.data(), 0};
  std::from_chars(service.data(), service.data() + std::strlen(service.data()), endpoint.port);
  return endpoint;
}

bool isPassing(int error) { return error == EAGAIN || error == EWOULDBLOCK || error == EINTR; }

}  // namespace

std::string peerOf(socket_t socket) { return endpointOf(socket, ::getpeername).address; }

Connection::Connection(socket_t socket, const Crowd& crowd, std::chrono::milliseconds patience, const Tls* tls)
    : socket_(socket), crowd_(crowd), patience_(patience) {
  ::fcntl(socket_, F_SETFL, ::fcntl(socket_, F_GETFL) | O_NONBLOCK);
  if (tls) tls_.emplace(*tls, socket_);
}

Connection::~Connection() {
  if (tls_) tls_->goodbye();
  ::shutdown(socket_, SHUT_RDWR);
  ::close(socket_);
}

ssize_t Connection::receive() {
  return tls_ ? tls_->receive(buffer_.data(), buffer_.size()) : ::recv(socket_, buffer_.data(), buffer_.size(), 0);
}

ssize_t Connection::send(const char* from, std::size_t size) {
  return tls_ ? tls_->send(from, size) : ::send(socket_, from, size, MSG_NOSIGNAL);
}

bool Connection::isInTheWay() const {
  const bool wanted = crowd_.isEnding() || (stage_ != Stage::Answering && crowd_.isFull());
  return wanted && (stage_ == Stage::Idle || Clock::now() - begun_ > kGrace);
}

/// Until something may be read or written, or the time is over, or others need the place.
bool Connection::await(short events, Clock::time_point until) const {
  for (;;) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(until - Clock::now());
    pollfd waiting{socket_, events, 0};
    const int ready = ::poll(&waiting, 1, static_cast<int>(std::clamp(left, 0ms, kSlice).count()));
    if (ready > 0) return true;
    if ((ready < 0 && errno != EINTR) || left <= 0ms || isInTheWay()) return false;
  }
}

bool Connection::awaitRequest() {
  begun_ = Clock::now();
  const bool there = at_ < filled_ || await(POLLIN, begun_ + kIdle);
  stage_ = Stage::Arriving;
  begun_ = Clock::now();
  deadline_ = begun_ + patience_;
  taken_ = inLines_ = written_ = 0;
  return there && !crowd_.isEnding();
}

bool Connection::fill() {
  if (stage_ == Stage::Answering) {  // that it may go on was the answer to its headers
    stage_ = Stage::Arriving;
    written_ = 0;
  }
  for (;;) {
    const auto count = Clock::now() <= deadline_ ? receive() : -1;
    if (count < 0 && (Clock::now() > deadline_ || (isPassing(errno) && !await(wanted(POLLIN), deadline_)))) {
      refuse(isInTheWay() ? 503 : 408);
      return false;
    }
    if (count < 0 && isPassing(errno)) continue;
    at_ = 0;
    filled_ = static_cast<std::size_t>(std::max<ssize_t>(count, 0));
    taken_ += filled_;
    if (taken_ > kMostRequestBytes) refuse(413);
    return filled_ > 0 && refused_ == 0;
  }
}

ssize_t Connection::read(char* to, std::size_t size) {
  // The library takes lines byte by byte.
  if (size == 1 && ++inLines_ > kMostInLines) refuse(431);
  if (refused_ != 0 || (at_ == filled_ && !fill())) return -1;
  const auto count = std::min(size, filled_ - at_);
  std::memcpy(to, buffer_.data() + at_, count);
  at_ += count;
  return static_cast<ssize_t>(count);
}

ssize_t Connection::write(const char* from, std::size_t size) {
  if (refused_ != 0) return -1;
  if (stage_ != Stage::Answering) begun_ = Clock::now();
  stage_ = Stage::Answering;
  for (std::size_t done = 0; done < size;) {
    const auto until = begun_ + kAnswer + std::chrono::seconds(written_ / kPace);
    const auto count = send(from + done, size - done);
    if (count < 0 && (!isPassing(errno) || Clock::now() > until || !await(wanted(POLLOUT), until))) {
      refuse(408);
      return -1;
    }
    if (count < 0) continue;
    done += static_cast<std::size_t>(count);
    written_ += static_cast<std::size_t>(count);
  }
  return static_cast<ssize_t>(size);
}

void Connection::turnAway(const std::string& answer) {
  refused_ = 0;
  if (tls_ && !tls_->isOpen()) return;
  if (write(answer.data(), answer.size()) < 0) return;
  if (tls_) tls_->goodbye();
  ::shutdown(socket_, SHUT_WR);
  stage_ = Stage::Idle;
  const auto until = Clock::now() + kFarewell;
  while (Clock::now() < until && await(POLLIN, until) && ::recv(socket_, buffer_.data(), buffer_.size(), 0) > 0) {
  }
}

void Connection::get_remote_ip_and_port(std::string& ip, int& port) const {
  auto endpoint = endpointOf(socket_, ::getpeername);
  ip = std::move(endpoint.address);
  port = endpoint.port;
}

void Connection::get_local_ip_and_port(std::string& ip, int& port) const {
  auto endpoint = endpointOf(socket_, ::getsockname);
  ip = std::move(endpoint.address);
  port = endpoint.port;
}

}  // namespace bukorval::host::server
