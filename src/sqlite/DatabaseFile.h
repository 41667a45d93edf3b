#pragma once

#include <string>

#include "sqlite/Handle.h"

namespace sqlite {

/// How a connection wants its file.
struct FileWish {
  std::string file;       ///< ":memory:" for a database that lives with the connection
  bool create = false;    ///< make it when it is missing or empty
  bool readOnly = false;  ///< even where it could be written
};

/// Opens a database file of this provider, and changes nothing by it: what another program made, or no program, is
/// refused with its bytes as they are. A file that may not be written, or whose folder may not, is read as it lies on
/// the disk. Throws values::Errore with the reason.
Database openFile(const FileWish& wish);

}  // namespace sqlite
