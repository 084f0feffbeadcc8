#include "scan/scan_list.h"

#include <gtest/gtest.h>

namespace {

base::ScanEntry named(const std::string& name) {
    base::ScanEntry entry;
    entry.FileName = name;
    return entry;
}

}  // namespace

TEST(ScanList, AppendsAndCounts) {
    base::ProgramState state;
    scan::ScanList list(state);
    EXPECT_EQ(list.store(named("a"), scan::SizeFit::Exact), 1);
    EXPECT_EQ(list.store(named("b"), scan::SizeFit::Exact), 2);
    EXPECT_EQ(state.scanCount, 2);
    EXPECT_EQ(state.scanList.upperBound(), 2);
    EXPECT_EQ(state.scanList[1].FileName, "a");
    EXPECT_EQ(state.scanList[2].FileName, "b");
}

TEST(ScanList, FirstEntryOfANewScanCutsTheOldOnesAway) {
    base::ProgramState state;
    scan::ScanList list(state);
    list.store(named("a"), scan::SizeFit::Exact);
    list.store(named("b"), scan::SizeFit::Exact);
    state.scanCount = 0;
    EXPECT_EQ(list.store(named("c"), scan::SizeFit::Exact), 1);
    EXPECT_EQ(state.scanList.upperBound(), 1);
    EXPECT_EQ(state.scanList[1].FileName, "c");
}

TEST(ScanList, GoesOnBehindWhateverScanCountSays) {
    base::ProgramState state;
    scan::ScanList list(state);
    for (const char* name : {"a", "b", "c"}) {
        list.store(named(name), scan::SizeFit::Exact);
    }
    state.scanCount = 1;
    EXPECT_EQ(list.store(named("d"), scan::SizeFit::Exact), 2);
    EXPECT_EQ(state.scanList.upperBound(), 2);
    EXPECT_EQ(state.scanList[1].FileName, "a");
    EXPECT_EQ(state.scanList[2].FileName, "d");
}
