#pragma once

#include <string>

namespace sqlite {

/// A database file that comes into being whole: it is written under a passing name in the folder of its own name, and
/// gets that name only when it is done and nobody else has taken it. A program that is killed leaves at most a file
/// NAME.new-…, which is in nobody's way.
class NewFile {
 public:
  /// Throws values::Errore where no file can be made.
  explicit NewFile(std::string name);
  /// Removes what was not placed.
  ~NewFile();
  NewFile(const NewFile&) = delete;
  NewFile& operator=(const NewFile&) = delete;

  /// The passing name of the file, which is empty at first.
  const std::string& workName() const { return work_; }
  /// Gives the file its own name; no connection may be open on it any more. Returns when it would outlive a power
  /// failure. Throws values::Errore when what was written did not get into the file.
  /// @return false when the name is taken; who holds it is left alone.
  bool place();

 private:
  std::string name_, work_;
};

/// Something has this name, be it a link to nowhere.
bool isTaken(const std::string& name);

/// What the engine keeps beside a database file: the log, its index and the journal of a file that has no log.
inline constexpr const char* kCompanions[] = {"-wal", "-shm", "-journal"};
/// The first companion that lies beside a name, "" for none. Without its database it belongs to one that is gone, and
/// would be taken for a part of the next database of that name.
std::string companionOf(const std::string& name);

}  // namespace sqlite
