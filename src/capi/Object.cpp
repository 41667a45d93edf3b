#include <algorithm>

#include "capi/Guard.h"
#include "capi/Handles.h"
#include "values/Conversion.h"

using namespace capi;
using bukorval::Genere;
using bukorval::Membro;
using values::Variant;

namespace {

const Membro& member(const char* name, Genere kind) {
  const auto text = givenText(name, "name");
  const auto* found = bukorval::trovaMembro(text);
  if (!found || found->genere != kind)
    throw Misuse((kind == Genere::Metodo ? "There is no method " : "There is no property ") + text);
  return *found;
}

[[noreturn]] void stopped() { throw values::Errore("Stopped by the client"); }

}  // namespace

extern "C" {

bukorval_code bukorval_object_new(bukorval_session* session, bukorval_object** object) {
  return guarded([&] {
    const auto& on = given(session, "session");
    auto& result = given(object, "object");
    auto made = std::make_unique<bukorval_object>();
    made->budget.Connessione(on.connection);
    made->budget.ActiveInterface = on.session;
    made->budget.CodiceDitta = on.session->CodiceDitta();
    result = made.release();
  });
}

void bukorval_object_free(bukorval_object* object) { delete object; }

bukorval_code bukorval_get(const bukorval_object* object, const char* property, bukorval_variant* value) {
  return guarded([&] {
    const auto& found = member(property, Genere::Proprieta);
    if (!found.leggi) throw Misuse("The property " + found.nome + " can only be written");
    given(value, "value").value = found.leggi(given(object, "object").budget);
  });
}

bukorval_code bukorval_set(bukorval_object* object, const char* property, const bukorval_variant* value) {
  return guarded([&] {
    const auto& found = member(property, Genere::Proprieta);
    if (!found.scrivi) throw Misuse("The property " + found.nome + " can only be read");
    found.scrivi(given(object, "object").budget, given(value, "value").value);
  });
}

bukorval_code bukorval_call(bukorval_object* object, const char* method, bukorval_variant* const* arguments,
                            size_t count, bukorval_variant* result) {
  return guarded([&] {
    const auto& found = member(method, Genere::Metodo);
    std::vector<Variant> passed;
    // One too many is enough to be refused, and what lies behind it may be nobody's.
    for (std::size_t i = 0; i < std::min(count, found.parametri.size() + 1); ++i)
      passed.push_back(given(given(arguments, "arguments") ? arguments[i] : nullptr, "An argument").value);
    auto returned = found.chiama(given(object, "object").budget, passed);
    for (std::size_t i = 0; i < count; ++i)
      if (found.parametri[i].inOut) arguments[i]->value = std::move(passed[i]);
    if (result) result->value = std::move(returned);
  });
}

bukorval_code bukorval_listen(bukorval_object* object, const bukorval_events* events) {
  return guarded([&] {
    auto& told = given(object, "object").budget.eventi;
    told = {};
    if (!events) return;
    const auto client = *events;
    if (client.begin)
      told.BeginProcess = [client](Variant& description, Variant& steps) {
        if (client.begin(client.user, values::toPlainText(description).c_str(), values::toInt64(steps)) != 0) stopped();
      };
    if (client.step)
      told.StepProcess = [client](Variant& step) {
        if (client.step(client.user, values::toInt64(step)) != 0) stopped();
      };
    if (client.end) told.EndProcess = [client] { client.end(client.user); };
  });
}

}  // extern "C"
