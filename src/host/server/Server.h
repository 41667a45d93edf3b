#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>

#include "host/server/Http.h"

/// The one room that speaks HTTP.
namespace bukorval::host::server {

class Tls;

class Server {
 public:
  using Answer = std::function<Reply(Request)>;
  /// @param failure   what is said where there is no request to answer.
  /// @param patience  for a request to arrive as a whole.
  /// @param tls       null when nothing is encrypted.
  Server(Answer answer, std::function<Reply(int status)> failure, std::chrono::seconds patience, const Tls* tls);
  ~Server();
  Server(const Server&) = delete;
  Server& operator=(const Server&) = delete;

  /// @param port  0 for any that is free. @return the port. Throws dati::Refused when it cannot be had.
  int bind(const std::string& address, int port);
  /// Serves until stop() is called, from whatever thread; what was begun then is answered.
  void run();
  void stop();

 private:
  class Listener;

  std::unique_ptr<Listener> http_;
  Answer answer_;
  int listening_ = -1;
};

}  // namespace bukorval::host::server
