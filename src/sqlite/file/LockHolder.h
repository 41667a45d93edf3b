#pragma once

#include <string>

namespace sqlite {

enum class Holding { ForWriting, Open };

/// Which other run holds a database file against writers, or has it open at all: "bukorval duplicate (PID 4711)",
/// as far as the system tells; "" when it does not, or when nobody does. Opens neither the file nor its log's index:
/// closing either would give up the locks that this process has on them.
std::string lockHolder(const std::string& file, Holding holding);

}  // namespace sqlite
