#include "host/server/Tls.h"

#include <openssl/err.h>
#include <openssl/ssl.h>
#include <poll.h>

#include <algorithm>
#include <cerrno>
#include <climits>

#include "dati/Failure.h"
#include "language/Language.h"

namespace bukorval::host::server {
namespace {

void require(long done, const std::string& problem) {
  ERR_clear_error();
  if (done != 1) throw dati::Refused(problem);
}

int length(std::size_t size) { return static_cast<int>(std::min<std::size_t>(size, INT_MAX)); }

}  // namespace

Tls::Tls(const std::string& certificate, const std::string& key, const std::string& clientCa)
    : context_(SSL_CTX_new(TLS_server_method()), SSL_CTX_free) {
  auto* const context = context_.get();
  require(SSL_CTX_set_min_proto_version(context, TLS1_2_VERSION), "TLS 1.2");
  SSL_CTX_set_mode(context, SSL_MODE_ENABLE_PARTIAL_WRITE | SSL_MODE_ACCEPT_MOVING_WRITE_BUFFER);
  SSL_CTX_set_options(context, SSL_OP_NO_RENEGOTIATION | SSL_OP_CIPHER_SERVER_PREFERENCE);
  SSL_CTX_set_session_cache_mode(context, SSL_SESS_CACHE_OFF);
  require(SSL_CTX_use_certificate_chain_file(context, certificate.c_str()), tr("{} holds no certificate", certificate));
  require(SSL_CTX_use_PrivateKey_file(context, key.c_str(), SSL_FILETYPE_PEM),
          tr("{} holds no key, or not that of the certificate", key));
  require(SSL_CTX_check_private_key(context), tr("{} holds no key, or not that of the certificate", key));
  if (clientCa.empty()) return;
  require(SSL_CTX_load_verify_locations(context, clientCa.c_str(), nullptr), tr("{} holds no certificate", clientCa));
  SSL_CTX_set_client_CA_list(context, SSL_load_client_CA_file(clientCa.c_str()));
  SSL_CTX_set_verify(context, SSL_VERIFY_PEER | SSL_VERIFY_FAIL_IF_NO_PEER_CERT, nullptr);
}

Tls::Session::Session(const Tls& tls, int socket) : ssl_(SSL_new(tls.context_.get()), SSL_free) {
  if (!ssl_ || SSL_set_fd(ssl_.get(), socket) != 1) throw dati::Refused("TLS");
  SSL_set_accept_state(ssl_.get());
}

ssize_t Tls::Session::outcome(int result) {
  if (result > 0) return result;
  const int error = SSL_get_error(ssl_.get(), result);
  wanted_ = error == SSL_ERROR_WANT_WRITE ? POLLOUT : POLLIN;
  errno = error == SSL_ERROR_WANT_WRITE || error == SSL_ERROR_WANT_READ ? EAGAIN : ECONNRESET;
  return error == SSL_ERROR_ZERO_RETURN ? 0 : -1;
}

ssize_t Tls::Session::receive(char* to, std::size_t size) {
  ERR_clear_error();
  return outcome(SSL_read(ssl_.get(), to, length(size)));
}

ssize_t Tls::Session::send(const char* from, std::size_t size) {
  ERR_clear_error();
  return outcome(SSL_write(ssl_.get(), from, length(size)));
}

bool Tls::Session::isOpen() const { return SSL_is_init_finished(ssl_.get()) == 1; }

void Tls::Session::goodbye() {
  ERR_clear_error();
  if (isOpen()) SSL_shutdown(ssl_.get());
}

}  // namespace bukorval::host::server
