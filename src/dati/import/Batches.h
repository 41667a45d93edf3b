#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "ado/connection/Connection.h"
#include "values/Variant.h"

namespace bukorval::dati {

/// An import of movements that has a name.
struct Batch {
  values::Variant name, kind;
  values::Variant rows;           ///< lines of the file
  values::Variant registrations;  ///< that still are as it brought them
  values::Variant when;
};

/// A company's imports with names (BK01_IMPORTI, BK02_REGIMPORTI). A database that lacks the tables has none.
/// Names are told apart as the database compares texts. Opens a transaction only where it says so.
class Batches {
 public:
  Batches(ado::Connection& connection, values::Variant company);

  /// Makes the tables where they are missing.
  void prepare();
  bool has(const std::string& name) const { return !identifierOf(name).isEmpty(); }
  /// In the order in which they were imported.
  std::vector<Batch> all() const;

  /// How many registrations still are as an import brought them. Refused when there is no such import.
  std::int64_t registrationsOf(const std::string& name) const;

  /// Notes an import of now. The tables must be there.
  void add(const std::string& name, const std::string& kind, std::size_t rows,
           const std::vector<std::int64_t>& registrations);
  /// A registration that is replaced belongs to its import no longer.
  void release(std::int64_t registration);
  /// Deletes the registrations of an import with their lines, and its name, in one transaction. Refused when there is
  /// no such import. Writes CG41_PRIMANOTA and CG42_MOVCONT too.
  void remove(const std::string& name);

 private:
  bool kept() const;  ///< whether the tables are there
  /// BK01_ID, Empty when there is no such import.
  values::Variant identifierOf(const std::string& name) const;
  /// Refused when there is no such import.
  values::Variant require(const std::string& name) const;

  ado::Connection& connection_;
  values::Variant company_;
  mutable std::optional<bool> kept_;
};

}  // namespace bukorval::dati
