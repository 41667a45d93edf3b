#pragma once

#include <string>

#include "odbc/Api.h"

namespace odbc {

/// An environment, connection or statement handle of the driver manager, freed with its owner.
class Handle {
 public:
  Handle() = default;
  /// Throws values::Errore when the driver manager has none to give.
  Handle(SQLSMALLINT type, SQLHANDLE parent);
  ~Handle();
  Handle(Handle&& other) noexcept;
  Handle& operator=(Handle&& other) noexcept;

  SQLHANDLE get() const { return handle_; }
  explicit operator bool() const { return handle_ != SQL_NULL_HANDLE; }
  void reset();

  /// Throws values::Errore with the driver's description unless the call on this handle went well.
  void check(SQLRETURN outcome) const;
  /// The driver's description of the last failure of a call on this handle.
  std::string description() const;

 private:
  SQLSMALLINT type_ = 0;
  SQLHANDLE handle_ = SQL_NULL_HANDLE;
};

}  // namespace odbc
