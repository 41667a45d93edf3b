#pragma once

#include "ado/recordset/Recordset.h"
#include "support/Test.h"

namespace testing_support {

/// The fields of a set: "NAME type(length), NAME decimal(digits,decimals)!, …", with "!" where Null is refused.
inline std::string described(const ado::Recordset& set) {
  static const std::map<ado::DataTypeEnum, std::string> names = {
      {ado::adSmallInt, "smallint"}, {ado::adBigInt, "bigint"},        {ado::adBoolean, "bit"},
      {ado::adDouble, "float"},      {ado::adDBTimeStamp, "datetime"}, {ado::adDecimal, "decimal"},
      {ado::adChar, "char"},         {ado::adVarChar, "varchar"},      {ado::adWChar, "nchar"},
      {ado::adVarWChar, "nvarchar"}};
  std::string text;
  for (std::size_t i = 0; i < set.Fields().Count(); ++i) {
    const auto& field = set.Fields().Item(i);
    const auto name = names.find(field.Type());
    text += (i == 0 ? "" : ", ") + field.Name() + " " + (name == names.end() ? "?" : name->second);
    if (field.Type() == ado::adDecimal)
      text += "(" + std::to_string(field.Precision()) + "," + std::to_string(field.NumericScale()) + ")";
    else if (name != names.end() && name->second.ends_with("char"))
      text += "(" + std::to_string(field.DefinedSize()) + ")";
    if (field.Attributes() != ado::adFldIsNullable) text += "!";
  }
  return text;
}

}  // namespace testing_support
