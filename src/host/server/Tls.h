#pragma once

#include <sys/types.h>

#include <cstddef>
#include <memory>
#include <string>

struct ssl_ctx_st;
struct ssl_st;

namespace bukorval::host::server {

/// What a server shows of itself, and asks of who comes, before anything is said.
class Tls {
 public:
  /// Files in PEM. @param clientCa  who comes must have a certificate of this authority; "" when none is asked for.
  /// Throws dati::Refused for what is no such file, or no pair.
  Tls(const std::string& certificate, const std::string& key, const std::string& clientCa);

  /// The encrypted side of one connection, on a socket that does not block.
  class Session {
   public:
    Session(const Tls& tls, int socket);

    /// As recv() and send() do, -1 with EAGAIN among it: then wanted() says what to wait for.
    ssize_t receive(char* to, std::size_t size);
    ssize_t send(const char* from, std::size_t size);
    short wanted() const { return wanted_; }
    /// Whether both have greeted each other.
    bool isOpen() const;
    void goodbye();

   private:
    ssize_t outcome(int result);

    std::unique_ptr<ssl_st, void (*)(ssl_st*)> ssl_;
    short wanted_ = 0;
  };

 private:
  std::unique_ptr<ssl_ctx_st, void (*)(ssl_ctx_st*)> context_;
};

}  // namespace bukorval::host::server
