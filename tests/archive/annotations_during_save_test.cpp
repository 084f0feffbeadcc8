// Keywords and notes that are written while a save writes the same archive, row by row in between:
// whatever comes first, both keep what is theirs, and the file stays sound.

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>

#include "archive/annotations.h"
#include "base/failure.h"
#include "jet/checker.h"
#include "tests/archive/archive_fixture.h"

namespace {

using archive::AnnotationChange;
using Texts = std::vector<std::string>;

class AnnotateDuringASave : public support::ArchiveTest {
  protected:
    static constexpr int rowsOfMedium = 40;

    AnnotateDuringASave() {
        addMedium(1, 0, rowsOfMedium);
        addMedium(2, 0, rowsOfMedium);
    }

    static base::ScanEntry entry(int medium, int number) {
        base::ScanEntry entry;
        entry.FileName = "file " + std::to_string(number) + " of " + std::to_string(medium);
        entry.path = std::to_string(medium) + ":\\folder";
        entry.Folder = "file";
        entry.Type = std::string(static_cast<std::size_t>(number % 60), 't');
        entry.keywords = "stored";
        entry.mediaId = medium;
        return entry;
    }
    void addMedium(int medium, int first, int end) {
        std::vector<base::ScanEntry> entries;
        for (int i = first; i < end; ++i) {
            entries.push_back(entry(medium, i));
        }
        tables.addRecords(state.currentArchive(), entries);
    }
    void deleteMedium(int medium) {
        archive::ArchiveTable table(engine, state.currentArchive(), "main");
        const int field = table.rows().field("mediaid");
        for (; !table.rows().endOfFile(); table.rows().moveNext()) {
            if (table.rows().text(field) == std::to_string(medium)) {
                table.rows().deleteCurrent();
            }
        }
        table.close();
    }

    /// New keywords, longer than the old ones, for every entry of medium 1 as it is now.
    std::vector<AnnotationChange> changes() {
        archive::ArchiveTable table(engine, state.currentArchive(), "main",
                                    jet::LockType::ReadOnly);
        const archive::RecordReader reader(table.rows());
        std::vector<AnnotationChange> result;
        for (; !table.rows().endOfFile(); table.rows().moveNext()) {
            AnnotationChange change{table.rows().place(), {}, {tag(), "a note", ""}};
            reader.read(change.expected);
            if (change.expected.mediaId == 1) {
                result.push_back(change);
            }
        }
        return result;
    }
    static std::string tag() { return std::string(120, 'k'); }

    /// Lets `save` happen after so many rows have been looked at or written, for every number.
    void annotateWith(const std::function<void()>& save, const std::function<void()>& check) {
        const std::string before = files.read(path());
        for (std::size_t moment = 1; moment <= 2 * std::size_t{rowsOfMedium}; ++moment) {
            SCOPED_TRACE("at row " + std::to_string(moment));
            files.write(path(), before);
            std::size_t calls = 0;
            archive::annotate(engine, state.currentArchive(), changes(), [&](std::size_t) {
                if (++calls == moment) {
                    save();
                }
                return true;
            });
            EXPECT_GE(calls, std::min<std::size_t>(moment, rowsOfMedium));
            expectSound();
            check();
        }
    }
    void expectSound() {
        const jet::CheckReport report = jet::checkDatabase(files, path());
        EXPECT_TRUE(report.isSound());
    }
    std::string path() const { return state.archiveFolder + state.archiveName; }

    /// By name the keywords of the entries of a medium; a name that comes twice fails.
    std::map<std::string, std::string> keywordsOf(int medium) {
        std::map<std::string, std::string> result;
        archive::ArchiveTable table(engine, state.currentArchive(), "main",
                                    jet::LockType::ReadOnly);
        const archive::RecordReader reader(table.rows());
        base::ScanEntry present;
        for (; !table.rows().endOfFile(); table.rows().moveNext()) {
            reader.read(present);
            if (present.mediaId == medium) {
                const int number = std::stoi(present.FileName.substr(5));
                EXPECT_EQ(present.FileName, entry(medium, number).FileName);
                EXPECT_EQ(present.Type, entry(medium, number).Type);
                EXPECT_EQ(present.path, entry(medium, number).path);
                EXPECT_TRUE(result.emplace(present.FileName, present.keywords).second);
            }
        }
        return result;
    }
    void expectAll(int medium, int count, const std::string& keywords) {
        const auto found = keywordsOf(medium);
        EXPECT_EQ(found.size(), static_cast<std::size_t>(count)) << medium;
        EXPECT_TRUE(std::ranges::all_of(found, [&](const auto& each) {
            return each.second == keywords;
        })) << medium;
    }
};

TEST_F(AnnotateDuringASave, ANewMediumIsStoredInTheMiddle) {
    annotateWith([this] { addMedium(3, 0, 200); },
                 [this] {
                     expectAll(1, rowsOfMedium, tag());
                     expectAll(2, rowsOfMedium, "stored");
                     expectAll(3, 200, "stored");
                 });
}

TEST_F(AnnotateDuringASave, AnotherMediumIsUpdatedInTheMiddle) {
    annotateWith(
        [this] {
            deleteMedium(2);
            addMedium(2, 100, 250);
        },
        [this] {
            expectAll(1, rowsOfMedium, tag());
            expectAll(2, 150, "stored");
        });
}

TEST_F(AnnotateDuringASave, TheSameMediumIsUpdatedInTheMiddle) {
    // New rows may lie where the old ones lay; none of them is taken for an old one.
    annotateWith(
        [this] {
            deleteMedium(1);
            addMedium(1, 100, 250);
        },
        [this] {
            expectAll(1, 150, "stored");
            expectAll(2, rowsOfMedium, "stored");
        });
}

TEST_F(AnnotateDuringASave, ItIsDoneBetweenTwoRowsOfASave) {
    archive::ArchiveTable table(engine, state.currentArchive(), "main");
    archive::RecordWriter writer(table.rows());
    constexpr int stored = 300;
    for (int i = 0; i < stored; ++i) {
        writer.write(entry(3, i), 3);
        if (i % 20 == 7) {
            const auto result = archive::annotate(engine, state.currentArchive(), changes());
            EXPECT_TRUE(result.missed.empty());
        }
    }
    table.close();
    expectSound();
    expectAll(1, rowsOfMedium, tag());
    expectAll(2, rowsOfMedium, "stored");
    expectAll(3, stored, "stored");
}

TEST_F(AnnotateDuringASave, ATextThatIsTooLongIsRefusedInTheMiddleOfASaveAndHarmsNothing) {
    archive::ArchiveTable table(engine, state.currentArchive(), "main");
    archive::RecordWriter writer(table.rows());
    for (int i = 0; i < 100; ++i) {
        writer.write(entry(3, i), 3);
        if (i == 50) {
            auto wanted = changes();
            wanted.back().annotation.notes2 = std::string(256, 'x');
            EXPECT_THROW(archive::annotate(engine, state.currentArchive(), wanted),
                         base::EngineFailure);
        }
    }
    table.close();
    expectSound();
    expectAll(1, rowsOfMedium, "stored");
    expectAll(3, 100, "stored");
}

}  // namespace
