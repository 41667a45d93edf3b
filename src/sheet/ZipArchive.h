#pragma once

#include <zip.h>

#include <memory>
#include <string>

namespace bukorval::sheet {

/// The parts of a ZIP file, each read up to a bound whatever the file says of its size.
class ZipArchive {
 public:
  /// Throws dati::Refused when it is none.
  explicit ZipArchive(const std::string& file);
  /// Throws dati::Refused for a part that is missing, damaged, encrypted or too large.
  std::string read(const std::string& part) const;
  bool has(const std::string& part) const;

 private:
  [[noreturn]] void refuse(const std::string& why) const;

  std::string file_;
  std::unique_ptr<zip_t, void (*)(zip_t*)> zip_;
};

}  // namespace bukorval::sheet
