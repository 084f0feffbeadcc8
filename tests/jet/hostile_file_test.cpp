// Files made to mislead: whatever stands in them, the engine ends with rows or with a failure of
// its own, soon and without much memory.

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <random>
#include <string>

#include "base/failure.h"
#include "jet/bytes.h"
#include "jet/checker.h"
#include "jet/format.h"
#include "tests/jet/largest_allocation.h"
#include "tests/jet/rich_file.h"
#include "tests/support/faulty_files.h"

namespace jet_test {

namespace {

const std::string path = "/archive.mdb";

using Clock = std::chrono::steady_clock;

/// No treatment of so small a file may take longer; a sanitizer's build needs most of it.
constexpr auto patience = std::chrono::seconds(10);
/// None may ask for more memory at once; the cache of pages is 8 MiB in many pieces.
constexpr std::size_t mostMemory = std::size_t{16} << 20;

}  // namespace

class HostileFile : public testing::TestWithParam<jet::FileFormat> {
  protected:
    HostileFile() {
        makeRichFile(files_, path, GetParam());
        sound_ = files_.read(path);
    }

    const jet::Format& format() const {
        return GetParam() == jet::FileFormat::Jet3 ? jet::jet3Format : jet::jet4Format;
    }
    std::size_t pageCount() const { return sound_.size() / format().pageSize; }

    static std::uint8_t* at(std::string& content, std::size_t offset) {
        return reinterpret_cast<std::uint8_t*>(content.data()) + offset;
    }
    std::uint8_t* page(std::string& content, std::size_t number, std::size_t offset = 0) const {
        return at(content, number * format().pageSize + offset);
    }
    std::uint8_t kindOf(std::size_t number) { return *page(sound_, number); }

    /// Calls `use` and lets it fail in the engine's way only.
    template <typename Use>
    void expectOrderly(const std::string& content, const std::string& what, Use use) {
        files_.write(path, content);
        const auto start = Clock::now();
        const LargestAllocation memory;
        try {
            use();
        } catch (const base::EngineFailure& failure) {
            EXPECT_NE(failure.text(), "");
        } catch (const std::exception& other) {
            ADD_FAILURE() << what << ": " << other.what();
        }
        EXPECT_LT(Clock::now() - start, patience) << what;
        EXPECT_LT(memory.bytes(), mostMemory) << what;
    }

    void expectOrderly(const std::string& content, const std::string& what) {
        expectOrderly(content, what, [&] { readEverything(files_, path); });
        expectOrderly(content, what, [&] { jet::checkDatabase(files_, path); });
        expectOrderly(content, what, [&] { changeEverything(files_, path); });
    }

    /// What reading everything fails with.
    std::string failureOf(const std::string& content) {
        files_.write(path, content);
        try {
            readEverything(files_, path);
        } catch (const base::EngineFailure& failure) {
            EXPECT_EQ(failure.fault(), base::EngineFault::Damaged);
            return failure.text();
        }
        return "no failure";
    }

    bool checkFindsDamage(const std::string& content) {
        files_.write(path, content);
        return !jet::checkDatabase(files_, path).isIntact();
    }

    support::FaultyFiles files_;
    std::string sound_;
};

TEST_P(HostileFile, TheFileBeforeIsSound) {
    const jet::CheckReport report = jet::checkDatabase(files_, path);
    EXPECT_TRUE(report.isSound());
    EXPECT_GT(readEverything(files_, path), 10000u);
    changeEverything(files_, path);
    EXPECT_TRUE(jet::checkDatabase(files_, path).isSound());
}

TEST_P(HostileFile, CutAtEveryPageBoundary) {
    for (std::size_t pages = 0; pages < pageCount(); ++pages) {
        expectOrderly(sound_.substr(0, pages * format().pageSize),
                      "cut to " + std::to_string(pages) + " pages");
    }
}

TEST_P(HostileFile, CutAtOddPlaces) {
    std::mt19937 random(7);
    for (std::size_t length = 0; length < 0x40; ++length) {
        expectOrderly(sound_.substr(0, length), "cut to " + std::to_string(length) + " bytes");
    }
    for (int i = 0; i < 100; ++i) {
        const std::size_t length = random() % sound_.size();
        expectOrderly(sound_.substr(0, length), "cut to " + std::to_string(length) + " bytes");
    }
}

TEST_P(HostileFile, ACutFileIsDamaged) {
    const std::string failure = failureOf(sound_.substr(0, 2 * format().pageSize));
    EXPECT_NE(failure.find("the file is cut after"), std::string::npos) << failure;
}

TEST_P(HostileFile, BytesFlippedInEveryKindOfPage) {
    std::mt19937 random(11);
    for (std::size_t number = 0; number < pageCount() && !HasFailure(); ++number) {
        for (int i = 0; i < 12 && !HasFailure(); ++i) {
            std::string content = sound_;
            // Page heads matter most: half of the flips go there.
            const std::size_t reach = i % 2 == 0 ? 64 : format().pageSize;
            for (std::uint32_t flips = 1 + random() % 4; flips > 0; --flips) {
                *page(content, number, random() % reach) ^=
                    static_cast<std::uint8_t>(1u << random() % 8);
            }
            expectOrderly(content, "page " + std::to_string(number) + " of kind " +
                                       std::to_string(kindOf(number)) + ", variant " +
                                       std::to_string(i));
        }
    }
}

TEST_P(HostileFile, NumbersThatPointFarOut) {
    for (std::size_t number = 0; number < pageCount() && !HasFailure(); ++number) {
        for (const std::uint32_t wild : {0xFFFFFFFFu, 0x7FFFFF00u}) {
            for (std::size_t offset = 2; offset < 72; offset += 11) {
                std::string content = sound_;
                jet::put32(page(content, number, offset), wild);
                expectOrderly(content, "page " + std::to_string(number) + ", offset " +
                                           std::to_string(offset));
            }
        }
    }
}

TEST_P(HostileFile, RootsOfIndexesThatPointFarOut) {
    // Wherever in a definition the root of an index stands: a wild number on its own last byte.
    for (std::size_t number = 2; number < pageCount() && !HasFailure(); ++number) {
        for (std::size_t offset = 40; kindOf(number) == 2 && offset < 400; ++offset) {
            std::string content = sound_;
            *page(content, number, offset) = 0xFE;
            expectOrderly(content,
                          "page " + std::to_string(number) + ", byte " + std::to_string(offset),
                          [&] { jet::checkDatabase(files_, path); });
        }
    }
}

TEST_P(HostileFile, PagesInEachOthersPlaces) {
    for (std::size_t number = 1; number < pageCount(); ++number) {
        std::string content = sound_;
        std::copy_n(sound_.begin() +
                        static_cast<std::ptrdiff_t>((pageCount() - number) * format().pageSize),
                    format().pageSize,
                    content.begin() + static_cast<std::ptrdiff_t>(number * format().pageSize));
        expectOrderly(content, "page " + std::to_string(number));
    }
}

TEST_P(HostileFile, ADefinitionWhosePagesFormALoop) {
    for (std::size_t number = 2; number < pageCount(); ++number) {
        if (kindOf(number) == 2) {
            std::string content = sound_;
            jet::put32(page(content, number, 4), static_cast<std::uint32_t>(number));
            EXPECT_NE(failureOf(content).find("form a loop"), std::string::npos) << number;
            EXPECT_TRUE(checkFindsDamage(content)) << number;
        }
    }
}

TEST_P(HostileFile, ALongValueThatLeadsBackToItself) {
    // Every pointer at the head of a piece leads to that very piece.
    std::string content = sound_;
    int chains = 0;
    for (std::size_t number = 2; number < pageCount(); ++number) {
        if (jet::get32(page(content, number, 4)) != jet::longValueOwner) {
            continue;
        }
        const std::uint32_t slots = jet::get16(page(content, number, format().slotCountOffset));
        for (std::uint32_t slot = 0; slot < slots; ++slot) {
            const std::uint32_t start =
                jet::get16(page(content, number, format().dataHeader + 2 * slot)) & 0x1FFFu;
            const std::uint32_t next = jet::get32(page(content, number, start));
            if (next != 0 && next >> 8 < pageCount()) {
                jet::put32(page(content, number, start),
                           static_cast<std::uint32_t>(number) << 8 | slot);
                ++chains;
            }
        }
    }
    ASSERT_GT(chains, 0);
    EXPECT_TRUE(checkFindsDamage(content));
    EXPECT_NE(failureOf(content), "no failure");
}

TEST_P(HostileFile, AMapThatNamesPagesBeyondTheFile) {
    // The bitmap of the first map row on every page of maps.
    for (std::size_t number = 2; number < pageCount(); ++number) {
        if (kindOf(number) != 1 || jet::get32(page(sound_, number, 4)) != 0) {
            continue;
        }
        std::string content = sound_;
        const std::uint32_t start =
            jet::get16(page(content, number, format().dataHeader)) & 0x1FFFu;
        *page(content, number, start + format().mapRow - 1) = 0x80;
        EXPECT_TRUE(checkFindsDamage(content)) << number;
        expectOrderly(content, "map page " + std::to_string(number));
    }
}

TEST_P(HostileFile, MoreColumnsThanAnyTableHas) {
    for (std::size_t number = 2; number < pageCount(); ++number) {
        if (kindOf(number) == 2) {
            std::string content = sound_;
            jet::put16(page(content, number, format().tableTypeOffset + 5), 0xFFFF);
            expectOrderly(content, "definition " + std::to_string(number));
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Formats, HostileFile,
                         testing::Values(jet::FileFormat::Jet3, jet::FileFormat::Jet4),
                         [](const auto& format) {
                             return format.param == jet::FileFormat::Jet3 ? "Jet3" : "Jet4";
                         });

}  // namespace jet_test
