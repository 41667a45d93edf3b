#pragma once

#include <cstdint>

namespace ado {

/// Data type codes of fields; the values are the data-access standard's.
enum DataTypeEnum : std::int32_t {
  adEmpty = 0,
  adSmallInt = 2,
  adInteger = 3,
  adDouble = 5,
  adDate = 7,
  adBoolean = 11,
  adVariant = 12,
  adDecimal = 14,
  adBigInt = 20,
  adChar = 129,
  adWChar = 130,
  adNumeric = 131,
  adDBTimeStamp = 135,
  adVarChar = 200,
  adVarWChar = 202,
};

enum FieldAttributeEnum : std::int32_t { adFldUnspecified = -1, adFldIsNullable = 32 };
enum CursorLocationEnum : std::int32_t { adUseServer = 2, adUseClient = 3 };
enum CursorTypeEnum : std::int32_t { adOpenUnspecified = -1, adOpenDynamic = 2, adOpenStatic = 3 };
enum ConnectModeEnum : std::int32_t { adModeShareExclusive = 12 };
enum IsolationLevelEnum : std::int32_t { adXactSerializable = 1048576 };
enum ObjectStateEnum : std::int32_t { adStateClosed = 0, adStateOpen = 1 };

}  // namespace ado
