#include "search/export_writer.h"

#include <charconv>
#include <ctime>
#include <utility>

#include "base/text.h"
#include "search/copies.h"

namespace search {
namespace {

void appendNumber(std::int64_t number, std::string& text) {
    std::array<char, 24> digits{};
    const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(), number);
    text.append(digits.data(), end);
}

/// What all forms of lines have in common: the cells' texts and the filter that they go through.
class LineWriter : public ExportWriter {
  public:
    LineWriter(const Index& index, ExportOptions options)
        : index_(index), options_(std::move(options)) {}
    void end(std::string& /*text*/) override {}

  protected:
    const Index& index() const { return index_; }
    const ExportOptions& options() const { return options_; }

    /// Valid until the next call.
    const std::string& cell(Row row, ResultColumn column) {
        cell_.clear();
        appendCellText(index_, row, column, cell_);
        if (options_.filter) {
            cell_ = options_.filter(cell_);
        }
        return cell_;
    }

    /// A spreadsheet takes such a text for a formula.
    bool needsApostrophe(ResultColumn column, std::string_view text) const {
        constexpr std::string_view signs = "=+-@\t\r\n";
        return options_.neutralisesFormulas && !isNumber(column) && !text.empty() &&
               (signs.find(text.front()) != std::string_view::npos || text.starts_with("＝") ||
                text.starts_with("＋") || text.starts_with("－") || text.starts_with("＠"));
    }

  private:
    const Index& index_;
    ExportOptions options_;
    std::string cell_;
};

class CsvForm final : public LineWriter {
  public:
    using LineWriter::LineWriter;

    void begin(std::string& text) override {
        std::string_view between;
        for (const ResultColumn column : options().columns) {
            text += std::exchange(between, ",");
            text += columnTitle(column);
        }
        text += "\r\n";
    }

    void row(Row row, std::string& text) override {
        std::string_view between;
        for (const ResultColumn column : options().columns) {
            text += std::exchange(between, ",");
            const std::string& value = cell(row, column);
            appendValue(value, needsApostrophe(column, value), text);
        }
        text += "\r\n";
    }

  private:
    static void appendValue(std::string_view value, bool hasApostrophe, std::string& text) {
        const bool isQuoted = value.find_first_of(",\"\r\n") != std::string_view::npos ||
                              (!value.empty() && (value.front() == ' ' || value.back() == ' '));
        if (!isQuoted) {
            text += hasApostrophe ? "'" : "";
            text += value;
            return;
        }
        text += hasApostrophe ? "\"'" : "\"";
        for (const char c : value) {
            text.append(c == '"' ? 2 : 1, c);
        }
        text += '"';
    }
};

class TsvForm final : public LineWriter {
  public:
    using LineWriter::LineWriter;

    void begin(std::string& text) override {
        std::string_view between;
        for (const ResultColumn column : options().columns) {
            text += std::exchange(between, "\t");
            text += columnTitle(column);
        }
        text += '\n';
    }

    void row(Row row, std::string& text) override {
        std::string_view between;
        for (const ResultColumn column : options().columns) {
            text += std::exchange(between, "\t");
            const std::string& value = cell(row, column);
            text += needsApostrophe(column, value) ? "'" : "";
            appendEscaped(value, text);
        }
        text += '\n';
    }

  private:
    static void appendEscaped(std::string_view value, std::string& text) {
        for (const char c : value) {
            switch (c) {
                case '\t':
                    text += "\\t";
                    break;
                case '\n':
                    text += "\\n";
                    break;
                case '\r':
                    text += "\\r";
                    break;
                case '\\':
                    text += "\\\\";
                    break;
                default:
                    text += c;
            }
        }
    }
};

class JsonForm final : public LineWriter {
  public:
    using LineWriter::LineWriter;

    void begin(std::string& /*text*/) override {}

    void row(Row row, std::string& text) override {
        std::string_view before = "{\"";
        for (const ResultColumn column : options().columns) {
            text += std::exchange(before, ",\"");
            text += columnKey(column);
            text += "\":";
            appendValue(row, column, text);
        }
        text += before.front() == '{' ? "{}\n" : "}\n";
    }

  private:
    void appendValue(Row row, ResultColumn column, std::string& text) {
        if (column == ResultColumn::Size) {
            appendSize(row, text);
        } else if (column == ResultColumn::Copies) {
            const std::string& copies = cell(row, column);
            text += copies.empty() ? "null" : copies;
        } else {
            appendString(cell(row, column), text);
        }
    }

    void appendSize(Row row, std::string& text) {
        if (index().isFolder(row)) {
            text += "null";
            return;
        }
        appendNumber(index().leastSize(row), text);
        text += index().isSizeKnown(row) ? "" : ",\"sizeIsAtLeast\":true";
    }

    static void appendString(std::string_view value, std::string& text) {
        text += '"';
        for (const char c : value) {
            appendEscaped(c, text);
        }
        text += '"';
    }

    static void appendEscaped(char c, std::string& text) {
        constexpr std::string_view digits = "0123456789abcdef";
        const auto byte = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            text += '\\';
            text += c;
        } else if (byte < 0x20 || byte == 0x7F) {
            text += "\\u00";
            text += digits[byte >> 4];
            text += digits[byte & 15];
        } else {
            text += c;
        }
    }
};

class HtmlForm final : public LineWriter {
  public:
    using LineWriter::LineWriter;

    void begin(std::string& text) override {
        text += "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n<title>";
        appendEscaped(options().title, text);
        // Each cell keeps the direction of its text to itself.
        text +=
            "</title>\n<style>\n"
            "body { font-family: sans-serif; margin: 1em; }\n"
            "table { border-collapse: collapse; }\n"
            "th, td { border: 1px solid #bbb; padding: 2px 6px; text-align: start;"
            " vertical-align: top; }\n"
            "th { background: #eee; position: sticky; top: 0; }\n"
            "td { unicode-bidi: isolate; white-space: pre-wrap; }\n"
            "td.number { text-align: right; }\n"
            "</style>\n</head>\n<body>\n<h1>";
        appendEscaped(options().title, text);
        text += "</h1>\n<table>\n<thead><tr>";
        for (const ResultColumn column : options().columns) {
            text += "<th scope=\"col\">";
            text += columnTitle(column);
            text += "</th>";
        }
        text += "</tr></thead>\n<tbody>\n";
    }

    void row(Row row, std::string& text) override {
        text += "<tr>";
        for (const ResultColumn column : options().columns) {
            text += isNumber(column) ? "<td class=\"number\">" : "<td dir=\"auto\">";
            appendEscaped(cell(row, column), text);
            text += "</td>";
        }
        text += "</tr>\n";
    }

    void end(std::string& text) override { text += "</tbody>\n</table>\n</body>\n</html>\n"; }

  private:
    static void appendEscaped(std::string_view value, std::string& text) {
        for (const char c : value) {
            switch (c) {
                case '&':
                    text += "&amp;";
                    break;
                case '<':
                    text += "&lt;";
                    break;
                case '>':
                    text += "&gt;";
                    break;
                case '"':
                    text += "&quot;";
                    break;
                default:
                    appendVisible(c, text);
            }
        }
    }

    /// Control characters have no place in a page.
    static void appendVisible(char c, std::string& text) {
        const auto byte = static_cast<unsigned char>(c);
        const bool isControl = (byte < 0x20 && c != '\n' && c != '\t') || byte == 0x7F;
        if (isControl) {
            text += "\uFFFD";
        } else {
            text += c;
        }
    }
};

class EfuForm final : public LineWriter {
  public:
    using LineWriter::LineWriter;

    void begin(std::string& text) override {
        text += "Filename,Size,Date Modified,Date Created,Attributes\r\n";
    }

    void row(Row row, std::string& text) override {
        std::string path = index().wholePath(row);
        if (options().filter) {
            path = options().filter(path);
        }
        text += '"';
        for (const char c : path) {
            text.append(c == '"' ? 2 : 1, c);
        }
        text += "\",";
        const bool isFolder = index().isFolder(row);
        if (!isFolder) {
            appendNumber(index().leastSize(row), text);
        }
        appendTime(index().modified(row), text);
        appendTime(index().created(row), text);
        text += isFolder ? ",16\r\n" : ",0\r\n";
    }

  private:
    static void appendTime(LocalTime time, std::string& text) {
        text += ',';
        if (time != unknownTime) {
            appendNumber(utcTicks(time), text);
        }
    }
};

}  // namespace

std::int64_t utcTicks(LocalTime time) {
    const CalendarTime fields = calendarTime(time);
    std::tm parts{};
    parts.tm_year = fields.year - 1900;
    parts.tm_mon = fields.month - 1;
    parts.tm_mday = fields.day;
    parts.tm_hour = fields.hour;
    parts.tm_min = fields.minute;
    parts.tm_sec = fields.second;
    parts.tm_isdst = -1;
    const std::time_t seconds = std::mktime(&parts);
    constexpr std::int64_t secondsBefore1970 = 11644473600;
    return (static_cast<std::int64_t>(seconds) + secondsBefore1970) * 10'000'000;
}

std::unique_ptr<ExportWriter> makeExportWriter(const Index& index, ExportFormat format,
                                               ExportOptions options) {
    switch (format) {
        case ExportFormat::Csv:
            return std::make_unique<CsvForm>(index, std::move(options));
        case ExportFormat::Tsv:
            return std::make_unique<TsvForm>(index, std::move(options));
        case ExportFormat::JsonLines:
            return std::make_unique<JsonForm>(index, std::move(options));
        case ExportFormat::Html:
            return std::make_unique<HtmlForm>(index, std::move(options));
        case ExportFormat::Efu:
            break;
    }
    return std::make_unique<EfuForm>(index, std::move(options));
}

}  // namespace search
