#pragma once

#include <cstddef>
#include <istream>
#include <memory>
#include <string>
#include <string_view>

namespace bukorval::dati {

/// One way through a text file: block after block as UTF-8, each ending with a line.
class TextBlocks {
 public:
  TextBlocks(std::unique_ptr<std::istream> bytes, std::string_view encoding);

  /// The next block; false at the end. Throws EncodingFault with the line in the file.
  bool next(std::string& text);
  /// Tells the blocks so far from others.
  std::size_t fingerprint() const { return fingerprint_; }

 private:
  void readMore();
  /// Where the last line that is complete ends; 0 when none does.
  std::size_t endOfLines() const;

  std::unique_ptr<std::istream> bytes_;
  std::string encoding_;
  bool wide_;            ///< two bytes a unit
  std::string pending_;  ///< read and not handed out
  std::string mark_;     ///< the byte-order mark that goes before later blocks, too
  std::size_t lines_ = 0, fingerprint_ = 0;
};

/// A text file that can be gone through several times. No more of it is held than a block; only what is no file on a
/// disk (a pipe), which can be read but once, is held whole.
class TextFile {
 public:
  /// Throws Refused when the file cannot be opened.
  TextFile(const std::string& name, std::string_view encoding);

  TextBlocks begin() const;
  /// Goes through all of it; how many times a line feed stands in it. Throws EncodingFault.
  std::size_t check();
  /// A way that has come to its end found what check() did.
  bool isAsChecked(const TextBlocks& blocks) const { return blocks.fingerprint() == fingerprint_; }

 private:
  std::string name_, encoding_;
  bool held_;
  std::string content_;  ///< of what is held
  std::size_t fingerprint_ = 0;
};

}  // namespace bukorval::dati
