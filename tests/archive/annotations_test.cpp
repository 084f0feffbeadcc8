#include "archive/annotations.h"

#include <gtest/gtest.h>

#include "base/failure.h"
#include "tests/archive/archive_fixture.h"

namespace {

using archive::Annotation;
using archive::AnnotationChange;

class Annotate : public support::ArchiveTest {
  protected:
    Annotate() {
        for (int i = 0; i < 3; ++i) {
            base::ScanEntry entry;
            entry.FileName = "file" + std::to_string(i);
            entry.path = "1:";
            entry.Folder = "file";
            entry.keywords = "old" + std::to_string(i);
            entry.mediaId = 1;
            entries_.push_back(entry);
        }
        tables.addRecords(state.currentArchive(), entries_);
    }

    std::vector<AnnotationChange> changesTo(const Annotation& annotation) {
        archive::ArchiveTable table(engine, state.currentArchive(), "main");
        archive::RecordReader reader(table.rows());
        std::vector<AnnotationChange> changes;
        for (; !table.rows().endOfFile(); table.rows().moveNext()) {
            AnnotationChange change{table.rows().place(), {}, annotation};
            reader.read(change.expected);
            changes.push_back(change);
        }
        return changes;
    }

    archive::AnnotationResult annotate(const std::vector<AnnotationChange>& changes) {
        return archive::annotate(engine, state.currentArchive(), changes);
    }

    std::vector<base::ScanEntry> entries_;
};

using Texts = std::vector<std::string>;

TEST_F(Annotate, ChangesTheRowsInPlaceAndUndoesIt) {
    const auto changes = changesTo({"new", "first", "second"});
    const auto result = annotate({changes[2], changes[0]});
    EXPECT_TRUE(result.missed.empty());
    EXPECT_EQ(column("main", "keywords"), (Texts{"new", "old1", "new"}));
    EXPECT_EQ(column("main", "notes1"), (Texts{"first", "", "first"}));
    EXPECT_EQ(column("main", "notes2"), (Texts{"second", "", "second"}));
    EXPECT_EQ(column("main", "filename"), (Texts{"file0", "file1", "file2"}));
    const auto undone = annotate(result.undo);
    EXPECT_TRUE(undone.missed.empty());
    EXPECT_EQ(column("main", "keywords"), (Texts{"old0", "old1", "old2"}));
    EXPECT_EQ(column("main", "notes1"), (Texts{"", "", ""}));
}

TEST_F(Annotate, RefusesATextThatIsTooLongBeforeAnyRowIsChanged) {
    auto changes = changesTo({"new", "", ""});
    changes[2].annotation.notes2 = std::string(256, 'x');
    try {
        annotate(changes);
        FAIL() << "no failure";
    } catch (const base::EngineFailure& failure) {
        EXPECT_EQ(failure.fault(), base::EngineFault::Value);
        EXPECT_NE(failure.text().find("notes2"), std::string::npos) << failure.text();
    }
    EXPECT_EQ(column("main", "keywords"), (Texts{"old0", "old1", "old2"}));
}

TEST_F(Annotate, LeavesARowThatHoldsSomethingElseByNow) {
    auto changes = changesTo({"new", "", ""});
    changes[1].expected.FileName = "another";
    const auto result = annotate(changes);
    EXPECT_EQ(result.missed, (std::vector<std::size_t>{1}));
    EXPECT_EQ(result.undo.size(), 2u);
    EXPECT_EQ(column("main", "keywords"), (Texts{"new", "old1", "new"}));
}

TEST_F(Annotate, MissesARowThatIsGone) {
    const auto changes = changesTo({"new", "", ""});
    {
        archive::ArchiveTable table(engine, state.currentArchive(), "main");
        table.rows().deleteCurrent();
        table.close();
    }
    const auto result = annotate(changes);
    EXPECT_EQ(result.missed, (std::vector<std::size_t>{0}));
    EXPECT_EQ(column("main", "keywords"), (Texts{"new", "new"}));
}

TEST_F(Annotate, EndsWhenItIsToldTo) {
    const auto changes = changesTo({"new", "", ""});
    const auto result = archive::annotate(engine, state.currentArchive(), changes,
                                          [](std::size_t) { return false; });
    EXPECT_TRUE(result.undo.empty());
    EXPECT_EQ(column("main", "keywords"), (Texts{"old0", "old1", "old2"}));
}

TEST_F(Annotate, MissesARowThatIsChangedOrDeletedBetweenTheLookAndTheWriting) {
    const auto changes = changesTo({"new", "", ""});
    std::size_t calls = 0;
    const auto meanwhile = [&](std::size_t) {
        if (++calls == changes.size()) {
            archive::ArchiveTable table(engine, state.currentArchive(), "main");
            table.rows().deleteCurrent();
            table.rows().moveNext();
            table.rows().setText(table.rows().field("notes1"), "someone else's");
            table.rows().update();
            table.close();
        }
        return true;
    };
    const auto result = archive::annotate(engine, state.currentArchive(), changes, meanwhile);
    EXPECT_EQ(result.missed, (std::vector<std::size_t>{0, 1}));
    EXPECT_EQ(result.undo.size(), 1U);
    EXPECT_EQ(column("main", "keywords"), (Texts{"old1", "new"}));
    EXPECT_EQ(column("main", "notes1"), (Texts{"someone else's", ""}));
}

TEST_F(Annotate, TextsMayGrowBeyondTheRowsPlace) {
    std::vector<base::ScanEntry> many(200, entries_.front());
    tables.addRecords(state.currentArchive(), many);
    const auto changes = changesTo({std::string(250, 'k'), std::string(250, 'n'), "m"});
    const auto result = annotate(changes);
    EXPECT_TRUE(result.missed.empty());
    EXPECT_EQ(column("main", "keywords"), Texts(203, std::string(250, 'k')));
    EXPECT_TRUE(annotate(result.undo).missed.empty());
    EXPECT_EQ(column("main", "keywords").at(1), "old1");
}

}  // namespace
