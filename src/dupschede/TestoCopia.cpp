#include "dupschede/TestoCopia.h"

#include "frame/TestoSql.h"

namespace bukorval {

std::string testoCopiaRiga(std::string_view tabella, std::string_view identita, const ado::Recordset& righe,
                           const Sostituzioni& sostituzioni, std::string_view condizione) {
  std::string colonne;
  std::string valori;
  for (std::size_t i = 0; i < righe.Fields().Count(); ++i) {
    const auto& nome = righe.Fields().Item(i).Name();
    if (nome == identita) continue;
    const auto trovata = sostituzioni.find(nome);
    colonne.append(colonne.empty() ? "" : ", ").append(nome);
    valori.append(valori.empty() ? "" : ", ").append(trovata == sostituzioni.end() ? nome : trovata->second);
  }
  TestoSql sql;
  sql.riga(" INSERT INTO ", tabella, " ")
      .riga(" ( ", colonne, " ) ")
      .riga(" SELECT ", valori)
      .riga(" FROM   ", tabella)
      .riga(" WHERE  ", condizione);
  return sql.str();
}

}  // namespace bukorval
