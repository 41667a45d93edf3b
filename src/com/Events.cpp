#include "com/Events.h"

#include <memory>

#include "com/Counted.h"
#include "com/idl/Identifiers.h"

namespace com {

const IID kEventsInterface = BUKORVAL_EVENTS;

namespace {

template <class T>
void share(const Ref<T>& item, T** out) {
  *out = Ref<T>(item).release();
}

struct Sink {
  Ref<IUnknown> unknown;
  DWORD cookie;
};

void giveConnection(const Sink& sink, CONNECTDATA* out) {
  out->pUnk = Ref<IUnknown>(sink.unknown).release();
  out->dwCookie = sink.cookie;
}

using PointEnumerator =
    ListEnumerator<IEnumConnectionPoints, Ref<IConnectionPoint>, IConnectionPoint*, share<IConnectionPoint>>;
using ConnectionEnumerator = ListEnumerator<IEnumConnections, Sink, CONNECTDATA, giveConnection>;

}  // namespace

/// The one connection point. Its references are the source's.
class EventPoint : public IConnectionPoint {
 public:
  explicit EventPoint(EventSource& source) : source_(source) {}
  virtual ~EventPoint() = default;

  STDMETHODIMP QueryInterface(REFIID id, void** object) override {
    if (!object) return E_POINTER;
    const bool known = IsEqualIID(id, IID_IUnknown) || IsEqualIID(id, IID_IConnectionPoint);
    *object = known ? static_cast<IConnectionPoint*>(this) : nullptr;
    if (!known) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return source_.AddRef(); }
  STDMETHODIMP_(ULONG) Release() override { return source_.Release(); }

  STDMETHODIMP GetConnectionInterface(IID* id) override {
    if (!id) return E_POINTER;
    *id = kEventsInterface;
    return S_OK;
  }
  STDMETHODIMP GetConnectionPointContainer(IConnectionPointContainer** container) override {
    if (!container) return E_POINTER;
    source_.AddRef();
    *container = &source_;
    return S_OK;
  }
  STDMETHODIMP Advise(IUnknown* unknown, DWORD* cookie) override try {
    if (!unknown || !cookie) return E_POINTER;
    auto sink = Ref<IDispatch>::from(unknown, kEventsInterface);
    if (!sink) sink = Ref<IDispatch>::from(unknown, IID_IDispatch);
    if (!sink) return CONNECT_E_CANNOTCONNECT;
    sinks_[++last_] = std::move(sink);
    *cookie = last_;
    return S_OK;
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  }
  STDMETHODIMP Unadvise(DWORD cookie) override {
    const auto found = sinks_.find(cookie);
    if (found == sinks_.end()) return CONNECT_E_NOCONNECTION;
    // The sink may call back when it is let go.
    const auto sink = std::move(found->second);
    sinks_.erase(found);
    return S_OK;
  }
  STDMETHODIMP EnumConnections(IEnumConnections** connections) override try {
    if (!connections) return E_POINTER;
    std::vector<Sink> list;
    for (const auto& [cookie, sink] : sinks_) list.push_back({Ref<IUnknown>(sink.get()), cookie});
    *connections = new ConnectionEnumerator(IID_IEnumConnections, std::move(list));
    return S_OK;
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  }

  std::vector<DWORD> cookies() const {
    std::vector<DWORD> list;
    for (const auto& [cookie, sink] : sinks_) list.push_back(cookie);
    return list;
  }
  /// Null for one that has gone.
  Ref<IDispatch> sink(DWORD cookie) const {
    const auto found = sinks_.find(cookie);
    return found == sinks_.end() ? nullptr : found->second;
  }

 private:
  EventSource& source_;
  std::map<DWORD, Ref<IDispatch>> sinks_;
  DWORD last_ = 0;
};

EventSource::EventSource() : point_(new EventPoint(*this)) {}
EventSource::~EventSource() { delete point_; }

STDMETHODIMP EventSource::EnumConnectionPoints(IEnumConnectionPoints** points) try {
  if (!points) return E_POINTER;
  *points = new PointEnumerator(IID_IEnumConnectionPoints, {Ref<IConnectionPoint>(point_)});
  return S_OK;
} catch (const std::bad_alloc&) {
  return E_OUTOFMEMORY;
}

STDMETHODIMP EventSource::FindConnectionPoint(REFIID id, IConnectionPoint** point) {
  if (!point) return E_POINTER;
  const bool known = IsEqualIID(id, kEventsInterface) || IsEqualIID(id, IID_IDispatch);
  *point = known ? Ref<IConnectionPoint>(point_).release() : nullptr;
  return known ? S_OK : CONNECT_E_NOCONNECTION;
}

void EventSource::raise(DISPID event, std::vector<VARIANT*> arguments) {
  for (const auto cookie : point_->cookies()) {
    // Whoever was let go by another one may be no more, whatever is counted.
    const auto sink = point_->sink(cookie);
    if (!sink) continue;
    std::vector<VARIANT> reversed;
    for (auto each = arguments.rbegin(); each != arguments.rend(); ++each) {
      VARIANT reference;
      ::VariantInit(&reference);
      V_VT(&reference) = VT_BYREF | VT_VARIANT;
      V_VARIANTREF(&reference) = *each;
      reversed.push_back(reference);
    }
    DISPPARAMS parameters{reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
    OleVariant result;
    EXCEPINFO exception{};
    // What a sink fails with is its own affair.
    sink->Invoke(event, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, &result, &exception, nullptr);
    ::SysFreeString(exception.bstrSource);
    ::SysFreeString(exception.bstrDescription);
    ::SysFreeString(exception.bstrHelpFile);
  }
}

}  // namespace com
