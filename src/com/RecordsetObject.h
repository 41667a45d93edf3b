#pragma once

#include <memory>
#include <vector>

#include "ado/recordset/Recordset.h"
#include "com/TableObject.h"

namespace com {

class RecordsetObject;

/// A part of a record set object: it lives as long as the whole and counts its references there.
template <class T>
class PartObject : public TableObject<T> {
 public:
  explicit PartObject(RecordsetObject& whole) : whole_(whole) {}
  STDMETHODIMP_(ULONG) AddRef() override;
  STDMETHODIMP_(ULONG) Release() override;

 protected:
  RecordsetObject& whole_;
};

/// A field: its value in the current row is the default property.
class FieldObject : public PartObject<FieldObject> {
 public:
  FieldObject(RecordsetObject& whole, ado::Field& field) : PartObject(whole), field_(field) {}
  ~FieldObject() override = default;
  static std::span<const Entry<FieldObject>> entries();

 private:
  ado::Field& field_;
};

class FieldsObject : public PartObject<FieldsObject> {
 public:
  using PartObject::PartObject;
  ~FieldsObject() override = default;
  static std::span<const Entry<FieldsObject>> entries();
};

/// A record set under the names that a data-access client knows. Its fields are the default property, so that
/// `rs("NAME")` is a field.
class RecordsetObject : public TableObject<RecordsetObject> {
 public:
  explicit RecordsetObject(ado::RecordsetPtr set);
  ~RecordsetObject() override;
  static std::span<const Entry<RecordsetObject>> entries();
  std::shared_ptr<values::Object> STDMETHODCALLTYPE inside() override { return set_; }

 private:
  template <class T>
  friend class PartObject;
  friend class FieldsObject;
  /// By name or position.
  ado::Field& fieldAt(const Arguments& arguments, std::size_t place);
  ado::Field& fieldNamed(const VARIANT& name);
  Ref<IDispatch> object(ado::Field& field);
  OleVariant fieldOrFields(Arguments& arguments);
  void assignField(Arguments& arguments);
  OleVariant eachField();
  OleVariant getRows(Arguments& arguments);
  void move(std::int32_t rows);
  void addRow(Arguments& arguments);
  void assignRow(Arguments& arguments);

  ado::RecordsetPtr set_;
  FieldsObject fields_;
  std::vector<std::pair<ado::Field*, std::unique_ptr<FieldObject>>> fieldObjects_;
};

}  // namespace com
