#include "search/exporter.h"

#include <algorithm>
#include <utility>

#include "search/export_writer.h"

namespace search {
namespace {

constexpr std::size_t rowsAtOnce = 1000;
constexpr std::size_t bytesAtOnce = std::size_t{64} << 10;

}  // namespace

std::string_view exportFormatKey(ExportFormat format) {
    switch (format) {
        case ExportFormat::Csv:
            return "csv";
        case ExportFormat::Tsv:
            return "tsv";
        case ExportFormat::JsonLines:
            return "json";
        case ExportFormat::Html:
            return "html";
        case ExportFormat::Efu:
            break;
    }
    return "efu";
}

Exporter::Exporter(const Index& index, std::span<const Row> rows, ExportFormat format,
                   ExportOptions options, ExportSink& sink)
    : rows_(rows), sink_(sink), writer_(makeExportWriter(index, format, std::move(options))) {}

Exporter::~Exporter() = default;

bool Exporter::run(const Budget& budget) {
    if (!std::exchange(isBegun_, true)) {
        writer_->begin(buffer_);
    }
    while (next_ < rows_.size()) {
        const std::size_t end = std::min(rows_.size(), next_ + rowsAtOnce);
        for (; next_ < end; ++next_) {
            writer_->row(rows_[next_], buffer_);
        }
        if (buffer_.size() >= bytesAtOnce) {
            sink_.write(std::exchange(buffer_, {}));
        }
        if (next_ < rows_.size() && budget.isSpent()) {
            return false;
        }
    }
    if (!std::exchange(isEnded_, true)) {
        writer_->end(buffer_);
        sink_.write(std::exchange(buffer_, {}));
    }
    return true;
}

}  // namespace search
