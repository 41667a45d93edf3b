#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace bukorval::dati {

struct Problem {
  std::string file;
  std::size_t line;
  std::string text;
  std::string cell = {};  ///< its name, in a spreadsheet
};

/// What another way of importing may help against.
enum class Remedy {
  None,
  Encoding,  ///< the file is not in the encoding it was read in
  Replace    ///< what the file brings is there already
};

/// What is wrong with the files of an import, gathered so that everything is told at once.
class Problems {
 public:
  void add(std::string_view file, std::size_t line, std::string_view text, Remedy remedy = Remedy::None) {
    keep({std::string(file), line, std::string(text)});
    remedies_.insert(remedy);
  }
  /// @param cell  of a spreadsheet, "" in a file that has only lines.
  void addAt(std::string_view file, std::size_t line, std::string_view cell, std::string_view text) {
    keep({std::string(file), line, std::string(text), std::string(cell)});
  }
  /// Whether it may help against a problem.
  bool has(Remedy remedy) const { return remedies_.contains(remedy); }
  std::size_t count() const { return count_; }
  /// The first of them by file and line, a thousand at least; those of one line in the order in which they were found.
  std::vector<Problem> sorted() const;

 private:
  void keep(Problem problem);

  std::vector<Problem> problems_;  ///< the first of them, and some more
  std::size_t count_ = 0;
  std::set<Remedy> remedies_;
};

}  // namespace bukorval::dati
