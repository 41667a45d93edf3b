#include "dupschede/TestoCopia.h"

#include "frame/Inserimento.h"
#include "frame/TestoSql.h"

namespace bukorval {

std::string testoCopiaRiga(std::string_view tabella, std::string_view identita, const ado::Recordset& righe,
                           const Sostituzioni& sostituzioni, std::string_view condizione) {
  Inserimento elenco;
  for (std::size_t i = 0; i < righe.Fields().Count(); ++i) {
    const auto& nome = righe.Fields().Item(i).Name();
    if (nome == identita) continue;
    const auto trovata = sostituzioni.find(nome);
    elenco.colonna(nome, trovata == sostituzioni.end() ? nome : trovata->second);
  }
  TestoSql sql;
  sql.riga(" INSERT INTO ", tabella, " ")
      .riga(" ( ", elenco.colonne(), " ) ")
      .riga(" SELECT ", elenco.valori())
      .riga(" FROM   ", tabella)
      .riga(" WHERE  ", condizione);
  return sql.str();
}

}  // namespace bukorval
