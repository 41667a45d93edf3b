#include <iostream>
#include <memory>
#include <string>

#include "dati/Company.h"
#include "demo/DemoAzienda.h"
#include "host/commands/Command.h"
#include "host/environment/Arguments.h"
#include "host/environment/DatabaseFiles.h"
#include "language/Language.h"
#include "schema/Schema.h"
#include "values/Conversion.h"

namespace bukorval::host {
namespace {

struct CreateOptions {
  std::string file, name = "Azienda";
  int structure = 3;
  bool demo = false;
};

values::Variant property(const SharedOptions& shared, const std::string& name, const values::Variant& otherwise) {
  const auto given = shared.properties.find(name);
  return given == shared.properties.end() ? otherwise : parseArgument(given->second);
}

dati::NewCompany companyOf(const SharedOptions& shared, const CreateOptions& options) {
  return {property(shared, "CodiceDitta", 1), options.name, options.structure,
          values::toInt32(property(shared, "AnnoEsercizio", values::Date::Now().year()))};
}

void fill(ado::Connection& connection, const SharedOptions& shared, const CreateOptions& options) {
  schema::create(connection);
  if (options.demo)
    demo::creaDemo(connection);
  else
    dati::createCompany(connection, companyOf(shared, options));
}

void create(const SharedOptions& shared, const CreateOptions& options) {
  const auto& file = options.file;
  makeDatabase(file, [&](const std::string& workName) {
    const auto connection = ado::createConnection();
    // It is brought to the disk when it gets its name.
    connection->ConnectionString = sqliteConnectionString(workName) + ";Create=True;Synchronous=Off";
    connection->Open();
    fill(*connection, shared, options);
  });
  std::cout << (options.demo ? tr("Created {} with the demo company", file)
                             : tr("Created {} with an empty company", file))
            << '\n';
}

}  // namespace

Command createCommand() {
  const auto options = std::make_shared<CreateOptions>();
  return {"create",
          "Make an embedded database with an empty company, or with the demo company",
          "  bukorval create demo.db --demo\n"
          "  bukorval create acme.db --name \"Acme S.r.l.\" -c 1 -y 2025\n"
          "An empty company has one accounting year (-y, by default the current one); `bukorval import` fills it.",
          {{.flags = "FILE", .help = "the file to make; it must not exist", .target = &options->file, .required = true},
           {"--demo", "the demo company, with budgets and movements", &options->demo},
           {"--name", "the company's name", &options->name},
           {.flags = "--structure",
            .help = "levels of an account code of 8 digits: 2 (3+5), 3 (2+2+4), 4 (1+1+2+4), 5 (1+1+2+2+2)",
            .target = &options->structure,
            .showDefault = true,
            .range = {{2, 5}}}},
          [options](Environment& environment) { create(environment.options, *options); }};
}

}  // namespace bukorval::host
