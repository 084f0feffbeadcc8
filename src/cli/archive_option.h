#pragma once

#include <string>
#include <vector>

namespace CLI {  // NOLINT(readability-identifier-naming): given by the library
class App;
}

namespace cli {

/// The required argument that names a file; an empty text is wrong usage.
void addArchiveArgument(CLI::App& app, const std::string& name, const std::string& description,
                        std::string& path);

/// The names in a list with commas, and perhaps blanks, between.
std::vector<std::string> listedNames(const std::string& list);

}  // namespace cli
