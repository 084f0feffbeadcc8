#include "cli/format_option.h"

#include <CLI/CLI.hpp>
#include <array>
#include <string_view>
#include <utility>

#include "cli/context.h"

namespace cli {
namespace {

constexpr std::array<std::pair<std::string_view, OutputFormat>, 4> formats{
    {{"text", OutputFormat::Text},
     {"tsv", OutputFormat::Tsv},
     {"csv", OutputFormat::Csv},
     {"json", OutputFormat::Json}}};

std::string nameOf(OutputFormat wanted) {
    for (const auto& [name, format] : formats) {
        if (format == wanted) {
            return std::string(name);
        }
    }
    return {};
}

}  // namespace

FormatOption::FormatOption(OutputFormat usual) : name_(nameOf(usual)) {}

void FormatOption::addTo(CLI::App& app) {
    std::vector<std::string> names;
    names.reserve(formats.size());
    for (const auto& [name, format] : formats) {
        names.emplace_back(name);
    }
    app.add_option("--format", name_, "Form of the output: text, tsv, csv or json")
        ->check(CLI::IsMember(names).description(""))
        ->type_name("FORMAT")
        ->capture_default_str();
}

OutputFormat FormatOption::format() const {
    for (const auto& [name, format] : formats) {
        if (name == name_) {
            return format;
        }
    }
    return OutputFormat::Text;
}

std::unique_ptr<TableWriter> FormatOption::makeWriter(Context& context) const {
    return makeTableWriter(format(), context.out,
                           context.outIsTerminal ? Audience::Terminal : Audience::Program);
}

}  // namespace cli
