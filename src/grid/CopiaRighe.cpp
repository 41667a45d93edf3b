#include "grid/CopiaRighe.h"

#include <utility>
#include <vector>

namespace bukorval {
namespace {

using Coppie = std::vector<std::pair<const ado::Field*, ado::Field*>>;

void copiaRiga(const Coppie& coppie, ado::Recordset& griglia) {
  griglia.AddNew();
  try {
    for (const auto& [origine, destinazione] : coppie) destinazione->Value(origine->Value());
  } catch (...) {
    griglia.CancelUpdate();  // no half row is handed out
    throw;
  }
  griglia.Update();
}

}  // namespace

void copiaRighe(ado::Recordset& risultato, ado::Recordset& griglia) {
  if (risultato.RecordCount() == 0) return;
  Coppie coppie;
  for (std::size_t i = 0; i < risultato.Fields().Count(); ++i) {
    const auto& campo = risultato.Fields().Item(i);
    coppie.emplace_back(&campo, &griglia.Fields().Item(campo.Name()));
  }
  for (risultato.MoveFirst(); !risultato.Eof(); risultato.MoveNext()) copiaRiga(coppie, griglia);
  risultato.MoveFirst();
  griglia.MoveFirst();
}

}  // namespace bukorval
