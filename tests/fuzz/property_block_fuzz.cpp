// Any bytes as the property block of a table. The first byte chooses the format.

#include <cstdint>
#include <string_view>

#include "jet/format.h"
#include "jet/property_block.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    jet::TableDefinition table{
        "main", {{"filename", jet::DataType::Text}, {"size", jet::DataType::Long}}, {}};
    const jet::Format& format = (data[0] & 1) == 0 ? jet::jet3Format : jet::jet4Format;
    jet::PropertyBlock::apply(format, {reinterpret_cast<const char*>(data) + 1, size - 1}, table);
    return 0;
}
