// Writes the seeds of the fuzzers, made by the engine itself: make_corpus FOLDER gives FOLDER/open,
// FOLDER/rows and FOLDER/property_block.

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>

#include "jet/format.h"
#include "jet/property_block.h"
#include "tests/jet/item_table.h"
#include "tests/jet/rich_file.h"
#include "tests/support/faulty_files.h"

namespace {

namespace fs = std::filesystem;

void write(const fs::path& path, const std::string& content) {
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << content;
}

std::string property(const jet::Format& format) {
    return jet::PropertyBlock::build(format, {"main",
                                              {{"filename", jet::DataType::Text, 0, true, false},
                                               {"size", jet::DataType::Long, 0, false, true}},
                                              {}});
}

/// One change at some place of the file, of the form that the fuzzer takes.
std::string change(std::mt19937& random, char format) {
    std::string change{format};
    for (int i = 0; i < 4; ++i) {
        change.push_back(static_cast<char>(random()));
        change.push_back(static_cast<char>(random()));
        change.push_back(static_cast<char>(random() % 2));
        change.push_back(4);
        for (int byte = 0; byte < 4; ++byte) {
            change.push_back(static_cast<char>(random() % 3 == 0 ? 0xFF : random()));
        }
    }
    return change;
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 2) {
        std::fprintf(stderr, "usage: make_corpus FOLDER\n");
        return 1;
    }
    const fs::path folder = arguments[1];
    std::mt19937 random(1);
    for (const auto format : {jet::FileFormat::Jet3, jet::FileFormat::Jet4}) {
        const bool jet4 = format == jet::FileFormat::Jet4;
        const std::string name = jet4 ? "jet4" : "jet3";
        support::FaultyFiles files;
        jet_test::ItemSession::create(files, "/small", format);
        write(folder / "open" / (name + "-small"), files.read("/small"));
        jet_test::makeRichFile(files, "/rich", format);
        write(folder / "open" / (name + "-rich"), files.read("/rich"));
        const char selector = jet4 ? 1 : 0;
        write(folder / "property_block" / name,
              std::string(1, selector) + property(jet4 ? jet::jet4Format : jet::jet3Format));
        for (int i = 0; i < 50; ++i) {
            write(folder / "rows" / (name + "-" + std::to_string(i)), change(random, selector));
        }
    }
    return 0;
}
