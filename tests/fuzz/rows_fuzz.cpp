// Changes to a sound file with something of everything: all rows are read and checked, then rows
// are added, changed and deleted, and read again. The first byte chooses the format.

#include <cstdint>
#include <string>

#include "jet/checker.h"
#include "tests/fuzz/fuzz_file.h"
#include "tests/jet/rich_file.h"

namespace {

std::string richFile(jet::FileFormat format) {
    support::FaultyFiles files;
    jet_test::makeRichFile(files, fuzz::path, format);
    return files.read(fuzz::path);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const std::string jet3 = richFile(jet::FileFormat::Jet3);
    static const std::string jet4 = richFile(jet::FileFormat::Jet4);
    if (size == 0) {
        return 0;
    }
    const std::string content = fuzz::patched((data[0] & 1) == 0 ? jet3 : jet4, data + 1, size - 1);
    const auto read = [](support::FaultyFiles& files) {
        jet_test::readEverything(files, fuzz::path);
    };
    fuzz::onFile(content, read);
    fuzz::onFile(content,
                 [](support::FaultyFiles& files) { jet::checkDatabase(files, fuzz::path); });
    std::string changed;
    fuzz::onFile(content, [&](support::FaultyFiles& files) {
        jet_test::changeEverything(files, fuzz::path);
        changed = files.read(fuzz::path);
    });
    fuzz::onFile(changed, read);
    return 0;
}
