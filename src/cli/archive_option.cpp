#include "cli/archive_option.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <string_view>

#include "base/text.h"

namespace cli {

void addArchiveArgument(CLI::App& app, const std::string& name, const std::string& description,
                        std::string& path) {
    const auto refuseEmpty = [](const std::string& given) {
        return given.empty() ? std::string("the path is empty") : std::string();
    };
    app.add_option(name, path, description)
        ->required()
        ->type_name("")
        ->check(CLI::Validator(refuseEmpty, ""));
}

std::vector<std::string> listedNames(const std::string& list) {
    std::vector<std::string> names;
    for (std::size_t start = 0; start <= list.size();) {
        const std::size_t end = std::min(list.find(',', start), list.size());
        names.emplace_back(base::trimmedBlanks(std::string_view(list).substr(start, end - start)));
        start = end + 1;
    }
    return names;
}

}  // namespace cli
