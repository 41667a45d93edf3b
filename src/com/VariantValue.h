#pragma once

#include "com/Com.h"
#include "values/Variant.h"

/// Values of the system's VARIANT and ours. Every subtype is read, by value or by reference.
namespace com {

/// The innermost value of one or more references.
const VARIANT& dereferenced(const VARIANT& value);
/// An argument that was left out.
bool isMissing(const VARIANT& value);

/// A plain value; of an object its default property, as of a field. A missing argument is Empty.
/// Throws CallFailure (type mismatch) for arrays, records, error codes and what our values do not reach.
values::Variant toValue(const VARIANT& value);
/// Objects come out by their dispatch interface: a client's own object as that very object.
OleVariant fromValue(const values::Variant& value);

/// Puts a value where a reference argument points, in the type it points to; nothing for an argument by value.
/// @return the outcome of the conversion.
HRESULT writeBack(VARIANT& argument, OleVariant value);

}  // namespace com
