// Real files and real processes: who may read and write at the same time.

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

#include "tests/jet/engine_fixture.h"
#include "tests/support/other_process.h"

namespace jet_test {

namespace {

jet::TableDefinition numbers() { return {"numbers", {{"N", jet::DataType::Long}}, {}}; }

void addNumber(OpenTable& open, int number) {
    open.rows.addNew();
    open.rows.setInteger(0, number);
    open.rows.update();
}

}  // namespace

class TwoProcesses : public EngineTest {
  protected:
    TwoProcesses() { path = makeDatabase(jet::FileFormat::Jet4, numbers()); }

    /// What a process of its own comes to that reads all rows: their number, or how it failed.
    int readElsewhere(int waitMilliseconds = 100) {
        return support::OtherProcess(visit("read", waitMilliseconds)).wait();
    }
    int writeElsewhere(int waitMilliseconds = 100) {
        return support::OtherProcess(visit("write", waitMilliseconds)).wait();
    }
    std::vector<std::string> visit(const std::string& work, int waitMilliseconds) const {
        return {JET_VISITOR_PATH, path, work, std::to_string(waitMilliseconds)};
    }
    static constexpr int inUse = 100;

    std::string path;
};

TEST_F(TwoProcesses, AWriterExcludesReadersAndWriters) {
    OpenTable open(engine, path, "numbers");
    EXPECT_EQ(readElsewhere(), 0);
    addNumber(open, 1);
    EXPECT_EQ(readElsewhere(), inUse);
    EXPECT_EQ(writeElsewhere(), inUse);
    addNumber(open, 2);
    open.connection.close();
    EXPECT_EQ(readElsewhere(), 2);
    EXPECT_EQ(writeElsewhere(), 0);
    EXPECT_EQ(readElsewhere(), 3);
}

TEST_F(TwoProcesses, ReadersDoNotExcludeOneAnother) {
    OpenTable open(engine, path, "numbers");
    EXPECT_EQ(readElsewhere(), 0);
}

TEST_F(TwoProcesses, AReaderKeepsAWriterOut) {
    OpenTable open(engine, path, "numbers");
    EXPECT_EQ(writeElsewhere(), inUse);
    open.rows.close();
    open.connection.close();
    EXPECT_EQ(writeElsewhere(), 0);
}

TEST_F(TwoProcesses, InUseIsSaidAfterAShortWait) {
    OpenTable open(engine, path, "numbers");
    addNumber(open, 1);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(readElsewhere(400), inUse);
    const auto waited = std::chrono::steady_clock::now() - start;
    EXPECT_GE(waited, std::chrono::milliseconds(400));
    EXPECT_LT(waited, std::chrono::seconds(5));
}

TEST_F(TwoProcesses, AWaitingReaderGoesOnWhenTheWriterIsDone) {
    auto open = std::make_unique<OpenTable>(engine, path, "numbers");
    addNumber(*open, 1);
    support::OtherProcess reader(visit("read", 20000));
    files.pause(200);
    addNumber(*open, 2);
    open->connection.close();
    open.reset();
    EXPECT_EQ(reader.wait(), 2) << "a reader sees all finished rows of the writer";
}

TEST_F(TwoProcesses, AWriterThatIsKilledLeavesNoLock) {
    support::OtherProcess writer(visit("be killed", 100));
    EXPECT_EQ(writer.wait(), 7);
    OpenTable open(engine, path, "numbers");
    EXPECT_EQ(remainingRows(open.rows).size(), 1u);
    EXPECT_EQ(open.rows.recordCount(), 1);
    addNumber(open, 3);
}

}  // namespace jet_test
