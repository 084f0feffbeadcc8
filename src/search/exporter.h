#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "search/budget.h"
#include "search/index.h"
#include "search/result_column.h"

namespace search {

enum class ExportFormat {
    Csv,        ///< RFC 4180: commas, CR LF, quotation marks where needed, a line of titles
    Tsv,        ///< a tab between; \t \n \r \\ inside values; a line of titles
    JsonLines,  ///< one object a line; sizes and copies are numbers, or null where there is none
    Html,       ///< a page with one table, complete in itself
    Efu,        ///< a file list: Filename, Size, Date Modified, Date Created, Attributes
};

/// "csv", "tsv", "json", "html", "efu": the usual extensions too.
std::string_view exportFormatKey(ExportFormat format);

struct ExportOptions {
    /// In this order; an Efu has columns of its own.
    std::vector<ResultColumn> columns{allResultColumns.begin(), allResultColumns.end()};
    /// Puts an apostrophe before cells of CSV and TSV that a spreadsheet would calculate.
    bool neutralisesFormulas = false;
    std::string title = "Verdolin";  ///< of an HTML page
    /// What each text goes through before it is written, for output that goes to a terminal; none
    /// for a file.
    std::function<std::string(std::string_view)> filter;
};

/// Takes what is exported; it may throw to end the export.
class ExportSink {
  public:
    virtual ~ExportSink() = default;
    virtual void write(std::string_view bytes) = 0;
};

class ExportWriter;

/// Writes rows in their order, in steps. Index, rows and sink must outlive it. Copies need a
/// finished CopyTable.
class Exporter {
  public:
    Exporter(const Index& index, std::span<const Row> rows, ExportFormat format,
             ExportOptions options, ExportSink& sink);
    Exporter(const Exporter&) = delete;
    Exporter& operator=(const Exporter&) = delete;
    ~Exporter();

    /// Writes on until everything is written or the budget is spent; true when everything is.
    bool run(const Budget& budget);
    std::size_t done() const { return next_; }

  private:
    std::span<const Row> rows_;
    ExportSink& sink_;
    std::unique_ptr<ExportWriter> writer_;
    std::string buffer_;
    std::size_t next_ = 0;
    bool isBegun_ = false;
    bool isEnded_ = false;
};

}  // namespace search
