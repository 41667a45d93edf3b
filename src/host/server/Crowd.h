#pragma once

#include <atomic>
#include <cstddef>
#include <map>
#include <mutex>
#include <string>

namespace bukorval::host::server {

/// Everybody who is connected: how many are served and wait, and from where they came.
class Crowd {
 public:
  /// @param places  connections that are served at once.
  explicit Crowd(std::size_t places) : places_(places) {}

  /// A connection that waits for its place, then has it until the end of the guest.
  void wait() { ++waiting_; }
  class Place {
   public:
    explicit Place(Crowd& crowd) : crowd_(crowd) {
      --crowd_.waiting_;
      ++crowd_.served_;
    }
    ~Place() { --crowd_.served_; }
    Place(const Place&) = delete;
    Place& operator=(const Place&) = delete;

   private:
    Crowd& crowd_;
  };

  /// One of those that were let in from an address, as long as it lives.
  class Guest {
   public:
    Guest(Crowd& crowd, std::string address);
    ~Guest();
    Guest(const Guest&) = delete;
    Guest& operator=(const Guest&) = delete;

    /// Half of the places are all that one address may have; this machine, and what forwards to us on it, has them all.
    bool isTooMany() const { return tooMany_; }

   private:
    Crowd& crowd_;
    std::string address_;
    bool tooMany_ = false;
  };

  std::size_t waiting() const { return waiting_; }
  /// Whether somebody waits for a place that another one has.
  bool isFull() const { return waiting_ > 0 && served_ >= places_; }

  /// The server ends: who has nothing running leaves.
  void disperse() { ending_ = true; }
  bool isEnding() const { return ending_; }

 private:
  std::size_t places_;
  std::atomic<std::size_t> waiting_ = 0, served_ = 0;
  std::atomic<bool> ending_ = false;
  std::mutex mutex_;
  std::map<std::string, std::size_t> guests_;
};

}  // namespace bukorval::host::server
