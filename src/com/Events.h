#pragma once

#include <map>
#include <vector>

#include "com/Com.h"

namespace com {

class EventPoint;

/// The object that raises the events, as its connection point knows it: whoever holds a point holds it too.
class EventSource : public IConnectionPointContainer {
 public:
  EventSource();
  EventSource(const EventSource&) = delete;
  EventSource& operator=(const EventSource&) = delete;

  STDMETHODIMP EnumConnectionPoints(IEnumConnectionPoints** points) override;
  STDMETHODIMP FindConnectionPoint(REFIID id, IConnectionPoint** point) override;

 protected:
  ~EventSource();
  /// Raises an event at every sink, whatever the other ones do with it. One that comes meanwhile hears the next event,
  /// one that goes hears nothing more.
  /// @param arguments  in order; what a sink changes of them reaches the next one, as with any arguments by reference.
  void raise(DISPID event, std::vector<VARIANT*> arguments);

 private:
  EventPoint* point_;
};

/// The interface that sinks implement, and its events.
extern const IID kEventsInterface;
enum EventId : DISPID { kBeginProcess = 1, kStepProcess = 2, kEndProcess = 3 };

}  // namespace com
