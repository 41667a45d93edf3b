#include "dati/import/CsvReader.h"

#include "values/Text.h"

namespace bukorval::dati {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

}  // namespace

void CsvReader::readHeader() {
  if (hasMore() && text_.starts_with(kByteOrderMark)) position_ = kByteOrderMark.size();
  if (!read(header_)) {
    header_.clear();
    return;
  }
  const auto& first = header_.front();
  if (header_.size() == 1 && first.find(';') != std::string::npos) {
    separator_ = ';';
    std::vector<std::string> fields(1);
    for (const char c : first) {
      if (c == ';') {
        fields.emplace_back();
      } else {
        fields.back() += c;
      }
    }
    header_ = std::move(fields);
  }
  for (auto& name : header_) name = std::string(values::trim(name));
}

bool CsvReader::next(std::vector<std::string>& fields) { return read(fields); }

bool CsvReader::nextBlock() {
  position_ = 0;
  text_ = source_ && source_(block_) ? std::string_view(block_) : std::string_view();
  return !text_.empty();
}

bool CsvReader::read(std::vector<std::string>& fields) {
  while (hasMore()) {
    recordStart_ = currentLine_;
    fields.clear();
    do {
      fields.emplace_back();
    } while (readField(fields.back()) != '\n');
    if (fields.size() > 1 || !values::trim(fields.front()).empty()) return true;
  }
  return false;
}

char CsvReader::readField(std::string& field) {
  if (standsAt('"')) readQuoted(field);
  while (hasMore()) {
    const auto begun = position_;
    while (position_ < text_.size() && text_[position_] != separator_ && text_[position_] != '\n' &&
           text_[position_] != '\r')
      ++position_;
    field.append(text_, begun, position_ - begun);
    if (position_ < text_.size()) break;
  }
  if (position_ == text_.size()) return '\n';
  const char end = text_[position_++];
  if (end == separator_) return separator_;
  if (end == '\r' && standsAt('\n')) ++position_;
  ++currentLine_;
  return '\n';
}

void CsvReader::readQuoted(std::string& field) {
  ++position_;
  while (hasMore()) {
    const char c = text_[position_++];
    if (c == '\n' || (c == '\r' && !standsAt('\n'))) ++currentLine_;
    if (c == '"') {
      if (!standsAt('"')) return;
      ++position_;
    }
    field += c;
  }
  throw UnclosedQuote(recordStart_);
}

}  // namespace bukorval::dati
