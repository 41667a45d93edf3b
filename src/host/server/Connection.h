#pragma once

#include <httplib.h>

#include <array>
#include <chrono>
#include <cstddef>
#include <optional>
#include <string>

#include "host/server/Crowd.h"
#include "host/server/Tls.h"

namespace bukorval::host::server {

/// A client's connection. The library that speaks HTTP bounds the time of each read and write; here a request has a
/// measure as a whole, in time and in bytes, and so has its answer.
class Connection final : public httplib::Stream {
 public:
  /// @param patience  that a request may take to arrive, from its first byte to its last.
  /// @param tls  null when nothing is encrypted.
  Connection(socket_t socket, const Crowd& crowd, std::chrono::milliseconds patience, const Tls* tls);
  /// Closes the socket.
  ~Connection() override;
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  /// Waits for the next request. @return false when there is none: the connection is to be closed.
  bool awaitRequest();
  /// From now on nothing is read or written: the request is to be answered with that status.
  void refuse(int status) { refused_ = status; }
  /// That status; 0 for a request that is none of it, or has its answer already.
  int refused() const { return written_ > 0 ? 0 : refused_; }
  /// Writes this all the same, and lets the client read it although it may still be sending.
  void turnAway(const std::string& answer);

  bool is_readable() const override { return refused_ == 0; }
  bool is_writable() const override { return refused_ == 0; }
  ssize_t read(char* to, std::size_t size) override;
  ssize_t write(const char* from, std::size_t size) override;
  void get_remote_ip_and_port(std::string& ip, int& port) const override;
  void get_local_ip_and_port(std::string& ip, int& port) const override;
  socket_t socket() const override { return socket_; }

 private:
  using Clock = std::chrono::steady_clock;
  enum class Stage { Idle, Arriving, Answering };

  bool await(short events, Clock::time_point until) const;
  ssize_t receive();
  ssize_t send(const char* from, std::size_t size);
  /// What to wait for after one of them had nothing to do.
  short wanted(short events) const { return tls_ ? tls_->wanted() : events; }
  bool isInTheWay() const;
  bool fill();

  socket_t socket_;
  const Crowd& crowd_;
  std::optional<Tls::Session> tls_;
  std::chrono::milliseconds patience_;
  std::array<char, 16384> buffer_{};
  std::size_t at_ = 0, filled_ = 0;      ///< of the buffer
  std::size_t taken_ = 0, inLines_ = 0;  ///< bytes of this request
  std::size_t written_ = 0;              ///< bytes of its answer
  Stage stage_ = Stage::Arriving;        ///< also of a newcomer that has said nothing yet
  Clock::time_point begun_ = Clock::now(), deadline_;
  int refused_ = 0;
};

/// Address of the other end; "" when it is gone.
std::string peerOf(socket_t socket);

}  // namespace bukorval::host::server
