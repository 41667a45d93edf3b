#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "ado/Field.h"

namespace ado {

/// The fields of a record set, in order; names are found without regard to case.
class Fields {
 public:
  explicit Fields(Recordset& owner) : owner_(&owner) {}

  /// Adds a field to a record set that is not open. The name must be new.
  Field& Append(std::string_view name, DataTypeEnum type, std::int32_t definedSize = 0,
                std::int32_t attributes = adFldUnspecified);

  std::size_t Count() const { return fields_.size(); }
  /// Throws "Item cannot be found in the collection: NAME" for a name the record set does not have.
  Field& Item(std::string_view name) const;
  Field& Item(std::size_t position) const;
  /// Null pointer when there is no such field.
  Field* Find(std::string_view name) const;

 private:
  Recordset* owner_;
  std::vector<std::unique_ptr<Field>> fields_;
  std::unordered_map<std::string, std::size_t> byName_;
};

}  // namespace ado
