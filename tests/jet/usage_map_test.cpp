#include "jet/usage_map.h"

#include <random>
#include <set>

#include "tests/jet/engine_fixture.h"
#include "tests/jet/hexadecimal.h"
#include "tests/jet/memory_pages.h"

namespace jet_test {
namespace {

using jet::UsageMap;
using Meaning = UsageMap::Meaning;

const jet::Format* const formats[] = {&jet::jet3Format, &jet::jet4Format};

class UsageMapTest : public testing::TestWithParam<const jet::Format*> {
  protected:
    const jet::Format& format() const { return *GetParam(); }

    std::string emptyRow() const { return std::string(format().mapRow, '\0'); }
    std::uint32_t inlinePages() const { return (format().mapRow - 5) * 8; }

    /// Stores the map and reads it again.
    UsageMap stored(MemoryPages& memory, UsageMap& map, Meaning meaning = Meaning::Used) {
        map.prepare(*memory.pages, [&] { return memory.pages->pageCount(); });
        map.fill(*memory.pages);
        return UsageMap::read(*memory.pages, map.place(), meaning);
    }
    std::set<std::uint32_t> members(const UsageMap& map) const {
        std::set<std::uint32_t> pages;
        for (std::uint32_t page = map.pages().first(); page != jet::PageSet::none;
             page = map.pages().next(page + 1)) {
            pages.insert(page);
        }
        return pages;
    }
    std::string rowOf(MemoryPages& memory, const UsageMap& map) const {
        const jet::PageHandle page = memory.pages->read(map.place().page);
        return std::string(jet::asText(jet::DataPage(format(), *page).row(map.place().slot)));
    }
};

INSTANTIATE_TEST_SUITE_P(Formats, UsageMapTest, testing::ValuesIn(formats),
                         [](const auto& test) { return test.param->isJet4() ? "Jet4" : "Jet3"; });

TEST_P(UsageMapTest, LowestPageIsTheLowestBitOfTheFirstByte) {
    MemoryPages memory(format(), 40);
    const auto place = memory.putRow(1, fromHex("00 08000000 01 82"));
    EXPECT_EQ(members(UsageMap::read(*memory.pages, place, Meaning::Used)),
              (std::set<std::uint32_t>{8, 17, 23}));
}

TEST_P(UsageMapTest, PagesOutsideTheFileAreLeftOut) {
    MemoryPages memory(format(), 10);
    const auto place = memory.putRow(1, fromHex("00 00000000 ff ff ff"));
    EXPECT_EQ(members(UsageMap::read(*memory.pages, place, Meaning::Used)).size(), 10u);
}

TEST_P(UsageMapTest, RowLengthIsTheRowsOwn) {
    MemoryPages memory(format(), 3000);
    std::string row(5 + 300, '\0');
    row.back() = '\x80';
    const auto place = memory.putRow(1, row);
    EXPECT_EQ(members(UsageMap::read(*memory.pages, place, Meaning::Used)),
              (std::set<std::uint32_t>{300 * 8 - 1}));
}

TEST_P(UsageMapTest, RowThatIsNoMapIsDamage) {
    MemoryPages memory(format());
    for (const std::string& row : {std::string(), fromHex("02 00000000"), fromHex("00 0000")}) {
        const auto place = memory.putRow(1, row);
        EXPECT_EQ(faultOf([&] { UsageMap::read(*memory.pages, place, Meaning::Used); }),
                  base::EngineFault::Damaged);
    }
    EXPECT_EQ(faultOf([&] {
                  UsageMap::read(*memory.pages, {1, 9}, Meaning::Used);
              }),
              base::EngineFault::Damaged);
    EXPECT_EQ(faultOf([&] {
                  UsageMap::read(*memory.pages, {2, 0}, Meaning::Used);
              }),
              base::EngineFault::Damaged);
}

TEST_P(UsageMapTest, MapInsideItsWindowKeepsItsStart) {
    MemoryPages memory(format(), 400);
    const auto place = memory.putRow(1, emptyRow());
    UsageMap map = UsageMap::read(*memory.pages, place, Meaning::Used);
    map.add(21);
    map.add(399);
    EXPECT_EQ(members(stored(memory, map)), (std::set<std::uint32_t>{21, 399}));
    EXPECT_EQ(rowOf(memory, map).substr(0, 5), std::string(5, '\0'));
    EXPECT_EQ(rowOf(memory, map).size(), format().mapRow);
}

TEST_P(UsageMapTest, WindowMovesToPagesFarBehind) {
    MemoryPages memory(format(), 5000);
    const auto place = memory.putRow(1, emptyRow());
    UsageMap map = UsageMap::read(*memory.pages, place, Meaning::Used);
    map.add(4003);
    map.add(4100);
    EXPECT_EQ(members(stored(memory, map)), (std::set<std::uint32_t>{4003, 4100}));
    EXPECT_EQ(toHex(rowOf(memory, map).substr(0, 5)), "00a00f0000");
}

TEST_P(UsageMapTest, MapThatNoWindowHoldsBecomesIndirect) {
    MemoryPages memory(format(), 2000);
    const auto place = memory.putRow(1, emptyRow());
    UsageMap map = UsageMap::read(*memory.pages, place, Meaning::Used);
    map.add(7);
    map.add(7 + inlinePages());
    const UsageMap again = stored(memory, map);
    EXPECT_EQ(members(again), (std::set<std::uint32_t>{7, 7 + inlinePages()}));
    EXPECT_EQ(rowOf(memory, map)[0], '\x01');
    EXPECT_EQ(rowOf(memory, map).size(), format().mapRow);
    EXPECT_EQ(again.mapPages().size(), (format().mapRow - 1) / 4);
    const jet::PageHandle mapPage = memory.pages->read(again.mapPages()[0]);
    EXPECT_EQ(jet::get32(mapPage.bytes()), 0x0105u);
}

TEST_P(UsageMapTest, IndirectMapGetsAPageForEachStretchThatItNeeds) {
    const std::uint32_t covered = format().pagesPerMapPage();
    MemoryPages memory(format(), 3);
    memory.pages->create(3 * covered);  // the file reaches that far
    const auto place = memory.putRow(1, emptyRow());
    UsageMap map = UsageMap::read(*memory.pages, place, Meaning::Used);
    const std::set<std::uint32_t> expected{5, covered - 1, 2 * covered, 2 * covered + 9};
    for (const std::uint32_t page : expected) {
        map.add(page);
    }
    const UsageMap again = stored(memory, map);
    EXPECT_EQ(members(again), expected);
    EXPECT_NE(again.mapPages()[0], 0u);
    EXPECT_EQ(again.mapPages()[1], 0u);
    EXPECT_NE(again.mapPages()[2], 0u);
}

TEST_P(UsageMapTest, EmptiedMapIsEmpty) {
    MemoryPages memory(format(), 100);
    const auto place = memory.putRow(1, emptyRow());
    UsageMap map = UsageMap::read(*memory.pages, place, Meaning::Used);
    map.add(50);
    stored(memory, map);
    map.remove(50);
    EXPECT_TRUE(members(stored(memory, map)).empty());
}

TEST_P(UsageMapTest, UnchangedMapIsNotWritten) {
    MemoryPages memory(format(), 100);
    const auto place = memory.putRow(1, emptyRow());
    UsageMap map = UsageMap::read(*memory.pages, place, Meaning::Used);
    EXPECT_FALSE(map.isChanged());
    map.remove(7);
    EXPECT_FALSE(map.isChanged());
    map.add(7);
    EXPECT_TRUE(map.isChanged());
    map.add(7);
    stored(memory, map);
    EXPECT_FALSE(map.isChanged());
}

TEST_P(UsageMapTest, RandomMapsAreReadBack) {
    std::mt19937 random(5);
    for (int round = 0; round < 40; ++round) {
        MemoryPages memory(format(), 3);
        memory.pages->create(40000);
        UsageMap map = UsageMap::read(*memory.pages, memory.putRow(1, emptyRow()), Meaning::Used);
        std::set<std::uint32_t> expected;
        const std::uint32_t spread = 1u << (3 + random() % 13);
        const auto first = static_cast<std::uint32_t>(random() % 4000);
        for (int step = 0; step < 100; ++step) {
            const std::uint32_t page = first + static_cast<std::uint32_t>(random()) % spread;
            if (random() % 3 == 0) {
                map.remove(page);
                expected.erase(page);
            } else {
                map.add(page);
                expected.insert(page);
            }
            if (step % 25 == 24) {
                map = stored(memory, map);
                ASSERT_EQ(members(map), expected);
            }
        }
    }
}

// ---------------------------------------------------------------------------------------------------
// The map of free pages, in which a set bit means that a page is free. The set has the others.

std::string freeRow(const jet::Format& format, std::uint32_t used) {
    std::string row(format.mapRow, '\xFF');
    row.replace(0, 5, 5, '\0');
    for (std::uint32_t page = 0; page < used; ++page) {
        row[5 + page / 8] = static_cast<char>(row[5 + page / 8] & ~(1 << page % 8));
    }
    return row;
}

TEST_P(UsageMapTest, SetBitMeansFree) {
    MemoryPages memory(format(), 40);
    const auto place = memory.putRow(1, freeRow(format(), 19));
    const UsageMap map = UsageMap::read(*memory.pages, place, Meaning::FreePages);
    EXPECT_TRUE(map.contains(18));
    EXPECT_FALSE(map.contains(19));
}

TEST_P(UsageMapTest, MapOfFreePagesIsLengthenedInStepsOfFourBytes) {
    MemoryPages memory(format(), inlinePages());
    const auto place = memory.putRow(1, freeRow(format(), inlinePages()));
    UsageMap map = UsageMap::read(*memory.pages, place, Meaning::FreePages);
    memory.pages->create(inlinePages());
    map.add(inlinePages());
    const UsageMap again = stored(memory, map, Meaning::FreePages);
    EXPECT_EQ(rowOf(memory, map).size(), format().mapRow + 4);
    EXPECT_EQ(toHex(rowOf(memory, map).substr(format().mapRow)), "feffffff");
    EXPECT_TRUE(again.contains(inlinePages()));
}

TEST_P(UsageMapTest, MapOfFreePagesBecomesIndirectWhenItsPageIsFull) {
    const std::uint32_t far = 40000;
    MemoryPages memory(format(), 3);
    const auto place = memory.putRow(1, freeRow(format(), 3));
    UsageMap map = UsageMap::read(*memory.pages, place, Meaning::FreePages);
    memory.pages->create(far);
    for (std::uint32_t page = 3; page <= far; ++page) {
        map.add(page);
    }
    map.remove(1000);
    std::vector<std::uint32_t> allocated;
    map.prepare(*memory.pages, [&] {
        allocated.push_back(memory.pages->pageCount());
        map.add(allocated.back());
        return allocated.back();
    });
    map.fill(*memory.pages);
    EXPECT_EQ(rowOf(memory, map)[0], '\x01');
    EXPECT_EQ(rowOf(memory, map).size(), format().mapRow);
    const UsageMap again = UsageMap::read(*memory.pages, place, Meaning::FreePages);
    EXPECT_FALSE(again.contains(1000));
    EXPECT_TRUE(again.contains(far));
    EXPECT_EQ(allocated.size(), far / format().pagesPerMapPage() + 1);
    for (const std::uint32_t page : allocated) {
        EXPECT_TRUE(again.contains(page)) << "a page of the map itself may not be free";
    }
    // What lies behind the end of the file is free.
    const jet::PageHandle last = memory.pages->read(allocated.back());
    EXPECT_EQ(last.bytes()[format().pageSize - 1], 0xFF);
}

}  // namespace
}  // namespace jet_test
