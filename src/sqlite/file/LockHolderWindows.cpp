#ifdef _WIN32

#include "sqlite/file/LockHolder.h"

namespace sqlite {

// The system does not tell who holds a range of bytes of a file.
std::string lockHolder(const std::string&, Holding) { return {}; }

}  // namespace sqlite

#endif
