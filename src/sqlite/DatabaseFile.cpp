#include "sqlite/DatabaseFile.h"

#include <array>
#include <cctype>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <functional>
#include <mutex>
#include <set>
#include <string_view>
#include <system_error>

#include "sqlite/file/Platform.h"
#include "values/Errore.h"
#include "values/FileName.h"

namespace sqlite {
namespace {

namespace fs = std::filesystem;
using values::Errore;

/// Stands in the head of every file made here: "BKOR".
constexpr std::int32_t kApplication = 0x424B4F52;

std::int32_t number(sqlite3* database, std::string_view query) {
  const auto statement = prepare(database, query);
  const int outcome = sqlite3_step(statement.get());
  if (outcome != SQLITE_ROW && outcome != SQLITE_DONE) throwFailure(database);
  return outcome == SQLITE_ROW ? sqlite3_column_int(statement.get(), 0) : 0;
}

/// The file as it lies on the disk: no log, no journal, no locks, and nothing is made beside it.
Database openUntouched(const fs::path& file) {
  constexpr const char* kHexDigits = "0123456789abcdef";
  const auto name = fs::absolute(file).generic_u8string();
  std::string address = name.starts_with(u8'/') ? "file://" : "file:///";
  for (const auto byte : name) {
    if (std::isalnum(byte) != 0 || byte == u8'/')
      address += static_cast<char>(byte);
    else
      address.append(1, '%').append(1, kHexDigits[byte / 16]).append(1, kHexDigits[byte % 16]);
  }
  return open(address + "?immutable=1", SQLITE_OPEN_READONLY | SQLITE_OPEN_URI);
}

fs::path beside(fs::path file, const char* ending) { return file += ending; }

bool hasContent(const fs::path& file) {
  std::error_code none;
  const auto size = fs::file_size(file, none);
  return !none && size > 0;
}

bool hasUnmergedChanges(const fs::path& file) {
  return hasContent(beside(file, "-wal")) || hasContent(beside(file, "-journal"));
}

/// Read as bytes: a file whose log was not merged to the end need not be whole by itself.
std::int32_t applicationInHead(const fs::path& file) {
  constexpr std::streamoff kPlace = 68;
  std::array<char, 4> bytes{};
  std::ifstream in(file, std::ios::binary);
  if (!in.seekg(kPlace).read(bytes.data(), bytes.size())) return 0;
  std::uint32_t application = 0;
  for (const char byte : bytes) application = application << 8 | static_cast<unsigned char>(byte);
  return static_cast<std::int32_t>(application);
}

/// Files whose head does not say so (old ones) are told by the order of their texts.
bool isOurs(sqlite3* database) {
  const auto application = number(database, "PRAGMA application_id");
  return application == kApplication ||
         (application == 0 &&
          number(database, "SELECT 1 FROM sqlite_master WHERE sql GLOB '*COLLATE BK_*' LIMIT 1") == 1);
}

bool hasOurTexts(const fs::path& file) try { return isOurs(openUntouched(file).get()); } catch (const Errore&) {
  // Then the log makes it whole, if anything does.
  if (!hasUnmergedChanges(file)) throw;
  return true;
}

constexpr const char* kOthers = "The database was made by another program";

void requireOurs(const fs::path& file) {
  if (fs::file_size(file) == 0) throw Errore("The file is empty");
  if (applicationInHead(file) != kApplication && !hasOurTexts(file)) throw Errore(kOthers);
}

/// The files that this process has opened. It looks into them through the engine alone from then on: when it closes a
/// handle of its own, the system drops the locks of all its connections to that file, and another process that believes
/// itself alone takes the log away from under them.
class OpenedFiles {
 public:
  /// @return whether this was the first time; then it has been looked into, while nobody else here opened it.
  bool add(const fs::path& file, const std::function<void()>& look) {
    const std::scoped_lock lock(mutex_);
    if (names_.contains(file)) return false;
    look();
    names_.insert(file);
    return true;
  }

 private:
  std::mutex mutex_;
  std::set<fs::path> names_;
};

OpenedFiles& openedFiles() {
  static OpenedFiles files;
  return files;
}

/// A log can be read beside its index; where that is gone, only by whoever may make a new one.
void requireIndex(const fs::path& file) {
  if (hasContent(beside(file, "-wal")) && !fs::exists(beside(file, "-shm")) &&
      !mayWrite(values::nameOf(file.parent_path())))
    throw Errore("Its log, " + values::nameOf(file.filename()) +
                 "-wal, must be merged first by somebody who may write in its folder");
}

/// Holds a connection to reading. One that the engine opens for reading only leaves the log and its index behind. A
/// table is made by an insert into the master table; an update of that alone is how the engine looks at columns.
int denyWriting(void*, int action, const char* table, const char*, const char* database, const char*) {
  if (action == SQLITE_ALTER_TABLE) return SQLITE_DENY;
  const bool writes = action == SQLITE_INSERT || action == SQLITE_DELETE ||
                      (action == SQLITE_UPDATE && std::string_view(table) != "sqlite_master");
  return writes && database != nullptr && std::string_view(database) == "main" ? SQLITE_DENY : SQLITE_OK;
}

Database openExisting(const FileWish& wish) {
  const auto file = fs::canonical(values::pathOf(wish.file));
  const bool first = openedFiles().add(file, [&] { requireOurs(file); });
  const bool writable = mayWrite(values::nameOf(file)) && mayWrite(values::nameOf(file.parent_path()));
  if (!writable && !hasUnmergedChanges(file)) return openUntouched(file);
  requireIndex(file);
  auto database = open(wish.file, SQLITE_OPEN_READWRITE);
  if (!first && !isOurs(database.get())) throw Errore(kOthers);
  if (wish.readOnly) sqlite3_set_authorizer(database.get(), denyWriting, nullptr);
  return database;
}

Database makeFile(const std::string& file) {
  auto database = open(file, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
  run(database.get(), ("PRAGMA application_id = " + std::to_string(kApplication)).c_str());
  run(database.get(), "PRAGMA journal_mode = WAL");
  openedFiles().add(fs::canonical(values::pathOf(file)), [] {});
  return database;
}

}  // namespace

Database openFile(const FileWish& wish) {
  const auto& file = wish.file;
  if (file == ":memory:") return open(file, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_MEMORY);
  std::error_code unknown;
  const auto path = values::pathOf(file);
  const auto status = fs::status(path, unknown);
  const bool missing = status.type() == fs::file_type::not_found;
  if (missing && !wish.create) throw Errore("it does not exist (Create=True makes a new one)");
  if (!missing && !fs::is_regular_file(status)) throw Errore(unknown ? unknown.message() : "It is no regular file");
  if (missing || (wish.create && fs::file_size(path) == 0)) return makeFile(file);
  return openExisting(wish);
}

}  // namespace sqlite
