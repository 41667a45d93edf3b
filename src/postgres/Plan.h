#pragma once

#include <libpq-fe.h>

#include <string>

#include "postgres/RowReader.h"
#include "postgres/emitter/Translate.h"

namespace postgres {

/// A translated text that the server has prepared under a name, until it is forgotten.
class Plan {
 public:
  Plan(PGconn* server, Translation translation, std::string name);
  ~Plan();
  Plan(const Plan&) = delete;
  Plan& operator=(const Plan&) = delete;

  const Translation& translation() const { return translation_; }
  const std::string& name() const { return name_; }
  RowReader& reader() { return reader_; }

 private:
  PGconn* server_;
  Translation translation_;
  std::string name_;
  RowReader reader_;
  bool prepared_ = false;
};

}  // namespace postgres
