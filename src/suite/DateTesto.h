#pragma once

#include <optional>

#include "suite/Servizi.h"
#include "values/Date.h"
#include "values/Export.h"

namespace suite {

/// The date service: reads what values::Date::TryParse reads.
class BUKORVAL_API DateTesto : public ServizioDate {
 public:
  void Data(std::string_view testo) override { data_ = values::Date::TryParse(testo); }
  int CodiceErrore() const override { return data_ ? 0 : 1; }
  std::string DataDB() const override { return data_ ? data_->toSql() : std::string(); }

 private:
  std::optional<values::Date> data_;
};

}  // namespace suite
