#include "dati/import/TextFile.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sstream>
#include <system_error>
#include <utility>

#include "dati/Failure.h"
#include "dati/import/Encoding.h"
#include "language/Language.h"
#include "values/FileName.h"

namespace bukorval::dati {
namespace {

constexpr std::size_t kBlock = std::size_t{1} << 18;
constexpr std::size_t kMarkSize = 2;

bool isMark(std::string_view bytes) { return bytes == "\xFF\xFE" || bytes == "\xFE\xFF"; }

}  // namespace

TextBlocks::TextBlocks(std::unique_ptr<std::istream> bytes, std::string_view encoding)
    : bytes_(std::move(bytes)), encoding_(encoding), wide_(encoding == "utf-16") {}

bool TextBlocks::next(std::string& text) {
  std::size_t end = 0;
  while (end == 0) {
    readMore();
    end = *bytes_ ? endOfLines() : pending_.size();
    if (pending_.empty()) return false;
  }
  try {
    text = toUtf8(mark_ + pending_.substr(0, end), encoding_);
  } catch (const EncodingFault& fault) {
    throw EncodingFault(lines_ + fault.line, fault.what());
  }
  if (wide_ && mark_.empty() && isMark(pending_.substr(0, kMarkSize))) mark_ = pending_.substr(0, kMarkSize);
  pending_.erase(0, end);
  lines_ += lineEnds(text);
  fingerprint_ = fingerprint_ * 31 + std::hash<std::string_view>()(text);
  return true;
}

/// A line that has no end yet is doubled, so that a long one is not looked at again and again.
void TextBlocks::readMore() {
  const auto size = pending_.size(), more = std::max(kBlock, size);
  pending_.resize(size + more);
  bytes_->read(pending_.data() + size, static_cast<std::streamsize>(more));
  pending_.resize(size + static_cast<std::size_t>(bytes_->gcount()));
}

/// A line feed ends one, or a carriage return that has none behind it.
std::size_t TextBlocks::endOfLines() const {
  const std::string_view bytes = pending_;
  if (!wide_) {
    if (const auto feed = bytes.rfind('\n'); feed != std::string_view::npos) return feed + 1;
    const auto end = bytes.empty() ? std::string_view::npos : bytes.substr(0, bytes.size() - 1).rfind('\r');
    return end == std::string_view::npos ? 0 : end + 1;
  }
  for (auto end = bytes.size() / 2 * 2; end >= 2; end -= 2)
    if (const auto unit = bytes.substr(end - 2, 2);
        unit == std::string_view("\n\0", 2) || unit == std::string_view("\0\n", 2))
      return end;
  return 0;
}

TextFile::TextFile(const std::string& name, std::string_view encoding) : name_(name), encoding_(encoding) {
  const auto path = values::pathOf(name);
  std::error_code ignored;
  std::ifstream in(path, std::ios::binary);
  if (!in || std::filesystem::is_directory(path, ignored)) throw Refused(tr("Cannot open {}", name));
  held_ = !std::filesystem::is_regular_file(path, ignored);
  if (!held_) return;
  std::ostringstream content;
  content << in.rdbuf();
  content_ = std::move(content).str();
}

TextBlocks TextFile::begin() const {
  if (held_) return {std::make_unique<std::istringstream>(content_), encoding_};
  auto in = std::make_unique<std::ifstream>(values::pathOf(name_), std::ios::binary);
  if (!*in) throw Refused(tr("Cannot open {}", name_));
  return {std::move(in), encoding_};
}

std::size_t TextFile::check() {
  auto blocks = begin();
  std::size_t feeds = 0;
  for (std::string text; blocks.next(text);) feeds += static_cast<std::size_t>(std::ranges::count(text, '\n'));
  fingerprint_ = blocks.fingerprint();
  return feeds;
}

}  // namespace bukorval::dati
