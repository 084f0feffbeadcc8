#include "cli/table_writer.h"

#include "cli/csv_writer.h"
#include "cli/json_writer.h"
#include "cli/text_writer.h"
#include "cli/tsv_writer.h"

namespace cli {

std::unique_ptr<TableWriter> makeTableWriter(OutputFormat format, std::ostream& stream,
                                             Audience audience) {
    switch (format) {
        case OutputFormat::Tsv:
            return std::make_unique<TsvWriter>(stream, audience);
        case OutputFormat::Csv:
            return std::make_unique<CsvWriter>(stream, audience);
        case OutputFormat::Json:
            return std::make_unique<JsonWriter>(stream);
        case OutputFormat::Text:
            break;
    }
    return std::make_unique<TextWriter>(stream);
}

}  // namespace cli
