#include "jet/checker.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "base/failure.h"
#include "jet/bytes.h"
#include "jet/format.h"
#include "tests/jet/item_table.h"
#include "tests/jet/rich_file.h"
#include "tests/jet/sample_files.h"
#include "tests/support/faulty_files.h"
#include "tests/support/machine_files.h"

namespace jet_test {

namespace {

using Kind = jet::CheckFinding::Kind;

const std::string path = "/archive.mdb";

}  // namespace

class CheckSamples : public testing::Test {
  protected:
    void SetUp() override {
        if (sampleFolder().empty()) {
            GTEST_SKIP() << "the folder of sample files is missing";
        }
    }
    jet::CheckReport check(const std::string& name) {
        return jet::checkDatabase(*files_, sampleFolder() + "/" + name);
    }

    std::unique_ptr<base::FileOpener> files_ = support::machineFiles();
};

TEST_F(CheckSamples, FilesOfOtherProgramsAreSound) {
    for (const char* const name :
         {"bigtdef-memo-jet3.mdb", "bigtdef-memo-jet4.mdb", "compindex-jet3.mdb",
          "deleted-jet4.mdb", "empty-engine-jet4.mdb", "emptytables-jet3.mdb", "overflow-jet3.mdb",
          "overflow-jet4.mdb", "ref-ops-jet3.mdb", "ref-ops-jet4.mdb", "ref-tiny-jet3.mdb",
          "ref-tiny-jet4.mdb", "unicode-jet4.mdb"}) {
        const jet::CheckReport report = check(name);
        EXPECT_TRUE(report.isSound()) << name << "\n" << textOf(report);
        EXPECT_GE(report.tableCount, 4u) << name;
        EXPECT_GE(report.rowCount, 24u) << name;
    }
}

TEST_F(CheckSamples, AMovedRowThatNothingRefersToIsNamed) {
    const jet::CheckReport report = check("jackcess-jet4.mdb");
    ASSERT_EQ(report.findings().size(), 1u) << textOf(report);
    EXPECT_EQ(report.findings()[0].kind, Kind::Unfinished);
    EXPECT_EQ(report.findings()[0].page, 32u);
}

TEST_F(CheckSamples, FilesThatCannotBeCheckedAreRefused) {
    EXPECT_THROW(check("encoded-jet3.mdb"), base::EngineFailure);
    EXPECT_THROW(check("password-jet4.mdb"), base::EngineFailure);
    EXPECT_THROW(check("README.md"), base::EngineFailure);
    EXPECT_THROW(check("no such file"), base::EngineFailure);
}

/// Each test spoils one thing in a sound file and expects it to be named.
class Checker : public testing::TestWithParam<jet::FileFormat> {
  protected:
    Checker() {
        makeRichFile(files_, path, GetParam());
        content_ = files_.read(path);
    }

    const jet::Format& format() const {
        return GetParam() == jet::FileFormat::Jet3 ? jet::jet3Format : jet::jet4Format;
    }
    std::uint8_t* at(std::size_t page, std::size_t offset = 0) {
        return reinterpret_cast<std::uint8_t*>(content_.data()) + page * format().pageSize + offset;
    }
    std::size_t pageCount() const { return content_.size() / format().pageSize; }

    std::uint32_t slotCount(std::size_t page) {
        return jet::get16(at(page, format().slotCountOffset));
    }
    std::uint8_t* slot(std::size_t page, std::uint32_t slot) {
        return at(page, format().dataHeader + 2 * slot);
    }

    /// Pages whose kind and owner (0: any) are these.
    std::vector<std::size_t> pagesOf(std::uint8_t kind, std::uint32_t owner = 0) {
        std::vector<std::size_t> pages;
        for (std::size_t page = 2; page < pageCount(); ++page) {
            if (*at(page) == kind && (owner == 0 || jet::get32(at(page, 4)) == owner)) {
                pages.push_back(page);
            }
        }
        return pages;
    }

    /// The page of the definition of the table with moved rows, and a page of each kind of its
    /// rows.
    std::pair<std::size_t, std::uint32_t> findSlot(std::uint32_t flags) {
        for (std::size_t page = 2; page < pageCount(); ++page) {
            if (*at(page) != 1 || jet::get32(at(page, 4)) == jet::longValueOwner) {
                continue;
            }
            for (std::uint32_t i = 0; i < slotCount(page); ++i) {
                if ((jet::get16(slot(page, i)) & 0xC000u) == flags && jet::get32(at(page, 4)) > 5) {
                    return {page, i};
                }
            }
        }
        ADD_FAILURE() << "no such row";
        return {2, 0};
    }

    jet::CheckReport check() {
        files_.write(path, content_);
        return jet::checkDatabase(files_, path);
    }

    /// True when there is a finding of this kind whose text holds these words.
    testing::AssertionResult finds(Kind kind, const std::string& words) {
        const jet::CheckReport report = check();
        for (const jet::CheckFinding& finding : report.findings()) {
            if (finding.kind == kind && finding.text.find(words) != std::string::npos) {
                return testing::AssertionSuccess();
            }
        }
        return testing::AssertionFailure() << "\"" << words << "\" is not among\n"
                                           << textOf(report);
    }

    support::FaultyFiles files_;
    std::string content_;
};

TEST_P(Checker, FindsNothingInASoundFile) {
    const jet::CheckReport report = check();
    EXPECT_TRUE(report.findings().empty()) << textOf(report);
    EXPECT_EQ(report.pageCount, pageCount());
    EXPECT_EQ(report.tableCount, 7u);
}

TEST_P(Checker, WritesNothing) {
    files_.heal();
    check();
    EXPECT_EQ(files_.writes(), 0u);
    EXPECT_EQ(files_.syncs(), 0u);
}

TEST_P(Checker, NamesAWrongCountOfFreeBytes) {
    const auto [page, row] = findSlot(0);
    jet::put16(at(page, 2), jet::get16(at(page, 2)) - 1u);
    EXPECT_TRUE(finds(Kind::Damage, "free bytes"));
}

TEST_P(Checker, NamesRowsOutOfOrder) {
    const auto [page, row] = findSlot(0);
    jet::put16(slot(page, 0), 0x20);
    EXPECT_TRUE(finds(Kind::Damage, "rows do not lie in order"));
}

TEST_P(Checker, NamesARowWithoutStructure) {
    const auto [page, row] = findSlot(0);
    const std::uint32_t start = jet::get16(slot(page, row)) & 0x1FFFu;
    jet::put16(at(page, start), 0xFFFF);
    EXPECT_TRUE(finds(Kind::Damage, "no sound structure"));
}

TEST_P(Checker, NamesAPageOfAnotherTable) {
    const auto [page, row] = findSlot(0);
    jet::put32(at(page, 4), 2);
    EXPECT_TRUE(finds(Kind::Damage, "it should hold rows of table"));
}

TEST_P(Checker, NamesAPointerThatLeadsNowhere) {
    const auto [page, row] = findSlot(0x4000);
    const std::uint32_t start = jet::get16(slot(page, row)) & 0x1FFFu;
    jet::put32(at(page, start), 0x00000200);
    EXPECT_TRUE(finds(Kind::Damage, "which is no page of the table"));
}

TEST_P(Checker, NamesAMovedRowThatNothingRefersTo) {
    const auto [page, row] = findSlot(0x4000);
    jet::put16(slot(page, row), jet::get16(slot(page, row)) | 0x8000u);  // deleted
    EXPECT_TRUE(finds(Kind::Unfinished, "has moved here and no row leads to it"));
}

TEST_P(Checker, NamesARowCountThatIsWrong) {
    const auto [page, row] = findSlot(0);
    const std::uint32_t definition = jet::get32(at(page, 4));
    std::uint8_t* const count = at(definition, format().rowCountOffset);
    jet::put32(count, jet::get32(count) + 1);
    // Without a mark of an interrupted change, a Jet 4 file should count right.
    const bool jet4 = format().isJet4();
    EXPECT_TRUE(finds(jet4 ? Kind::Damage : Kind::Unfinished, "counts"));
}

TEST_P(Checker, NamesAnAutonumberThatWouldComeTwice) {
    for (const std::size_t definition : pagesOf(2)) {
        std::uint8_t* const last = at(definition, format().autoNumberOffset);
        if (jet::get32(last) != 0) {
            jet::put32(last, 1);
        }
    }
    EXPECT_TRUE(finds(format().isJet4() ? Kind::Damage : Kind::Unfinished,
                      "and the last one given out was 1"));
}

TEST_P(Checker, NamesADefinitionOfAWrongLength) {
    for (const std::size_t definition : pagesOf(2)) {
        if (jet::get32(at(definition, 4)) == 0 && jet::get32(at(definition, 8)) < 600 &&
            jet::get32(at(definition, 8)) > 100) {
            std::uint8_t* const length = at(definition, 8);
            jet::put32(length, jet::get32(length) + 2);
            break;
        }
    }
    EXPECT_TRUE(finds(Kind::Damage, "wrong length"));
}

TEST_P(Checker, NamesAUsedPageThatIsMarkedFree) {
    const auto [page, row] = findSlot(0);
    const std::uint32_t start = jet::get16(slot(1, 0)) & 0x1FFFu;
    *at(1, start + 5 + page / 8) |= static_cast<std::uint8_t>(1u << page % 8);
    EXPECT_TRUE(finds(Kind::Damage, "and marked free"));
}

TEST_P(Checker, NotesAPageThatNothingUses) {
    content_.append(format().pageSize, '\0');
    const std::size_t page = pageCount() - 1;
    const std::uint32_t start = jet::get16(slot(1, 0)) & 0x1FFFu;
    *at(1, start + 5 + page / 8) &= static_cast<std::uint8_t>(~(1u << page % 8));
    EXPECT_TRUE(finds(Kind::LostSpace, "nothing uses 1 page"));
    EXPECT_TRUE(check().isSound());
}

TEST_P(Checker, NamesAPageInTwoMaps) {
    // The second map row of a page of maps is the hint of pages with room: make it name another
    // table's.
    const auto maps = pagesOf(1);
    for (const std::size_t page : maps) {
        if (jet::get32(at(page, 4)) == 0 && slotCount(page) >= 2) {
            const std::uint32_t start = jet::get16(slot(page, 0)) & 0x1FFFu;
            *at(page, start + 5) |= 0x04;  // the catalog's definition
        }
    }
    EXPECT_TRUE(finds(Kind::Damage, "and also"));
}

TEST_P(Checker, NamesAnIndexEntryOutOfOrder) {
    const std::size_t leaf = pagesOf(4, 2).front();
    std::swap_ranges(at(leaf, format().indexEntries + 1), at(leaf, format().indexEntries + 5),
                     at(leaf, format().indexEntries + 40));
    EXPECT_FALSE(check().isIntact());
}

TEST_P(Checker, NamesATableThatIsNotFoundByName) {
    // The last entry of an index of the catalog goes.
    const std::size_t leaf = pagesOf(4, 2).front();
    std::uint8_t* const mask = at(leaf, format().indexMask);
    std::size_t last = 0;
    for (std::size_t bit = 0; bit < (format().indexEntries - format().indexMask) * 8; ++bit) {
        last = (mask[bit / 8] >> (bit % 8) & 1) != 0 ? bit : last;
    }
    mask[last / 8] &= static_cast<std::uint8_t>(~(1u << last % 8));
    EXPECT_TRUE(finds(Kind::Damage, "is not found through its index"));
}

TEST_P(Checker, NamesALongValueWhosePiecesAreGone) {
    for (const std::size_t page : pagesOf(1, jet::longValueOwner)) {
        for (std::uint32_t i = 0; i < slotCount(page); ++i) {
            jet::put16(slot(page, i), jet::get16(slot(page, i)) | 0xC000u);
        }
    }
    EXPECT_TRUE(finds(Kind::Damage, "where there is none"));
}

TEST_P(Checker, NotesPiecesThatBelongToNoRow) {
    const auto [page, row] = findSlot(0);
    for (std::uint32_t i = 0; i < slotCount(page); ++i) {
        jet::put16(slot(page, i), jet::get16(slot(page, i)) | 0xC000u);
    }
    EXPECT_TRUE(finds(Kind::LostSpace, "belong to no row"));
}

TEST_P(Checker, NotesBytesBehindTheLastPage) {
    content_ += "abc";
    EXPECT_TRUE(finds(Kind::Unfinished, "3 bytes at the end of the file make no page"));
}

TEST_P(Checker, KeepsABoundedNumberOfFindings) {
    for (const std::size_t page : pagesOf(1)) {
        if (jet::get32(at(page, 4)) > 5) {
            for (std::uint32_t i = 0; i < slotCount(page); ++i) {
                jet::put16(slot(page, i), (jet::get16(slot(page, i)) & 0x1FFFu) | 0x4000u);
            }
        }
    }
    const jet::CheckReport report = check();
    EXPECT_FALSE(report.isIntact());
    EXPECT_LE(report.findings().size(), jet::CheckReport::maximumFindings);
    EXPECT_EQ(report.findings().size() + report.leftOut(), report.count(Kind::Damage) +
                                                               report.count(Kind::Unfinished) +
                                                               report.count(Kind::LostSpace));
}

TEST_P(Checker, AFileBeingWrittenIsInUse) {
    ItemSession::create(files_, "/items.mdb", GetParam());
    ItemModel model;
    ItemSession session(files_, "/items.mdb", model);
    session.insert({1, 1, "one", ""});
    try {
        jet::checkDatabase(files_, "/items.mdb");
        ADD_FAILURE() << "checked in the middle of a change";
    } catch (const base::EngineFailure& failure) {
        EXPECT_EQ(failure.fault(), base::EngineFault::InUse);
    }
    session.close();
}

INSTANTIATE_TEST_SUITE_P(Formats, Checker,
                         testing::Values(jet::FileFormat::Jet3, jet::FileFormat::Jet4),
                         [](const auto& format) {
                             return format.param == jet::FileFormat::Jet3 ? "Jet3" : "Jet4";
                         });

}  // namespace jet_test
