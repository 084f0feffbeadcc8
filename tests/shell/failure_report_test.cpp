#include "shell/failure_report.h"

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>
#include <string>

#include "base/failure.h"
#include "keywords/collection_failures.h"
#include "scan/scan_limit_failure.h"

namespace shell {
namespace {

bool holds(const base::Message& message, const std::string& text) {
    return message.text.find(text) != std::string::npos;
}

TEST(FailureReport, SaysWhatHappenedWhatWasKeptAndWhatToDo) {
    const base::Message report = failureReport(base::FileFailure("/x/a.mdb: Permission denied"));
    EXPECT_EQ(report.title, "Verdolin");
    EXPECT_EQ(report.buttons, base::MessageButtons::Ok);
    EXPECT_EQ(
        report.text,
        "This could not be finished: /x/a.mdb: Permission denied.\n\nWhat was stored before is "
        "kept, and the program goes on.\n\nCheck that the file or the drive can be reached and "
        "that you may change it, and choose the command again.");
}

TEST(FailureReport, AnyOverflowSaysThatTheWindowsCountNoFurther) {
    const base::Message report =
        failureReport(base::OverflowFailure("a number does not fit 16 bits"));
    EXPECT_TRUE(holds(report, "count some things up to 32,767 only"));
    EXPECT_FALSE(holds(report, "scan"));
}

TEST(FailureReport, AddingToWhatCouldNotBeCollectedSaysWhenItCan) {
    const base::Message report = failureReport(
        keywords::NothingToAddToFailure("the known keywords and notes could not be collected"));
    EXPECT_TRUE(holds(report, "could not be collected."));
    EXPECT_TRUE(holds(report, "until an archive is opened that holds notes and keywords"));
    EXPECT_FALSE(holds(report, "Select the records"));
}

TEST(FailureReport, AScanTooLargeNamesTheLimitAndTheCompanion) {
    const base::Message report = failureReport(scan::ScanLimitFailure("the scan was ended"));
    EXPECT_TRUE(holds(report, "The desktop's scan holds 32,767 entries."));
    EXPECT_TRUE(holds(report, "\"vdln scan\" has no such limit"));
}

TEST(FailureReport, AnArchiveWithoutNotesOrKeywordsIsOpenAllTheSame) {
    const base::Message report = failureReport(
        keywords::NothingCollectedFailure("the archive holds no notes or keywords yet"));
    EXPECT_EQ(report.title, "Verdolin");
    EXPECT_EQ(report.text,
              "The archive is open, but its keywords and notes could not be collected: the archive "
              "holds no notes or keywords yet.\n\nWhat was known before is kept, and the program "
              "goes on.\n\nClose the open-archive window with its close box. Once the archive's "
              "records have keywords and notes, this is not said any more.");
}

TEST(FailureReport, AnArchiveWithTooManyNotesIsOpenAllTheSame) {
    const base::Message report = failureReport(keywords::TooManyNotesFailure(40000));
    EXPECT_TRUE(holds(report, "40000 notes are more than the 32767 that can be known at a time."));
    EXPECT_TRUE(holds(report, "If an archive was being opened, it is open"));
    EXPECT_FALSE(holds(report, "vdln scan"));
}

TEST(FailureReport, AListThatHasChangedAsksForAnotherSelection) {
    const base::Message report = failureReport(
        base::SubscriptFailure("record 3 of the selected ones is not in the list any more"));
    EXPECT_TRUE(holds(report, "finished: record 3 of the selected ones"));
    EXPECT_TRUE(holds(report, "Select the records once more"));
}

TEST(FailureReport, EveryFaultOfTheEngineHasItsAdvice) {
    using base::EngineFault;
    const std::pair<EngineFault, const char*> cases[] = {
        {EngineFault::NotFound, "still in its place"},
        {EngineFault::NotADatabase, "Choose another archive"},
        {EngineFault::Encoded, "Choose another archive"},
        {EngineFault::Password, "Choose another archive"},
        {EngineFault::Damaged, "backup"},
        {EngineFault::ReadOnly, "Allow writing"},
        {EngineFault::InUse, "Close the other program"},
        {EngineFault::Indexed, "Store into another archive"},
        {EngineFault::Full, "Make room"},
        {EngineFault::Exists, "another name"},
        {EngineFault::Value, "vdln scan"},
        {EngineFault::NoCurrentRow, "Choose the command again"},
        {EngineFault::Usage, "Choose the command again"},
        {EngineFault::InputOutput, "can be reached"}};
    for (const auto& [fault, advice] : cases) {
        const base::Message report = failureReport(base::EngineFailure(fault, "a.mdb: reason"));
        EXPECT_TRUE(holds(report, "a.mdb: reason.")) << advice;
        EXPECT_TRUE(holds(report, advice)) << report.text;
    }
}

TEST(FailureReport, OtherExceptionsAreToldToo) {
    EXPECT_TRUE(holds(failureReport(std::bad_alloc()), "there is not enough memory"));
    EXPECT_TRUE(holds(failureReport(std::runtime_error("odd")), "finished: odd."));
    EXPECT_TRUE(holds(unknownFailureReport(), "something unforeseen"));
    EXPECT_TRUE(holds(failureReport(base::InvalidArgumentFailure("bad drive")), "bad drive."));
}

}  // namespace
}  // namespace shell
