#pragma once

#include <string>

/// What the standard library does not know of files. Each throws values::Errore with the system's reason, and no
/// more.
namespace sqlite {

/// Makes an empty file, readable as the user's file mask says. @return false when the name is taken already.
bool createFile(const std::string& file);
/// Gives a file another name in its folder. @return false when that name is taken; nothing is then changed.
bool moveToFreeName(const std::string& from, const std::string& to);
/// Returns when the contents, and the name in its folder, would outlive a power failure.
void syncFile(const std::string& file);
/// This user may write a file, or make files in a folder.
bool mayWrite(const std::string& path);

}  // namespace sqlite
