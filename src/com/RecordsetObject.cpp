#include "com/RecordsetObject.h"

#include <algorithm>
#include <array>

#include "com/Enumeration.h"
#include "com/Failures.h"
#include "com/Results.h"
#include "values/Conversion.h"
#include "values/Text.h"
#include "values/WideText.h"

namespace com {
namespace {

using values::Variant;

constexpr std::int32_t kRest = -1;  // as many rows as there are
constexpr std::int32_t kFromFirst = 1;

/// The elements of an array of one dimension; a single value is one.
std::vector<Variant> elementsOf(const VARIANT& argument) {
  const auto& value = dereferenced(argument);
  if ((V_VT(&value) & VT_ARRAY) == 0) return {toValue(value)};
  SAFEARRAY* array = (V_VT(&value) & VT_BYREF) != 0 ? *V_ARRAYREF(&value) : V_ARRAY(&value);
  LONG first = 0, last = -1;
  if (!array || ::SafeArrayGetDim(array) != 1) throw CallFailure{DISP_E_TYPEMISMATCH};
  ::SafeArrayGetLBound(array, 1, &first);
  ::SafeArrayGetUBound(array, 1, &last);
  const auto type = static_cast<VARTYPE>(V_VT(&value) & VT_TYPEMASK);
  // A VARIANT and a decimal fill the place of a VARIANT; other values lie where the value of one does.
  const bool whole = type == VT_VARIANT || type == VT_DECIMAL;
  if (::SafeArrayGetElemsize(array) > (whole ? sizeof(VARIANT) : sizeof(LONGLONG)))
    throw CallFailure{DISP_E_TYPEMISMATCH};
  std::vector<Variant> elements;
  for (LONG i = first; i <= last; ++i) {
    OleVariant element;
    void* place = whole ? static_cast<void*>(&element) : &V_I8(&element.get());
    if (FAILED(::SafeArrayGetElement(array, &i, place))) throw CallFailure{DISP_E_TYPEMISMATCH};
    if (type != VT_VARIANT) V_VT(&element.get()) = type;
    elements.push_back(toValue(element.get()));
  }
  return elements;
}

}  // namespace

template <class T>
STDMETHODIMP_(ULONG)
PartObject<T>::AddRef() {
  return whole_.AddRef();
}

template <class T>
STDMETHODIMP_(ULONG)
PartObject<T>::Release() {
  return whole_.Release();
}

template class PartObject<FieldObject>;
template class PartObject<FieldsObject>;

std::span<const Entry<FieldObject>> FieldObject::entries() {
  using F = FieldObject;
  static constexpr Entry<F> kEntries[] = {
      {"Value", "", [](F& f, Arguments&) { return fromValue(f.field_.Value()); },
       [](F& f, Arguments& a) { f.field_.Value(toValue(a.assigned())); }, DISPID_VALUE},
      {"Name", "", [](F& f, Arguments&) { return valueOf(f.field_.Name()); }},
      {"Type", "", [](F& f, Arguments&) { return valueOf(std::int32_t{f.field_.Type()}); }},
      {"DefinedSize", "", [](F& f, Arguments&) { return valueOf(f.field_.DefinedSize()); }},
      {"Attributes", "", [](F& f, Arguments&) { return valueOf(f.field_.Attributes()); }},
      {"Precision", "", [](F& f, Arguments&) { return valueOf(std::int32_t{f.field_.Precision()}); },
       [](F& f, Arguments& a) { f.field_.Precision(values::toInt32(toValue(a.assigned()))); }},
      {"NumericScale", "", [](F& f, Arguments&) { return valueOf(std::int32_t{f.field_.NumericScale()}); },
       [](F& f, Arguments& a) { f.field_.NumericScale(values::toInt32(toValue(a.assigned()))); }},
      {"ActualSize", "",
       [](F& f, Arguments&) {
         return valueOf(static_cast<std::int32_t>(values::length(values::toPlainText(f.field_.Value()))));
       }},
  };
  return kEntries;
}

std::span<const Entry<FieldsObject>> FieldsObject::entries() {
  using F = FieldsObject;
  static constexpr Entry<F> kEntries[] = {
      {"Item", "Index", [](F& f, Arguments& a) { return dispatchValue(f.whole_.object(f.whole_.fieldAt(a, 0))); },
       [](F& f, Arguments& a) { f.whole_.assignField(a); }, DISPID_VALUE},
      {"Count", "",
       [](F& f, Arguments&) { return valueOf(static_cast<std::int32_t>(f.whole_.set_->Fields().Count())); }},
      {"Append", "Name Type DefinedSize? Attrib? FieldValue?",
       [](F& f, Arguments& a) {
         f.whole_.set_->Fields().Append(a.text(0), static_cast<ado::DataTypeEnum>(a.number(1, 0)), a.number(2, 0),
                                        a.number(3, ado::adFldUnspecified));
         return OleVariant();
       }},
      {"_NewEnum", "", [](F& f, Arguments&) { return f.whole_.eachField(); }, nullptr, DISPID_NEWENUM},
  };
  return kEntries;
}

RecordsetObject::RecordsetObject(ado::RecordsetPtr set) : set_(std::move(set)), fields_(*this) {}

RecordsetObject::~RecordsetObject() = default;

ado::Field& RecordsetObject::fieldNamed(const VARIANT& name) {
  auto& fields = set_->Fields();
  const auto& plain = dereferenced(name);
  if (V_VT(&plain) == VT_BSTR && V_BSTR(&plain)) {
    // Most names are ASCII, and short.
    const std::wstring_view wide(V_BSTR(&plain), ::SysStringLen(V_BSTR(&plain)));
    std::array<char, 64> narrow;
    if (wide.size() <= narrow.size() && std::ranges::all_of(wide, [](wchar_t c) { return c < 0x80; })) {
      std::ranges::transform(wide, narrow.begin(), [](wchar_t c) { return static_cast<char>(c); });
      return fields.Item(std::string_view(narrow.data(), wide.size()));
    }
    return fields.Item(values::fromWide(wide));
  }
  const auto value = toValue(plain);
  if (!value.isNumber()) return fields.Item(values::toText(value));
  const auto position = values::toInt32(value);
  return fields.Item(position < 0 ? fields.Count() : static_cast<std::size_t>(position));
}

ado::Field& RecordsetObject::fieldAt(const Arguments& arguments, std::size_t place) {
  if (!arguments.has(place)) throw CallFailure{DISP_E_BADPARAMCOUNT};
  return fieldNamed(*arguments.at(place));
}

Ref<IDispatch> RecordsetObject::object(ado::Field& field) {
  const auto known = std::ranges::find(fieldObjects_, &field, [](const auto& each) { return each.first; });
  if (known != fieldObjects_.end()) return Ref<IDispatch>(known->second.get());
  fieldObjects_.emplace_back(&field, std::make_unique<FieldObject>(*this, field));
  return Ref<IDispatch>(fieldObjects_.back().second.get());
}

OleVariant RecordsetObject::fieldOrFields(Arguments& arguments) {
  return dispatchValue(arguments.has(0) ? object(fieldAt(arguments, 0)) : Ref<IDispatch>(&fields_));
}

void RecordsetObject::assignField(Arguments& arguments) { fieldAt(arguments, 0).Value(toValue(arguments.assigned())); }

OleVariant RecordsetObject::eachField() {
  std::vector<OleVariant> objects;
  for (std::size_t i = 0; i < set_->Fields().Count(); ++i)
    objects.push_back(dispatchValue(object(set_->Fields().Item(i))));
  return enumerationValue(std::move(objects));
}

OleVariant RecordsetObject::getRows(Arguments& arguments) {
  std::vector<ado::Field*> wanted;
  if (arguments.has(2))
    for (const auto& name : elementsOf(*arguments.at(2))) wanted.push_back(&fieldNamed(fromValue(name).get()));
  else
    for (std::size_t i = 0; i < set_->Fields().Count(); ++i) wanted.push_back(&set_->Fields().Item(i));
  if (arguments.number(1, 0) == kFromFirst) set_->MoveFirst();
  auto left = arguments.number(0, kRest);
  if (left < kRest || left == 0) throw values::Errore("GetRows takes a number of rows, or -1 for the rest");
  std::vector<std::vector<OleVariant>> columns(wanted.size());
  // Reading a value where there is no row says so.
  do {
    for (std::size_t i = 0; i < wanted.size(); ++i) columns[i].push_back(fromValue(wanted[i]->Value()));
    set_->MoveNext();
  } while (--left != 0 && !set_->Eof());
  return tableOf(std::move(columns));
}

void RecordsetObject::move(std::int32_t rows) {
  for (; rows > 0 && !set_->Eof(); --rows) set_->MoveNext();
  for (; rows < 0 && !set_->Bof(); ++rows) set_->MovePrevious();
}

/// A row that comes with its values is added as a whole.
void RecordsetObject::addRow(Arguments& arguments) {
  set_->AddNew();
  if (!arguments.has(0)) return;
  try {
    assignRow(arguments);
    set_->Update();
  } catch (...) {
    set_->CancelUpdate();
    throw;
  }
}

/// AddNew and Update take names and values: one of each, or two arrays.
void RecordsetObject::assignRow(Arguments& arguments) {
  if (!arguments.has(0)) return;
  const auto names = elementsOf(*arguments.at(0));
  if (!arguments.has(1)) throw CallFailure{DISP_E_BADPARAMCOUNT};
  const auto cells = elementsOf(*arguments.at(1));
  if (names.size() != cells.size()) throw values::Errore("Type mismatch: as many values as fields are needed");
  for (std::size_t i = 0; i < names.size(); ++i) fieldNamed(fromValue(names[i]).get()).Value(cells[i]);
}

std::span<const Entry<RecordsetObject>> RecordsetObject::entries() {
  using R = RecordsetObject;
  static constexpr Entry<R> kEntries[] = {
      {"Fields", "Index?", [](R& r, Arguments& a) { return r.fieldOrFields(a); },
       [](R& r, Arguments& a) { r.assignField(a); }, DISPID_VALUE},
      {"Collect", "Index", [](R& r, Arguments& a) { return fromValue(r.fieldAt(a, 0).Value()); },
       [](R& r, Arguments& a) { r.assignField(a); }},
      {"BOF", "", [](R& r, Arguments&) { return valueOf(r.set_->Bof()); }},
      {"EOF", "", [](R& r, Arguments&) { return valueOf(r.set_->Eof()); }},
      {"RecordCount", "", [](R& r, Arguments&) { return valueOf(r.set_->RecordCount()); }},
      {"State", "", [](R& r, Arguments&) { return valueOf(std::int32_t{r.set_->State()}); }},
      {"CursorLocation", "", [](R& r, Arguments&) { return valueOf(r.set_->CursorLocation); },
       [](R& r, Arguments& a) { r.set_->CursorLocation = values::toInt32(toValue(a.assigned())); }},
      {"CursorType", "", [](R& r, Arguments&) { return valueOf(r.set_->CursorType); },
       [](R& r, Arguments& a) { r.set_->CursorType = values::toInt32(toValue(a.assigned())); }},
      {"LockType", "", [](R& r, Arguments&) { return valueOf(r.set_->LockType); },
       [](R& r, Arguments& a) { r.set_->LockType = values::toInt32(toValue(a.assigned())); }},
      // Without a filter it is the number 0, which also takes one away.
      {"Filter", "", [](R& r, Arguments&) { return r.set_->Filter().empty() ? valueOf(0) : valueOf(r.set_->Filter()); },
       [](R& r, Arguments& a) {
         const auto criteria = toValue(a.assigned());
         if (criteria.isNumber() && values::toInt32(criteria) != 0) throw values::Errore("Filter takes criteria or 0");
         r.set_->Filter(criteria.isNumber() ? std::string() : values::toText(criteria));
       }},
      {"Open", "Source? ActiveConnection? CursorType? LockType? Options?",
       [](R& r, Arguments& a) {
         if (a.count() > 0 && !a.value(0).isEmpty())
           throw values::Errore("A record set without a source is what can be opened: Execute of a connection reads");
         r.set_->Open();
         return OleVariant();
       }},
      {"Close", "", [](R& r, Arguments&) { return r.set_->Close(), OleVariant(); }},
      {"MoveFirst", "", [](R& r, Arguments&) { return r.set_->MoveFirst(), OleVariant(); }},
      {"MoveLast", "", [](R& r, Arguments&) { return r.set_->MoveLast(), OleVariant(); }},
      {"MoveNext", "", [](R& r, Arguments&) { return r.set_->MoveNext(), OleVariant(); }},
      {"MovePrevious", "", [](R& r, Arguments&) { return r.set_->MovePrevious(), OleVariant(); }},
      {"Move", "NumRecords", [](R& r, Arguments& a) { return r.move(a.number(0, 0)), OleVariant(); }},
      {"AddNew", "FieldList? Values?", [](R& r, Arguments& a) { return r.addRow(a), OleVariant(); }},
      {"Update", "Fields? Values?", [](R& r, Arguments& a) { return r.assignRow(a), r.set_->Update(), OleVariant(); }},
      {"CancelUpdate", "", [](R& r, Arguments&) { return r.set_->CancelUpdate(), OleVariant(); }},
      {"Delete", "AffectRecords?", [](R& r, Arguments&) { return r.set_->Delete(), OleVariant(); }},
      {"Clone", "LockType?", [](R& r, Arguments&) { return dispatchValue(objectOf(r.set_->Clone())); }},
      {"GetRows", "Rows? Start? Fields?", [](R& r, Arguments& a) { return r.getRows(a); }},
  };
  return kEntries;
}

}  // namespace com
