#include "cli/result_printer.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>

#include "cli/archive_option.h"
#include "cli/checked_output.h"
#include "cli/context.h"
#include "cli/table_writer.h"
#include "cli/visible_text.h"

namespace cli {
namespace {

using search::ExportFormat;
using search::ResultColumn;

constexpr std::array<ExportFormat, 5> formats{ExportFormat::Csv, ExportFormat::Tsv,
                                              ExportFormat::JsonLines, ExportFormat::Html,
                                              ExportFormat::Efu};

/// What a terminal has room for.
const std::vector<ResultColumn> columnsForPeople{ResultColumn::Name, ResultColumn::Medium,
                                                 ResultColumn::Folder, ResultColumn::Size,
                                                 ResultColumn::Modified};

class StreamSink : public search::ExportSink {
  public:
    explicit StreamSink(std::ostream& stream) : stream_(stream) {}
    void write(std::string_view bytes) override { writeChecked(stream_, bytes); }

  private:
    std::ostream& stream_;
};

std::string refuseUnknownColumns(const std::string& list) {
    for (const std::string& name : listedNames(list)) {
        if (!search::columnOfKey(name)) {
            return "there is no column " + name;
        }
    }
    return {};
}

}  // namespace

ResultPrinter::ResultPrinter(TextFormat text)
    : offersText_(text == TextFormat::Offered), format_(offersText_ ? "text" : "") {}

void ResultPrinter::addTo(CLI::App& app) {
    std::vector<std::string> names;
    if (offersText_) {
        names.emplace_back("text");
    }
    for (const ExportFormat format : formats) {
        names.emplace_back(search::exportFormatKey(format));
    }
    CLI::Option* const option =
        app.add_option("--format", format_,
                       std::string("Form of the output: ") + (offersText_ ? "text, " : "") +
                           "csv, tsv, json (an object a line), html or efu (a file list)")
            ->check(CLI::IsMember(names).description(""))
            ->type_name("FORMAT");
    if (offersText_) {
        option->capture_default_str();
    } else {
        option->required();
    }
    app.add_option("--columns", columns_,
                   "The columns, in this order: name, medium, folder, size, modified, type, "
                   "keywords, notes1, notes2, created, copies")
        ->check(CLI::Validator(refuseUnknownColumns, ""))
        ->type_name("NAMES");
    app.add_flag("--neutralise-formulas", neutralisesFormulas_,
                 "Put an apostrophe before CSV and TSV cells that a spreadsheet would calculate");
}

std::vector<ResultColumn> ResultPrinter::columns() const {
    if (columns_.empty()) {
        return format_ == "text" ? columnsForPeople
                                 : std::vector<ResultColumn>(search::allResultColumns.begin(),
                                                             search::allResultColumns.end());
    }
    std::vector<ResultColumn> result;
    for (const std::string& name : listedNames(columns_)) {
        result.push_back(*search::columnOfKey(name));
    }
    return result;
}

bool ResultPrinter::showsCopies() const {
    const std::vector<ResultColumn> shown = columns();
    return std::ranges::find(shown, ResultColumn::Copies) != shown.end();
}

void ResultPrinter::print(Context& context, const search::Index& index,
                          const std::vector<search::Row>& rows) const {
    if (format_ == "text") {
        printText(context, index, rows);
        return;
    }
    search::ExportOptions options;
    options.columns = columns();
    options.neutralisesFormulas = neutralisesFormulas_;
    if (context.outIsTerminal) {
        options.filter = visibleText;
    }
    StreamSink sink(context.out);
    const auto* const format = std::ranges::find(
        formats, format_, [](ExportFormat each) { return exportFormatKey(each); });
    search::Exporter(index, rows, *format, std::move(options), sink)
        .run(search::Budget::unlimited());
}

void ResultPrinter::printText(Context& context, const search::Index& index,
                              const std::vector<search::Row>& rows) const {
    const auto writer =
        makeTableWriter(OutputFormat::Text, context.out,
                        context.outIsTerminal ? Audience::Terminal : Audience::Program);
    std::vector<Column> titles;
    for (const ResultColumn column : columns()) {
        titles.push_back({std::string(search::columnTitle(column)), search::isNumber(column)});
    }
    writer->begin(titles);
    std::vector<Cell> cells(titles.size());
    for (const search::Row row : rows) {
        std::size_t position = 0;
        for (const ResultColumn column : columns()) {
            cells[position++] = Cell::ofText(search::cellText(index, row, column));
        }
        writer->row(cells);
    }
    writer->end();
}

}  // namespace cli
