#pragma once

namespace bukorval::host {

/// Writes what the last word of a command line may become, one a line: the word, a tab, what it means. The words come
/// behind `--complete`, the program's name left out. Reads the database that the line names and changes nothing;
/// whatever fails leaves the list shorter, without a word.
/// @return whether the command line asks for that.
bool completeWords(int argc, const char* const* argv) noexcept;

}  // namespace bukorval::host
