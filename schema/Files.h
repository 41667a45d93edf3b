#pragma once

#include <string_view>
#include <vector>

namespace schema {

struct File {
  std::string_view name, text;
};

/// The statement files of this folder, as they stand, in the order they are run.
const std::vector<File>& files();
/// Those of the folder demo: what the demo company has that needs no computing.
const std::vector<File>& demoFiles();

}  // namespace schema
