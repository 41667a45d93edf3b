#include "com/SessionObject.h"

#include "ado/Messages.h"
#include "com/Failures.h"
#include "com/Results.h"
#include "suite/Sessione.h"

namespace com {

suite::ActiveInterface& SessionObject::opened() const {
  if (!session_) throw values::Errore(ado::kObjectClosed);
  return *session_;
}

OleVariant SessionObject::open(Arguments& arguments) {
  const auto connection =
      bukorval::oggetto<ado::Connection>(toObject(*arguments.at(0), bukorval::TipoDato::Connection));
  if (!connection) throw CallFailure{DISP_E_TYPEMISMATCH, 0};
  session_ = std::make_shared<suite::Sessione>(connection, arguments.value(1));
  return {};
}

std::span<const Entry<SessionObject>> SessionObject::entries() {
  using S = SessionObject;
  static constexpr Entry<S> kEntries[] = {
      {"Open", "Connessione CodiceDitta?", [](S& s, Arguments& a) { return s.open(a); }},
      {"CodiceDitta", "", [](S& s, Arguments&) { return fromValue(s.opened().CodiceDitta()); }},
      {"CodicePdcCoGe", "", [](S& s, Arguments&) { return fromValue(s.opened().CodicePdcCoGe()); }},
      {"MastroClienti", "", [](S& s, Arguments&) { return fromValue(s.opened().MastroClienti()); }},
      {"MastroFornitori", "", [](S& s, Arguments&) { return fromValue(s.opened().MastroFornitori()); }},
      {"SeparatoreDecimale", "",
       [](S& s, Arguments&) { return valueOf(std::string(1, s.opened().SeparatoreDecimale())); }},
      {"StrutturaConti", "", [](S& s, Arguments&) { return valueOf(s.opened().StrutturaConti()); }},
      {"TestoMessaggio", "Numero",
       [](S& s, Arguments& a) { return fromValue(s.opened().TestoMessaggio(a.number(0, 0))); }},
      {"MostraMessaggio", "Testo Stile Titolo",
       [](S& s, Arguments& a) {
         s.opened().MostraMessaggio(a.text(0), a.number(1, 0), a.text(2));
         return OleVariant();
       }},
  };
  return kEntries;
}

}  // namespace com
