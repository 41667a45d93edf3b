#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>
#include <memory>
#include <string>

#include "dati/Ledger.h"
#include "dati/RowInsert.h"
#include "demo/DemoAzienda.h"
#include "frame/Transazione.h"
#include "host/Arguments.h"
#include "host/Environment.h"
#include "host/Errors.h"
#include "host/commands/Commands.h"
#include "schema/Schema.h"
#include "values/Conversion.h"

namespace bukorval::host {
namespace {

struct OpzioniCreate {
  std::string file, nome = "Azienda";
  int struttura = 3;
  bool demo = false;
};

values::Variant proprieta(const Ambiente& ambiente, const std::string& nome, const values::Variant& altrimenti) {
  const auto data = ambiente.scelte.proprieta.find(nome);
  return data == ambiente.scelte.proprieta.end() ? altrimenti : leggiArgomento(data->second);
}

/// A company with one accounting year and nothing else.
void creaAzienda(ado::Connection& connessione, const Ambiente& ambiente, const OpzioniCreate& opzioni) {
  const auto ditta = proprieta(ambiente, "CodiceDitta", 1);
  const auto anno = proprieta(ambiente, "AnnoEsercizio", values::Date::Now().year());
  Transazione transazione(connessione);
  RigaDati("CG10_GRUPPIPDC").colonna("CG10_CODICE", 1).colonna("CG10_DESCR", "Piano dei conti").inserisci(connessione);
  RigaDati("CG18_ANADITTE")
      .colonna("CG18_CODICE", ditta)
      .colonna("CG18_RAGSOC", opzioni.nome)
      .colonna("CG18_GRUPPO_CG10", 1)
      .colonna("CG18_STRUTTCONTI", opzioni.struttura)
      .inserisci(connessione);
  Archivio(connessione, ditta, 1).scriviAnno(values::toInt32(anno));
  transazione.conferma();
}

void crea(const Ambiente& ambiente, const OpzioniCreate& opzioni) {
  if (std::filesystem::exists(opzioni.file)) throw Rifiuto(opzioni.file + " exists already and is left as it is");
  try {
    const auto connessione = ado::createConnection();
    connessione->ConnectionString = stringaSqlite(opzioni.file) + ";Create=True";
    connessione->Open();
    schema::create(*connessione);
    if (opzioni.demo) {
      demo::creaDemo(*connessione);
    } else {
      creaAzienda(*connessione, ambiente, opzioni);
    }
  } catch (...) {
    // A half-made database would be in the way of the next attempt.
    std::error_code ignorato;
    std::filesystem::remove(opzioni.file, ignorato);
    throw;
  }
  std::cout << "Created " << opzioni.file << (opzioni.demo ? " with the demo company" : " with an empty company")
            << '\n';
}

}  // namespace

Comando comandoCreate() {
  return {"create", "Make an embedded database with an empty company, or with the demo company",
          "  bukorval create demo.db --demo\n"
          "  bukorval create acme.db --name \"Acme S.r.l.\" -c 1 -y 2025\n"
          "An empty company has one accounting year (-y, by default the current one); `bukorval import` "
          "fills it.",
          [](CLI::App& app, Ambiente& ambiente) {
            auto opzioni = std::make_shared<OpzioniCreate>();
            app.add_option("FILE", opzioni->file, "the file to make; it must not exist")->required();
            app.add_flag("--demo", opzioni->demo, "the demo company, with budgets and movements");
            app.add_option("--name", opzioni->nome, "the company's name");
            app.add_option("--structure", opzioni->struttura,
                           "levels of an account code of 8 digits: 2 (3+5), 3 (2+2+4), 4 (1+1+2+4), 5 (1+1+2+2+2)")
                ->check(CLI::Range(2, 5))
                ->capture_default_str();
            app.callback([&ambiente, opzioni] { crea(ambiente, *opzioni); });
          }};
}

}  // namespace bukorval::host
