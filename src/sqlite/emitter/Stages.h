#pragma once

#include <map>
#include <set>
#include <string>
#include <string_view>

#include "sqlite/emitter/Emitter.h"
#include "sqlite/emitter/Translate.h"

namespace sqlite {

/// Why stages: the engine writes a common table expression out again wherever it is named, or scans it once per row
/// of what it is joined to, because it knows neither its size nor its keys. A query that joins them is therefore run
/// in steps: each expression that is not recursive fills a temporary table, indexed by the columns that later
/// equalities look it up by. Every step is then linear in its rows.
class Stages {
 public:
  Stages(const tsql::Query& query, std::string_view prefix) : query_(query), prefix_(prefix) {}

  /// Adds the stages' statements to the translation and makes their names known to the emitter.
  void build(Emitter& emitter, Translation& translation);

 private:
  bool staged() const;
  std::map<const tsql::CommonTable*, std::set<std::string>> lookupColumns() const;
  void stage(const tsql::CommonTable& table, const std::set<std::string>& lookups, Emitter& emitter,
             Translation& translation);

  const tsql::Query& query_;
  std::string_view prefix_;
};

}  // namespace sqlite
