#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace bukorval::dati {

struct Problem {
  std::string file;
  std::size_t line;
  std::string text;
};

/// What is wrong with the files of an import, gathered so that everything is told at once.
class Problems {
 public:
  void add(std::string_view file, std::size_t line, std::string_view text) {
    problems_.push_back({std::string(file), line, std::string(text)});
  }
  std::size_t count() const { return problems_.size(); }
  /// By file and line; those of one line in the order in which they were found.
  std::vector<Problem> sorted() const;

 private:
  std::vector<Problem> problems_;
};

}  // namespace bukorval::dati
