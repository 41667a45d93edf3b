#include "sheet/ZipArchive.h"

#include <array>

#include "dati/Failure.h"
#include "language/Language.h"

namespace bukorval::sheet {
namespace {

/// A sheet of 50,000 cards has about as much.
constexpr std::size_t kMostBytes = 64U << 20U;

}  // namespace

ZipArchive::ZipArchive(const std::string& file)
    : file_(file), zip_(zip_open(file.c_str(), ZIP_RDONLY, nullptr), zip_discard) {
  if (!zip_) refuse(tr("is no spreadsheet (.xlsx), or is damaged"));
}

bool ZipArchive::has(const std::string& part) const { return zip_name_locate(zip_.get(), part.c_str(), 0) >= 0; }

std::string ZipArchive::read(const std::string& part) const {
  if (!has(part)) refuse(tr("is no spreadsheet (.xlsx): it has no part {}", part));
  const std::unique_ptr<zip_file_t, int (*)(zip_file_t*)> in(zip_fopen(zip_.get(), part.c_str(), 0), zip_fclose);
  if (!in) refuse(tr("is damaged or encrypted: the part {} cannot be read", part));
  std::string content;
  std::array<char, 65536> block{};
  for (auto count = zip_fread(in.get(), block.data(), block.size()); count != 0;
       count = zip_fread(in.get(), block.data(), block.size())) {
    if (count < 0) refuse(tr("is damaged: the part {} cannot be read", part));
    content.append(block.data(), static_cast<std::size_t>(count));
    if (content.size() > kMostBytes) refuse(tr("is too large: the part {} has more than 64 MiB", part));
  }
  return content;
}

void ZipArchive::refuse(const std::string& why) const { throw dati::Refused(file_ + " " + why); }

}  // namespace bukorval::sheet
