#include "frame/Connessione.h"

#include "frame/Trappola.h"

namespace bukorval {

bool creaConnessioneDB(Contesto& ctx) {
  return esegui(ctx, "CreaConnessioneDB", false, [&] {
    if (ctx.connessionePtr()) return true;
    if (ctx.stringaConnessione.empty()) rifiuta("Non è stata definita la stringa di connessione");
    const ado::ConnectionPtr connessione = ado::createConnection();
    connessione->ConnectionString = ctx.stringaConnessione;
    connessione->CursorLocation = ado::adUseClient;
    connessione->Mode = ado::adModeShareExclusive;
    connessione->IsolationLevel = ado::adXactSerializable;
    connessione->Open("", "", -1);
    ctx.connessione(connessione);
    return true;
  });
}

values::Variant nuovaIdentita(ado::Connection& connessione) {
  const auto righe = connessione.Execute("SELECT @@IDENTITY");
  righe->MoveFirst();
  return righe->Fields().Item(std::size_t{0}).Value();
}

}  // namespace bukorval
