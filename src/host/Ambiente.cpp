#include "host/Ambiente.h"

#include <cstdio>
#include <filesystem>
#include <iostream>

#include "host/Argomenti.h"
#include "host/Errori.h"
#include "host/Terminale.h"
#include "object/Interfaccia.h"
#include "odbc/Provider.h"
#include "sqlite/Provider.h"
#include "suite/Suite.h"
#include "values/Conversion.h"

namespace bukorval::host {
namespace {

Formato leggiFormato(const std::string& nome) {
  if (nome == "csv") return Formato::Csv;
  return nome == "json" ? Formato::Json : Formato::Tabella;
}

}  // namespace

std::string stringaSqlite(const std::string& file) { return "Provider=SQLite;Data Source=" + file; }

Ambiente::Ambiente() {
  sqlite::registerSqlite();
  odbc::registerOdbc();
  suite::registraServiziSuite();
}

Ambiente::~Ambiente() = default;

bool Ambiente::haDatabase() const { return !scelte.database.empty() || !scelte.connessione.empty(); }

const ado::ConnectionPtr& Ambiente::connessione() {
  if (connessione_) return connessione_;
  if (!haDatabase()) throw ErroreUso("Which database? Give -d FILE or set BUKORVAL_DATABASE");
  if (scelte.connessione.empty() && !std::filesystem::exists(scelte.database)) {
    throw Rifiuto("There is no database " + scelte.database + "; `bukorval create " + scelte.database + "` makes one");
  }
  auto nuova = ado::createConnection();
  nuova->ConnectionString = scelte.connessione.empty() ? stringaSqlite(scelte.database) : scelte.connessione;
  nuova->CursorLocation = ado::adUseClient;
  nuova->Open();
  connessione_ = std::move(nuova);
  return connessione_;
}

suite::Sessione& Ambiente::sessione() {
  if (!sessione_) {
    const auto& proprieta = scelte.proprieta;
    const auto ditta = proprieta.find("CodiceDitta");
    sessione_ = std::make_shared<suite::Sessione>(
        connessione(), ditta == proprieta.end() ? values::Variant() : leggiArgomento(ditta->second));
    sessione_->messaggiero = [](std::string_view testo, int, std::string_view titolo) {
      std::cerr << titolo << ": " << testo << '\n';
    };
  }
  return *sessione_;
}

CLSKORVAL& Ambiente::oggetto() {
  if (oggetto_) return *oggetto_;
  auto nuovo = std::make_unique<CLSKORVAL>();
  if (haDatabase()) {
    nuovo->Connessione(connessione());
    sessione();
    nuovo->ActiveInterface = sessione_;
    nuovo->CodiceDitta = sessione_->CodiceDitta();
  }
  for (const auto& [nome, testo] : scelte.proprieta) {
    const auto* membro = trovaMembro(nome);
    membro->scrivi(*nuovo, leggiPerTipo(testo, membro->tipo, membro->nome));
  }
  oggetto_ = std::move(nuovo);
  completaSelezione();
  return *oggetto_;
}

void Ambiente::completaSelezione() {
  if (!haDatabase() || oggetto_->AnnoEsercizio.isNothing() || !oggetto_->ProgressivoEsercizio.isNothing()) return;
  oggetto_->ProgressivoEsercizio = oggetto_->GetProgressivoEsercizio(oggetto_->CodiceDitta, oggetto_->AnnoEsercizio);
  controlla();
}

void Ambiente::controlla() {
  const auto stato = oggetto().Stato();
  if (stato != bdgStatoOk) throw Interrotto(static_cast<CodiceUscita>(stato), oggetto().errore());
}

void Ambiente::mostra(const Tabella& tabella) {
  const char separatore = sessione_ ? sessione_->SeparatoreDecimale() : values::kDefaultSeparator;
  stampa(std::cout, tabella, {leggiFormato(scelte.formato), separatore, vuoleColore(stdout), scelte.tutte});
}

}  // namespace bukorval::host
