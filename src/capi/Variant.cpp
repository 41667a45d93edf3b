#include "values/Variant.h"

#include "capi/Column.h"
#include "capi/Guard.h"
#include "capi/Handles.h"
#include "values/Conversion.h"

using namespace capi;
using values::Variant;

namespace {

using ObjectPtr = std::shared_ptr<values::Object>;

bukorval_code put(bukorval_variant* value, const Variant& content) {
  return guarded([&] { given(value, "value").value = content; });
}

/// A new handle on the object of class T that a value refers to.
template <class Handle, class T>
bukorval_code takeObject(const bukorval_variant* value, Handle** handle, std::shared_ptr<T> Handle::*object) {
  return guarded([&] {
    auto found = bukorval::oggetto<T>(given(value, "value").value);
    if (!found) throw values::Errore("The value is of another kind");
    auto made = std::make_unique<Handle>();
    made.get()->*object = std::move(found);
    handOut(std::move(made), handle, "handle");
  });
}

template <class T, class Result>
bukorval_code take(const bukorval_variant* value, Result* result, T (*convert)(const Variant&, char)) {
  return guarded([&] {
    // As bukorval_take_text writes numbers.
    given(result, "result") = static_cast<Result>(convert(given(value, "value").value, '.'));
  });
}

bukorval_kind kindOf(const Variant& value) {
  constexpr bukorval_kind kKinds[] = {BUKORVAL_EMPTY,   BUKORVAL_NULL,   BUKORVAL_INTEGER,
                                      BUKORVAL_INTEGER, BUKORVAL_DOUBLE, BUKORVAL_DECIMAL,
                                      BUKORVAL_DATE,    BUKORVAL_TEXT,   BUKORVAL_BOOLEAN};
  if (value.kind() != values::Kind::Object) return kKinds[static_cast<std::size_t>(value.kind())];
  if (!value.as<ObjectPtr>()) return BUKORVAL_NOTHING;
  if (bukorval::oggetto<ado::Recordset>(value)) return BUKORVAL_RECORDSET;
  return bukorval::oggetto<ado::Dictionary>(value) ? BUKORVAL_DICTIONARY : BUKORVAL_OTHER;
}

}  // namespace

extern "C" {

bukorval_variant* bukorval_variant_new(void) { return new (std::nothrow) bukorval_variant; }
void bukorval_variant_free(bukorval_variant* value) { delete value; }
bukorval_kind bukorval_variant_kind(const bukorval_variant* value) {
  return value ? kindOf(value->value) : BUKORVAL_EMPTY;
}

bukorval_code bukorval_put_empty(bukorval_variant* value) { return put(value, {}); }
bukorval_code bukorval_put_null(bukorval_variant* value) { return put(value, Variant::Null()); }
bukorval_code bukorval_put_nothing(bukorval_variant* value) { return put(value, ObjectPtr()); }
bukorval_code bukorval_put_integer(bukorval_variant* value, int64_t integer) { return put(value, integer); }
bukorval_code bukorval_put_double(bukorval_variant* value, double number) { return put(value, number); }
bukorval_code bukorval_put_boolean(bukorval_variant* value, int truth) { return put(value, truth != 0); }

bukorval_code bukorval_put_decimal(bukorval_variant* value, const char* text) {
  return guarded([&] {
    const auto number = values::Decimal::TryParse(givenText(text, "text"));
    if (!number) throw values::Errore("No decimal number: " + std::string(text));
    given(value, "value").value = *number;
  });
}

bukorval_code bukorval_put_date(bukorval_variant* value, const bukorval_date* date) {
  return guarded([&] {
    const auto& d = given(date, "date");
    given(value, "value").value = values::Date::FromYmd(d.year, d.month, d.day, d.hour, d.minute, d.second);
  });
}

bukorval_code bukorval_put_text(bukorval_variant* value, const char* text, size_t length) {
  return guarded([&] {
    const auto* begin = &given(text, "text");
    given(value, "value").value = length == SIZE_MAX ? std::string(begin) : std::string(begin, length);
  });
}

bukorval_code bukorval_put_recordset(bukorval_variant* value, const bukorval_recordset* set) {
  return guarded([&] { given(value, "value").value = ObjectPtr(given(set, "set").set); });
}

bukorval_code bukorval_put_dictionary(bukorval_variant* value, const bukorval_dictionary* dictionary) {
  return guarded([&] { given(value, "value").value = ObjectPtr(given(dictionary, "dictionary").dictionary); });
}

bukorval_code bukorval_take_integer(const bukorval_variant* value, int64_t* integer) {
  return take(value, integer, values::toInt64);
}
bukorval_code bukorval_take_double(const bukorval_variant* value, double* number) {
  return take(value, number, values::toDouble);
}
bukorval_code bukorval_take_boolean(const bukorval_variant* value, int* truth) {
  return take(value, truth, values::toBool);
}

bukorval_code bukorval_take_date(const bukorval_variant* value, bukorval_date* date) {
  return guarded([&] { given(date, "date") = dateOf(values::toDate(given(value, "value").value)); });
}

bukorval_code bukorval_take_text(bukorval_variant* value, const char** text, size_t* length) {
  return guarded([&] {
    auto& from = given(value, "value");
    auto& result = given(text, "text");
    from.text = values::toPlainText(from.value);
    result = from.text.c_str();
    if (length) *length = from.text.size();
  });
}

bukorval_code bukorval_take_recordset(const bukorval_variant* value, bukorval_recordset** set) {
  return takeObject(value, set, &bukorval_recordset::set);
}
bukorval_code bukorval_take_dictionary(const bukorval_variant* value, bukorval_dictionary** dictionary) {
  return takeObject(value, dictionary, &bukorval_dictionary::dictionary);
}

}  // extern "C"
