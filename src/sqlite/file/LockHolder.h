#pragma once

#include <string>

namespace sqlite {

/// Which run holds a database file against writers: "bukorval duplicate (process 4711)", as far as the system tells;
/// "" when it does not, or when nobody holds it. Opens neither the file nor its log's index: closing either would
/// give up the locks that this process has on them.
std::string lockHolder(const std::string& file);

}  // namespace sqlite
