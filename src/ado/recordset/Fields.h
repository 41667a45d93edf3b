#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "ado/recordset/Field.h"
#include "values/Export.h"

namespace ado {

/// The fields of a record set, in order; names are found without regard to case.
class BUKORVAL_API Fields {
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
  friend class Recordset;
  /// The slot of a name, or the free one where it belongs.
  std::size_t slotOf(std::string_view name) const;
  void grow();

  static constexpr std::uint32_t kFree = ~std::uint32_t{0};
  Recordset* owner_;
  std::vector<std::unique_ptr<Field>> fields_;
  /// Open addressing over positions in fields_: a look-up by name allocates nothing. Size a power of two.
  std::vector<std::uint32_t> slots_;
};

}  // namespace ado
