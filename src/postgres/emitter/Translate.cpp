#include "postgres/emitter/Translate.h"

#include <utility>

#include "postgres/emitter/Emitter.h"
#include "postgres/emitter/SchemaEmitter.h"
#include "tsql/Parser.h"
#include "tsql/Resolver.h"

namespace postgres {

using namespace tsql;

namespace {

Translation translated(const Query& query, const Scan& scan, const Catalog&) {
  Translation translation;
  translation.columns = query.select->columns;
  if (engine::asksIdentity(query)) {
    translation.kind = Translation::Kind::Identity;
    return translation;
  }
  Emitter emitter(scan);
  translation.sql = emitter.query(query);
  translation.parameters = emitter.parameters();
  return translation;
}

Translation translated(const Change& change, const Scan& scan, const Catalog&) {
  Emitter emitter(scan);
  Translation translation;
  translation.kind = Translation::Kind::Change;
  translation.sql = change.kind == Change::Kind::Insert   ? emitter.insert(change)
                    : change.kind == Change::Kind::Update ? emitter.update(change)
                                                          : emitter.erase(change);
  translation.parameters = emitter.parameters();
  return translation;
}

Translation translated(const SchemaChange& change, const Scan&, const Catalog& catalog) {
  Translation translation;
  translation.kind = Translation::Kind::Schema;
  translation.sql = schemaStatements(change, catalog);
  return translation;
}

}  // namespace

Translation translate(const Scan& scan, const Catalog& catalog) {
  Statement statement = Parser(scan).statement();
  Resolver(scan, catalog).resolve(statement);
  return std::visit([&](const auto& kind) { return translated(kind, scan, catalog); }, statement);
}

}  // namespace postgres
