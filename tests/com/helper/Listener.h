#pragma once

#include <functional>

#include "com/TableObject.h"

namespace com_helper {

/// Listens to the events of an object for a script, and keeps what it heard: "begin TEXT STEPS", "step N", "end".
class Listener : public com::TableObject<Listener> {
 public:
  ~Listener() override = default;
  static std::span<const com::Entry<Listener>> entries();

  void listen(IDispatch* object);
  void stop();
  const std::string& heard() const { return heard_; }
  /// Called with each event after it was kept; its outcome is the sink's.
  std::function<HRESULT(const std::string& event)> answer;

 private:
  friend class ListenerSink;
  com::Ref<IConnectionPoint> point_;
  DWORD cookie_ = 0;
  std::string heard_;
};

}  // namespace com_helper
