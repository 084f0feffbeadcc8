// Real files and real processes: who may read and write at the same time.

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <string>

#include "base/failure.h"
#include "tests/jet/engine_fixture.h"
#include "tests/support/other_process.h"

namespace jet_test {

namespace {

using base::EngineFault;

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

    /// What happens to a process of its own that reads all rows: their number, or minus the fault.
    int readElsewhere(int waitMilliseconds = 100) {
        return support::inOtherProcess([&] { return attempt(waitMilliseconds, false); });
    }
    int writeElsewhere(int waitMilliseconds = 100) {
        return support::inOtherProcess([&] { return attempt(waitMilliseconds, true); });
    }
    static constexpr int inUse = 100;

    int attempt(int waitMilliseconds, bool write) {
        platform::posix::PosixFileOpener otherFiles;
        jet::Engine other(otherFiles, {.lockWaitMilliseconds = waitMilliseconds});
        try {
            OpenTable open(other, path, "numbers");
            if (write) {
                addNumber(open, 1);
                open.connection.close();
                return 0;
            }
            return static_cast<int>(remainingRows(open.rows).size());
        } catch (const base::EngineFailure& failure) {
            return failure.fault() == EngineFault::InUse ? inUse : inUse + 1;
        }
    }

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
    support::OtherProcess reader([&] { return attempt(20000, false); });
    files.pause(200);
    addNumber(*open, 2);
    open->connection.close();
    open.reset();
    EXPECT_EQ(reader.wait(), 2) << "a reader sees all finished rows of the writer";
}

TEST_F(TwoProcesses, AWriterThatIsKilledLeavesNoLock) {
    support::OtherProcess writer([&] {
        platform::posix::PosixFileOpener otherFiles;
        jet::Engine other(otherFiles);
        OpenTable open(other, path, "numbers");
        addNumber(open, 1);
        open.connection.flush();
        addNumber(open, 2);
        support::OtherProcess::endAtOnce(7);
        return 0;
    });
    EXPECT_EQ(writer.wait(), 7);
    OpenTable open(engine, path, "numbers");
    EXPECT_EQ(remainingRows(open.rows).size(), 1u);
    EXPECT_EQ(open.rows.recordCount(), 1);
    addNumber(open, 3);
}

}  // namespace jet_test
