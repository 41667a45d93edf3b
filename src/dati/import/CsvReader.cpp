#include "dati/import/CsvReader.h"

#include "values/Text.h"

namespace bukorval::dati {
namespace {

constexpr int kEnd = std::istream::traits_type::eof();

void skipByteOrderMark(std::istream& in) {
  for (const char expected : {'\xEF', '\xBB', '\xBF'}) {
    if (in.peek() != std::istream::traits_type::to_int_type(expected)) return;
    in.get();
  }
}

}  // namespace

CsvReader::CsvReader(std::istream& in) : in_(in) {
  skipByteOrderMark(in_);
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

bool CsvReader::read(std::vector<std::string>& fields) {
  while (in_.peek() != kEnd) {
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
  if (in_.peek() == '"') readQuoted(field);
  for (int c = in_.get(); c != kEnd; c = in_.get()) {
    if (c == separator_) return separator_;
    if (endsLine(c)) {
      ++currentLine_;
      return '\n';
    }
    field += static_cast<char>(c);
  }
  return '\n';
}

bool CsvReader::endsLine(int c) {
  if (c == '\r' && in_.peek() == '\n') in_.get();
  return c == '\n' || c == '\r';
}

void CsvReader::readQuoted(std::string& field) {
  in_.get();
  for (int c = in_.get(); c != kEnd; c = in_.get()) {
    if (c == '\n' || (c == '\r' && in_.peek() != '\n')) ++currentLine_;
    if (c == '"') {
      if (in_.peek() != '"') return;
      in_.get();
    }
    field += static_cast<char>(c);
  }
  throw UnclosedQuote(recordStart_);
}

}  // namespace bukorval::dati
