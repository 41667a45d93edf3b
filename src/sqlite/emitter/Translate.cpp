#include "sqlite/emitter/Translate.h"

#include "sqlite/emitter/Emitter.h"
#include "sqlite/emitter/SchemaEmitter.h"
#include "sqlite/emitter/Stages.h"
#include "tsql/Names.h"
#include "tsql/Parser.h"

namespace sqlite {
using namespace tsql;
namespace {

/// SELECT @@IDENTITY, answered by the connection.
bool asksIdentity(const Query& query) {
  const Select& select = *query.select;
  return query.with.empty() && !select.next && select.sources.empty() && select.items.size() == 1 &&
         select.items[0].value->kind == Expression::Kind::Variable &&
         sameName(select.items[0].value->name, "@@IDENTITY");
}

Translation translateQuery(const Query& query, Emitter& emitter, std::string_view stagePrefix) {
  Translation translation;
  if (asksIdentity(query)) {
    translation.kind = Translation::Kind::Identity;
    translation.columns.push_back({query.select->items[0].alias, decimalType(38, 0)});
    return translation;
  }
  Stages(query, stagePrefix).build(emitter, translation);
  auto rows = emitter.select(*query.select, nullptr);
  auto sql = emitter.withRecursive(rows.sql);
  translation.main = emitter.finish(std::move(sql));
  translation.columns = std::move(rows.columns);
  return translation;
}

Translation translateChange(const Change& change, Emitter& emitter, const Catalog& catalog) {
  Translation translation;
  translation.kind = Translation::Kind::Change;
  auto sql = change.kind == Change::Kind::Insert   ? emitter.insert(change)
             : change.kind == Change::Kind::Update ? emitter.update(change)
                                                   : emitter.erase(change);
  translation.main = emitter.finish(std::move(sql));
  translation.insertsIdentity = change.kind == Change::Kind::Insert && catalog.find(change.table)->hasIdentity();
  return translation;
}

}  // namespace

Translation translate(const Scan& scan, const Catalog& catalog, std::string_view stagePrefix) {
  const ParsedStatement parsed = Parser(scan).statement();
  Emitter emitter(scan, catalog);
  if (const auto* query = std::get_if<Query>(&parsed)) return translateQuery(*query, emitter, stagePrefix);
  if (const auto* change = std::get_if<Change>(&parsed)) return translateChange(*change, emitter, catalog);
  Translation translation;
  translation.kind = Translation::Kind::Schema;
  translation.main = {schemaStatement(std::get<SchemaChange>(parsed), catalog), {}};
  return translation;
}

}  // namespace sqlite
