#pragma once

#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <stdexcept>
#include <vector>

#include "ado/connection/Connection.h"

namespace bukorval::host::server {

/// Nobody could take the work on in time.
struct Crowded : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// As many connections as commands run at once; each serves one command at a time.
class Desks {
 public:
  explicit Desks(std::size_t count) : free_(count) {}

  /// A connection for one command, given back at its end.
  class Lease {
   public:
    Lease(Desks& desks, ado::ConnectionPtr connection, int generation)
        : desks_(desks), connection_(std::move(connection)), generation_(generation) {}
    ~Lease() { desks_.giveBack(std::move(connection_), generation_); }
    Lease(const Lease&) = delete;
    Lease& operator=(const Lease&) = delete;

    /// Nothing yet when it has to be opened.
    ado::ConnectionPtr& connection() { return connection_; }

   private:
    Desks& desks_;
    ado::ConnectionPtr connection_;
    int generation_;
  };

  /// Waits its turn. Throws Crowded when too many wait already, or for too long.
  Lease take();
  /// Everybody gets a new connection from now on.
  void renew();
  /// From now on nobody is given any.
  void close();

 private:
  void giveBack(ado::ConnectionPtr connection, int generation);

  std::mutex mutex_;
  std::condition_variable given_;
  std::vector<ado::ConnectionPtr> free_;  ///< the last one given back is the next one used
  std::size_t waiting_ = 0;
  int generation_ = 0;
  bool closed_ = false;
};

}  // namespace bukorval::host::server
