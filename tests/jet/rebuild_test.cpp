#include <algorithm>
#include <bit>
#include <map>
#include <set>

#include "jet/bytes.h"
#include "jet/header_page.h"
#include "tests/jet/engine_fixture.h"
#include "tests/jet/sample_files.h"

// A database that is created with the dates and the build number of one that the original engine
// has made equals that one in every byte, but for those that the original engine did not set at
// all.

namespace jet_test {
namespace {

constexpr std::size_t pageSize = 4096;
const char* const original = "empty-engine-jet4.mdb";

const std::uint8_t* bytesAt(const std::string& file, std::size_t page, std::size_t offset) {
    return jet::asBytes(file).data() + page * pageSize + offset;
}

/// What stands in the places of a table definition that have no meaning: offset and description.
std::map<std::size_t, std::string> meaninglessPlaces(const std::string& file, std::size_t page) {
    std::map<std::size_t, std::string> places;
    const std::size_t columns = jet::get16(bytesAt(file, page, 45));
    const std::size_t indexes = jet::get32(bytesAt(file, page, 51));
    std::size_t at = 63 + 12 * indexes;
    for (std::size_t column = 0; column < columns; ++column, at += 25) {
        const bool isFixed = (*bytesAt(file, page, at + 15) & 1) != 0;
        for (std::size_t i = 21; !isFixed && i < 23; ++i) {
            places[at + i] = "fixed offset of a variable column";
        }
    }
    for (std::size_t column = 0; column < columns; ++column) {
        at += 2 + jet::get16(bytesAt(file, page, at));
    }
    for (std::size_t index = 0; index < indexes; ++index, at += 52) {
        for (std::size_t slot = 0; slot < 10; ++slot) {
            const std::size_t place = at + 4 + 3 * slot;
            if (jet::get16(bytesAt(file, page, place)) == 0xFFFF) {
                places[place + 2] = "sort order of an unused column slot of an index";
            }
        }
        for (std::size_t i = 42; i < 46; ++i) {
            places[at + i] = "four bytes after the root page of an index";
        }
    }
    return places;
}

class RebuildTest : public EngineTest {
  protected:
    void SetUp() override {
        if (sampleFolder().empty()) {
            GTEST_SKIP() << "the sample files are not there; VERDOLIN_JET_SAMPLES may name them";
        }
        theirs = readFile(sampleFolder() + "/" + original);
        const std::string path = folder.makeFile("original.mdb", theirs);
        jet::CreateOptions options;
        options.creationDate = headerDate();
        options.objectDate = dateOfObjects(path);
        options.engineBuild = 0x261C;
        jet::Database::create(engine, folder.pathOf("ours.mdb"), generalLocale, options).close();
        ours = folder.read("ours.mdb");
    }

    /// The creation date in the header, which is masked there.
    double headerDate() const {
        constexpr std::uint32_t maskKey = 0x6B39DAC7;
        std::vector<std::uint8_t> masked(bytesAt(theirs, 0, 0x18), bytesAt(theirs, 0, 0x98));
        jet::applyRc4(maskKey, masked);
        return std::bit_cast<double>(jet::get64(masked.data() + 0x72 - 0x18));
    }

    double dateOfObjects(const std::string& path) {
        OpenTable objects(engine, path, "MSysObjects", jet::LockType::ReadOnly);
        return std::get<jet::Date>(objects.rows.value(objects.rows.field("DateCreate"))).days;
    }

    std::set<std::size_t> differences() const {
        std::set<std::size_t> offsets;
        for (std::size_t i = 0; i < std::min(ours.size(), theirs.size()); ++i) {
            if (ours[i] != theirs[i]) {
                offsets.insert(i);
            }
        }
        return offsets;
    }

    std::string theirs;
    std::string ours;
};

TEST_F(RebuildTest, DatesOfTheOriginalDiffer) {
    EXPECT_NE(headerDate(), dateOfObjects(folder.pathOf("original.mdb")));
}

TEST_F(RebuildTest, HasTheSizeOfTheOriginal) {
    EXPECT_EQ(ours.size(), 16 * pageSize);
    EXPECT_EQ(ours.size(), theirs.size());
}

TEST_F(RebuildTest, DiffersInTwentySixBytes) { EXPECT_EQ(differences().size(), 26u); }

TEST_F(RebuildTest, DiffersOnlyInPlacesWithoutMeaning) {
    std::map<std::string, int> found;
    for (const std::size_t offset : differences()) {
        const std::size_t page = offset / pageSize;
        ASSERT_TRUE(page >= 2 && page <= 5) << "page " << page << " offset " << offset % pageSize;
        const auto places = meaninglessPlaces(theirs, page);
        const auto place = places.find(offset % pageSize);
        ASSERT_NE(place, places.end()) << "page " << page << " offset " << offset % pageSize;
        ++found[place->second];
        EXPECT_EQ(ours[offset], '\0');
    }
    EXPECT_EQ(found, (std::map<std::string, int>{
                         {"fixed offset of a variable column", 14},
                         {"four bytes after the root page of an index", 4},
                         {"sort order of an unused column slot of an index", 8},
                     }));
}

TEST_F(RebuildTest, TableAppendedToTheOriginalAndToTheCopyGivesTheSameChanges) {
    jet::TableDefinition table;
    table.name = "main";
    table.fields.push_back({"filename", jet::DataType::Text, 255, true, false, false, 0, 0});
    // The catalog's rows have the dates of their creation; the new pages behind the old end have
    // none.
    for (const char* name : {"original.mdb", "ours.mdb"}) {
        jet::Database database = jet::Database::open(engine, folder.pathOf(name));
        database.append(table);
        database.close();
    }
    const std::string first = folder.read("original.mdb");
    const std::string second = folder.read("ours.mdb");
    ASSERT_EQ(first.size(), second.size());
    EXPECT_GT(first.size(), theirs.size());
    EXPECT_EQ(first.substr(16 * pageSize), second.substr(16 * pageSize));
}

}  // namespace
}  // namespace jet_test
