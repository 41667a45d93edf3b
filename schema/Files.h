#pragma once

#include <string_view>
#include <vector>

namespace schema {

struct File {
  std::string_view name, text;
};

/// The statement files in the order they are run, as they stand in this folder.
const std::vector<File>& files();

}  // namespace schema
