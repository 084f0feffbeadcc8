#pragma once

#include <memory>
#include <string>

#include "search/exporter.h"

namespace search {

/// Puts rows into one form. Everything is appended to the text that is handed in.
class ExportWriter {
  public:
    virtual ~ExportWriter() = default;
    virtual void begin(std::string& text) = 0;
    virtual void row(Row row, std::string& text) = 0;
    virtual void end(std::string& text) = 0;
};

/// The index must outlive the writer.
std::unique_ptr<ExportWriter> makeExportWriter(const Index& index, ExportFormat format,
                                               ExportOptions options);

/// 100-nanosecond steps since 1601-01-01 UTC of a local time of this machine's time zone.
std::int64_t utcTicks(LocalTime time);

}  // namespace search
