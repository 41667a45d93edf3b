#include <iostream>
#include <memory>
#include <string>

#include "dati/Company.h"
#include "dati/Failure.h"
#include "dati/OwnTables.h"
#include "demo/DemoAzienda.h"
#include "host/commands/Command.h"
#include "host/environment/Arguments.h"
#include "host/environment/DatabaseFiles.h"
#include "host/environment/Errors.h"
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
  if (options.demo)
    demo::creaDemo(connection);
  else
    dati::createCompany(connection, companyOf(shared, options));
}

/// @param where  what was made, for who reads it.
void tell(const std::string& where, const CreateOptions& options) {
  std::cout << (options.demo ? tr("Created {} with the demo company", where)
                             : tr("Created {} with an empty company", where))
            << '\n';
}

/// A server's database is there already. What a run that failed has left of the tables is gone on with.
void createOnServer(Environment& environment, const CreateOptions& options) {
  auto& connection = *environment.connection();
  if (!dati::hasTable(connection, "CG18_ANADITTE"))
    schema::create(connection);
  else if (!connection.Execute("SELECT TOP 1 CG18_CODICE FROM CG18_ANADITTE")->Eof())
    throw dati::Refused(tr("The database holds a company already and is left as it is"));
  fill(connection, environment.options, options);
  tell(tr("the tables"), options);
}

void createFile(const SharedOptions& shared, const CreateOptions& options) {
  const auto& file = options.file;
  makeDatabase(file, [&](const std::string& workName) {
    const auto connection = ado::createConnection();
    // It is brought to the disk when it gets its name.
    connection->ConnectionString = sqliteConnectionString(workName) + ";Create=True;Synchronous=Off";
    connection->Open();
    schema::create(*connection);
    fill(*connection, shared, options);
  });
  tell(file, options);
}

void create(Environment& environment, const CreateOptions& options) {
  if (!options.file.empty()) return createFile(environment.options, options);
  if (environment.serverConnection().empty()) throw UsageError(tr("Which database? Give a FILE or --connection"));
  createOnServer(environment, options);
}

}  // namespace

Command createCommand() {
  const auto options = std::make_shared<CreateOptions>();
  return {"create",
          "Make a database with an empty company, or with the demo company",
          "  bukorval create demo.db --demo\n"
          "  bukorval create acme.db --name \"Acme S.r.l.\" -c 1 -y 2025\n"
          "  bukorval create --demo --connection \"Provider=PostgreSQL;Host=db;Database=budget\"\n"
          "On a server the database must be there, and hold no company. An empty company has one accounting year (-y, "
          "by default the current one); `bukorval import` fills it.",
          {{.flags = "FILE", .help = "the file to make; it must not exist", .target = &options->file},
           {"--demo", "the demo company, with budgets and movements", &options->demo},
           {"--name", "the company's name", &options->name},
           {.flags = "--structure",
            .help = "levels of an account code of 8 digits: 2 (3+5), 3 (2+2+4), 4 (1+1+2+4), 5 (1+1+2+2+2)",
            .target = &options->structure,
            .showDefault = true,
            .range = {{2, 5}}}},
          [options](Environment& environment) { create(environment, *options); }};
}

}  // namespace bukorval::host
