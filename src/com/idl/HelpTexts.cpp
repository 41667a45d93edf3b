#include "com/idl/HelpTexts.h"

#include <fstream>
#include <regex>

#include "values/Errore.h"
#include "values/Text.h"

namespace com {
namespace {

/// Up to the first full stop that ends a sentence.
std::string firstSentence(std::string_view text) {
  for (std::size_t at = text.find('.'); at != text.npos; at = text.find('.', at + 1))
    if (at + 1 == text.size() || text[at + 1] == ' ') return std::string(text.substr(0, at + 1));
  return std::string(text);
}

class Reader {
 public:
  explicit Reader(std::map<std::string, std::string>& texts) : texts_(texts) {}

  void read(const std::string& file) {
    std::ifstream in(file);
    if (!in) throw values::Errore("Cannot read " + file);
    for (std::string line; std::getline(in, line);) take(values::trim(line));
  }

 private:
  void take(std::string_view line) {
    if (line.starts_with("///")) {
      if (line.starts_with("/// @")) described_ = true;
      if (!described_) comment_.append(comment_.empty() ? "" : " ").append(values::trim(line.substr(3)));
      return;
    }
    static const std::regex kName(R"(^.*?([A-Za-z_]\w*)(?:\(.*|(?: = .*)?;)$)");
    std::smatch found;
    static const std::regex kTemplateArguments("<.*>");
    const auto declaration = std::regex_replace(std::string(line), kTemplateArguments, "");
    // The first declaration of a name has the sentence; that of an overload stands beside it.
    if (!comment_.empty() && std::regex_match(declaration, found, kName))
      texts_.emplace(found[1].str(), firstSentence(comment_));
    comment_.clear();
    described_ = false;
  }

  std::map<std::string, std::string>& texts_;
  std::string comment_;
  bool described_ = false;
};

}  // namespace

std::map<std::string, std::string> helpTexts(const std::string& sourceFolder) {
  std::map<std::string, std::string> texts;
  for (const char* header : {"/frame/Proprieta.h", "/frame/Eventi.h", "/object/CLSKORVAL.h"})
    Reader(texts).read(sourceFolder + header);
  return texts;
}

}  // namespace com
