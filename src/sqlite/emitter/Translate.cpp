#include "sqlite/emitter/Translate.h"

#include "sqlite/emitter/Emitter.h"
#include "sqlite/emitter/SchemaEmitter.h"
#include "sqlite/emitter/Stages.h"
#include "tsql/Parser.h"
#include "tsql/Resolver.h"

namespace sqlite {

using namespace tsql;

namespace {

Translation translated(Query& query, const Scan& scan, std::string_view stagePrefix, std::string_view textOrder) {
  Translation translation;
  translation.columns = query.select->columns;
  if (asksIdentity(query)) {
    translation.kind = Translation::Kind::Identity;
    return translation;
  }
  // Rows are sorted in the newer order of texts only.
  if (textOrder == kTextOrder) translation.order = orderAfterReading(*query.select);
  if (!translation.order.empty()) query.select->orderBy.clear();
  Emitter emitter(scan, textOrder);
  Stages(query, stagePrefix).build(emitter, translation);
  auto sql = emitter.withInlined(emitter.select(*query.select));
  translation.main = emitter.finish(std::move(sql));
  return translation;
}

Translation translated(const Change& change, const Scan& scan, std::string_view, std::string_view textOrder) {
  using Kind = Change::Kind;
  Emitter emitter(scan, textOrder);
  Translation translation;
  translation.kind = Translation::Kind::Change;
  auto sql = change.kind == Kind::Insert   ? emitter.insert(change)
             : change.kind == Kind::Update ? emitter.update(change)
                                           : emitter.erase(change);
  translation.main = emitter.finish(std::move(sql));
  translation.insertsIdentity = change.kind == Kind::Insert && change.target->hasIdentity();
  return translation;
}

Translation translated(const SchemaChange& change, const Scan&, std::string_view, std::string_view textOrder) {
  Translation translation;
  translation.kind = Translation::Kind::Schema;
  translation.main = {schemaStatement(change, textOrder), {}};
  return translation;
}

}  // namespace

Translation translate(const Scan& scan, const Catalog& catalog, std::string_view stagePrefix,
                      std::string_view textOrder) {
  Statement statement = Parser(scan).statement();
  Resolver(scan, catalog).resolve(statement);
  return std::visit([&](auto& kind) { return translated(kind, scan, stagePrefix, textOrder); }, statement);
}

}  // namespace sqlite
