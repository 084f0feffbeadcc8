#include "cli/archive_option.h"

#include <CLI/CLI.hpp>

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

}  // namespace cli
