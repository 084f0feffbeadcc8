// Any bytes as a whole file: opened, its tables listed, checked.

#include <cstdint>
#include <string>

#include "jet/checker.h"
#include "jet/database.h"
#include "jet/engine.h"
#include "tests/fuzz/fuzz_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string content(reinterpret_cast<const char*>(data), size);
    fuzz::onFile(content, [](support::FaultyFiles& files) {
        jet::Engine engine(files);
        for (const auto& table : jet::Database::open(engine, fuzz::path).tables()) {
            jet::Database::open(engine, fuzz::path).table(table.name);
        }
    });
    fuzz::onFile(content,
                 [](support::FaultyFiles& files) { jet::checkDatabase(files, fuzz::path); });
    return 0;
}
