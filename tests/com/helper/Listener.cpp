#include "helper/Listener.h"

#include "com/Counted.h"
#include "com/Events.h"
#include "com/Failures.h"
#include "com/Objects.h"
#include "com/Results.h"
#include "values/Conversion.h"

namespace com_helper {

/// The sink: it answers nothing but events.
class ListenerSink : public com::Counted<IDispatch> {
 public:
  explicit ListenerSink(Listener& listener) : Counted(IID_IDispatch), listener_(listener) {}

  STDMETHODIMP GetTypeInfoCount(UINT* count) override { return *count = 0, S_OK; }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return DISP_E_UNKNOWNNAME; }
  STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT*, EXCEPINFO*, UINT*) override {
    std::string event = id == com::kBeginProcess ? "begin" : id == com::kStepProcess ? "step" : "end";
    for (UINT i = parameters->cArgs; i > 0; --i)
      event += ' ' + values::toPlainText(com::toValue(parameters->rgvarg[i - 1]));
    listener_.heard_ += event + '\n';
    return listener_.answer ? listener_.answer(event) : S_OK;
  }

 private:
  ~ListenerSink() override = default;
  Listener& listener_;
};

void Listener::listen(IDispatch* object) {
  const auto container = com::Ref<IConnectionPointContainer>::from(object, IID_IConnectionPointContainer);
  if (!container || FAILED(container->FindConnectionPoint(com::kEventsInterface, point_.out())))
    throw values::Errore("The object raises no events");
  const auto sink = com::Ref<IDispatch>::adopt(new ListenerSink(*this));
  if (FAILED(point_->Advise(sink.get(), &cookie_))) throw values::Errore("The object takes no sink");
}

void Listener::stop() {
  if (point_) point_->Unadvise(cookie_);
  point_ = nullptr;
}

std::span<const com::Entry<Listener>> Listener::entries() {
  static constexpr com::Entry<Listener> kEntries[] = {
      {"Listen", "Object",
       [](Listener& l, com::Arguments& a) { return l.listen(com::dispatchOf(*a.at(0)).get()), com::OleVariant(); }},
      {"Stop", "", [](Listener& l, com::Arguments&) { return l.stop(), com::OleVariant(); }},
      {"Heard", "", [](Listener& l, com::Arguments&) { return com::valueOf(l.heard()); }},
  };
  return kEntries;
}

}  // namespace com_helper
