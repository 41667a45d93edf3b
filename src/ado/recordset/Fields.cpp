#include "ado/recordset/Fields.h"

#include <cstdint>

#include "ado/FieldType.h"
#include "ado/Messages.h"
#include "ado/recordset/Recordset.h"
#include "values/Errore.h"
#include "values/Text.h"

namespace ado {
namespace {

using values::Errore;

constexpr std::size_t kFirstSlots = 16;

bool isAscii(char c) { return static_cast<unsigned char>(c) < 0x80; }
char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c | 0x20) : c; }

/// Accented letters are left out, so that names which differ only in their case share a slot.
std::size_t hashName(std::string_view name) {
  std::uint64_t hash = 0xcbf29ce484222325U;
  for (const char c : name)
    if (isAscii(c)) hash = (hash ^ static_cast<unsigned char>(lower(c))) * 0x100000001b3U;
  return static_cast<std::size_t>(hash ^ hash >> 29);
}

bool sameName(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (a[i] == b[i]) continue;
    if (!isAscii(a[i]) || !isAscii(b[i])) return values::compareText(a, b) == 0;
    if (lower(a[i]) != lower(b[i])) return false;
  }
  return true;
}

[[noreturn]] void notFound(std::string_view name) {
  throw Errore("Item cannot be found in the collection: " + std::string(name));
}

}  // namespace

Field& Fields::Append(std::string_view name, DataTypeEnum type, std::int32_t definedSize, std::int32_t attributes) {
  if (owner_->State() == adStateOpen) throw Errore(kObjectOpen);
  if (Find(name) != nullptr) throw Errore("Object is already in collection. Cannot append: " + std::string(name));
  const auto& known = fieldType(type);
  if (definedSize < 0) throw Errore("Field " + std::string(name) + ": a size cannot be negative");
  if (2 * (fields_.size() + 1) > slots_.size()) grow();
  const std::size_t position = fields_.size();
  fields_.push_back(
      std::unique_ptr<Field>(new Field(*owner_, position, std::string(name), known, definedSize, attributes)));
  slots_[slotOf(name)] = static_cast<std::uint32_t>(position);
  lookedUp_.push_back(false);
  return *fields_.back();
}

Field& Fields::Item(std::string_view name) const {
  if (auto* field = Find(name)) return *field;
  notFound(name);
}

Field& Fields::Item(std::size_t position) const {
  if (auto* field = position < fields_.size() ? lookedUp(position) : nullptr) return *field;
  notFound(std::to_string(position));
}

Field* Fields::Find(std::string_view name) const {
  if (slots_.empty()) return nullptr;
  const std::uint32_t position = slots_[slotOf(name)];
  return position == kFree ? nullptr : lookedUp(position);
}

Field* Fields::lookedUp(std::size_t position) const {
  if (!kept_) lookedUp_[position] = true;
  return lookedUp_[position] ? fields_[position].get() : nullptr;
}

const std::vector<bool>& Fields::KeepLookedUp() {
  kept_ = true;
  return lookedUp_;
}

std::size_t Fields::slotOf(std::string_view name) const {
  const std::size_t mask = slots_.size() - 1;
  std::size_t slot = hashName(name) & mask;
  while (slots_[slot] != kFree && !sameName(fields_[slots_[slot]]->Name(), name)) slot = (slot + 1) & mask;
  return slot;
}

void Fields::grow() {
  slots_.assign(slots_.empty() ? kFirstSlots : 2 * slots_.size(), kFree);
  for (std::size_t i = 0; i < fields_.size(); ++i) slots_[slotOf(fields_[i]->Name())] = static_cast<std::uint32_t>(i);
}

}  // namespace ado
