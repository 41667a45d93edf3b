#pragma once

#include <string>

#include "picture/Picture.h"
#include "report/Report.h"

namespace bukorval::picture {

struct Heading {
  std::string title, subtitle;
};

/// A page that needs nothing else: the figures of the whole, the pictures, and the report as a table whose headings
/// sort. It loads nothing, and its policy lets nothing run but its own style and script. Well-formed XML as well.
std::string page(const Heading& heading, const report::Result& result, const Picture& picture, const Words& words);

/// The table of a page. Numbers are in data-value as programs read them, and what a column holds in data-field.
std::string pageTable(const report::Result& result, const Words& words);

}  // namespace bukorval::picture
