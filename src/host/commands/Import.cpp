#include <CLI/CLI.hpp>
#include <iostream>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "dati/import/Importer.h"
#include "frame/Transazione.h"
#include "host/Errors.h"
#include "host/commands/Commands.h"

namespace bukorval::host {
namespace {

struct OpzioniImport {
  std::map<std::string_view, std::string> file;
  std::string finance;
};

void importaFile(Ambiente& ambiente, const OpzioniImport& opzioni) {
  Importazione importazione(ambiente);
  std::vector<std::unique_ptr<Importatore>> importatori;
  for (const auto& genere : generiImportazione()) {
    const auto& file = opzioni.file.at(genere.opzione);
    if (file.empty()) continue;
    importatori.push_back(genere.crea());
    importatori.back()->leggi(file, importazione);
  }
  if (importatori.empty()) throw ErroreUso("Nothing to import: give at least one file");
  importazione.segnalazioni.verifica();
  Transazione transazione(*ambiente.connessione());
  for (const auto& importatore : importatori) importatore->scrivi(importazione);
  transazione.conferma();
  for (const auto& importatore : importatori) std::cout << "Imported " << importatore->esito() << '\n';
}

void importa(Ambiente& ambiente, const OpzioniImport& opzioni) {
  if (opzioni.finance.empty()) return importaFile(ambiente, opzioni);
  for (const auto& [nome, file] : opzioni.file) {
    if (!file.empty()) throw ErroreUso("--finance stands alone: import other files afterwards");
  }
  importaFinance(ambiente, opzioni.finance);
}

}  // namespace

Comando comandoImport() {
  return {"import", "Import accounts, sites, definitions, movements and values from CSV",
          "  bukorval import -d acme.db --accounts accounts.csv --sites sites.csv\n"
          "  bukorval import -d acme.db --values plan.csv -t 4 -s 01 -y 2025\n"
          "Each file has a header line; columns may stand in any order, optional ones may be missing. Every file "
          "is\n"
          "checked first: problems are listed with their line numbers, and then nothing at all is imported.",
          [](CLI::App& app, Ambiente& ambiente) {
            auto opzioni = std::make_shared<OpzioniImport>();
            for (const auto& genere : generiImportazione()) {
              app.add_option("--" + std::string(genere.opzione), opzioni->file[genere.opzione],
                             std::string(genere.aiuto))
                  ->type_name("FILE");
            }
            app.add_option("--finance", opzioni->finance,
                           "folder with amounts.csv, accounts.csv, sites.csv, departments.csv: monthly amounts become "
                           "cards of budget type 4 per site, and movements")
                ->type_name("DIR");
            app.callback([&ambiente, opzioni] { importa(ambiente, *opzioni); });
          }};
}

}  // namespace bukorval::host
