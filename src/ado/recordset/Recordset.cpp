#include "ado/recordset/Recordset.h"

#include <utility>

#include "ado/Messages.h"
#include "ado/filter/FilterParser.h"
#include "ado/recordset/RowCursor.h"
#include "values/Errore.h"
#include "values/Text.h"

namespace ado {

using values::Errore;
using values::Variant;

Recordset::Recordset() : cursor_(std::make_unique<RowCursor>()), fields_(std::make_unique<ado::Fields>(*this)) {}

Recordset::~Recordset() = default;

RowCursor& Recordset::opened() const {
  if (!cursor_->shared()) throw Errore(kObjectClosed);
  return *cursor_;
}

RowCursor& Recordset::settled() {
  auto& cursor = opened();
  if (cursor.editing()) Update();
  return cursor;
}

void Recordset::Open() {
  if (State() == adStateOpen) throw Errore(kObjectOpen);
  if (fields_->Count() == 0) throw Errore("A record set without a source is opened after its fields are appended");
  for (const auto& field : fields_->fields_)
    if (field->precision_ > 0 && field->scale_ > field->precision_)
      throw Errore("Field " + field->Name() + ": the scale is greater than the precision");
  attach(std::make_shared<SharedRows>(fields_->Count()));
}

void Recordset::Close() { opened().detach(); }

ObjectStateEnum Recordset::State() const { return cursor_->shared() ? adStateOpen : adStateClosed; }

bool Recordset::Bof() const {
  const auto place = opened().place();
  return place == RowCursor::Place::BeforeFirst || place == RowCursor::Place::Nowhere;
}

bool Recordset::Eof() const {
  const auto place = opened().place();
  return place == RowCursor::Place::AfterLast || place == RowCursor::Place::Nowhere;
}

std::int32_t Recordset::RecordCount() const { return static_cast<std::int32_t>(opened().count()); }

void Recordset::MoveFirst() { settled().moveFirst(); }
void Recordset::MoveLast() { settled().moveLast(); }
void Recordset::MoveNext() { settled().moveNext(); }
void Recordset::MovePrevious() { settled().movePrevious(); }

void Recordset::AddNew() { settled().beginRow(); }

void Recordset::Update() {
  auto& cursor = opened();
  if (!cursor.editing()) return;
  // Set values have been checked; the fields of a new row that were never set have not.
  for (const auto* field : required_)
    if (cursor.cells()[field->position_].isNull()) field->accept(Variant::Null());
  cursor.update();
}

void Recordset::CancelUpdate() {
  auto& cursor = opened();
  if (cursor.editing()) cursor.cancel();
}

void Recordset::Delete() { opened().remove(); }

void Recordset::Filter(std::string_view criteria) {
  opened();
  if (values::trim(criteria).empty()) return settled().show(std::nullopt, {});
  auto condition = parseFilter(criteria, [this](std::string_view field) { return column(field); });
  settled().show(std::move(condition), std::string(criteria));
}

const std::string& Recordset::Filter() const { return cursor_->filterText(); }

RecordsetPtr Recordset::Clone() const {
  auto& cursor = opened();
  auto clone = std::make_shared<Recordset>();
  clone->CursorLocation = CursorLocation;
  clone->CursorType = CursorType;
  clone->LockType = LockType;
  for (const auto& field : fields_->fields_) {
    auto& copy = clone->fields_->Append(field->name_, field->Type(), field->definedSize_, field->attributes_);
    copy.precision_ = field->precision_;
    copy.scale_ = field->scale_;
  }
  clone->attach(cursor.shared());
  clone->cursor_->show(std::nullopt, {});
  return clone;
}

std::vector<std::vector<Variant>> Recordset::GetRows(std::string_view field) {
  std::vector<const Field*> wanted;
  if (field.empty()) {
    for (const auto& each : fields_->fields_) wanted.push_back(each.get());
  } else {
    wanted.push_back(&fields_->Item(field));
  }
  auto& cursor = settled();
  if (cursor.cells().empty()) cursor.refuseNoRow();
  std::vector<std::vector<Variant>> columns(wanted.size());
  for (; cursor.place() == RowCursor::Place::OnRow; cursor.moveNext())
    for (std::size_t i = 0; i < wanted.size(); ++i) columns[i].push_back(cursor.cells()[wanted[i]->position_]);
  return columns;
}

std::span<Variant> Recordset::AppendRow() { return opened().shared()->rows.append(); }

void Recordset::attach(std::shared_ptr<SharedRows> rows) {
  required_.clear();
  for (const auto& field : fields_->fields_)
    if (!field->isNullable()) required_.push_back(field.get());
  cursor_->attach(std::move(rows));
}

FilterColumn Recordset::column(std::string_view field) const {
  const auto& found = fields_->Item(field);
  return {found.name_, found.position_, found.type_};
}

}  // namespace ado
