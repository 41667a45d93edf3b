#pragma once

#include "ado/connection/Connection.h"
#include "values/Variant.h"

namespace bukorval::dati {

struct NewCompany {
  values::Variant code, name;
  /// Levels of an account code, 2 to 5.
  int accountStructure = 3;
  /// Its one accounting year, from January to December.
  int year = 0;
};

/// Makes a company with one accounting year and nothing else, in one transaction. Writes CG10_GRUPPIPDC,
/// CG18_ANADITTE and CG19_ANADITTAESER.
void createCompany(ado::Connection& connection, const NewCompany& company);

}  // namespace bukorval::dati
