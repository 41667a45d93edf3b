#pragma once

#include <stdexcept>
#include <string>

#include "values/Export.h"

namespace values {

/// A run-time error with a description fit for a user. Every folder throws this one type;
/// the description carries no final punctuation, because procedure names are appended to it.
class BUKORVAL_API Errore : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace values
