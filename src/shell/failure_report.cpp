#include "shell/failure_report.h"

#include <new>
#include <string>
#include <string_view>

#include "base/failure.h"
#include "keywords/collection_failures.h"
#include "scan/scan_limit_failure.h"

namespace shell {

namespace {

constexpr std::string_view tryAgain =
    "Choose the command again; if this happens every time, the "
    "archive or the medium is the likely cause.";

// Its Cancel buttons would close the archive.
constexpr std::string_view openAllTheSame =
    "If an archive was being opened, it is open: close the open-archive window with its close box "
    "and go on.";

std::string_view adviceFor(base::EngineFault fault) {
    using base::EngineFault;
    switch (fault) {
        case EngineFault::NotFound:
            return "Check that the archive is still in its place, or choose another one with "
                   "\"Open Archive\" in the File menu.";
        case EngineFault::NotADatabase:
        case EngineFault::Encoded:
        case EngineFault::Password:
            return "Choose another archive with \"Open Archive\" in the File menu.";
        case EngineFault::Damaged:
            return "Put a copy from a backup in its place, or choose another archive with "
                   "\"Open Archive\" in the File menu.";
        case EngineFault::ReadOnly:
            return "Allow writing to the file and its folder, or work with a copy of it.";
        case EngineFault::InUse:
            return "Close the other program and choose the command again.";
        case EngineFault::Indexed:
            return "Store into another archive; this one can still be explored.";
        case EngineFault::Full:
            return "Make room on the disk, or begin a new archive.";
        case EngineFault::Exists:
            return "Choose another name.";
        case EngineFault::Value:
            return "The companion program \"vdln scan\" leaves out an entry that does not fit, "
                   "says so and goes on.";
        case EngineFault::InputOutput:
            return "Check that the disk with the archive can be reached, and choose the command "
                   "again.";
        case EngineFault::NoCurrentRow:
        case EngineFault::Usage:
            break;
    }
    return tryAgain;
}

std::string_view adviceFor(const std::exception& failure) {
    if (const auto* engine = dynamic_cast<const base::EngineFailure*>(&failure)) {
        return adviceFor(engine->fault());
    }
    if (dynamic_cast<const keywords::TooManyNotesFailure*>(&failure) != nullptr) {
        return openAllTheSame;
    }
    if (dynamic_cast<const keywords::NothingToAddToFailure*>(&failure) != nullptr) {
        return "Nothing can be added until an archive is opened that holds notes and keywords.";
    }
    if (dynamic_cast<const scan::ScanLimitFailure*>(&failure) != nullptr) {
        return "The desktop's scan holds 32,767 entries. The companion program \"vdln scan\" "
               "has no such limit.";
    }
    if (dynamic_cast<const base::OverflowFailure*>(&failure) != nullptr) {
        return "The windows count some things up to 32,767 only. Choose less, or use the companion "
               "program \"vdln\".";
    }
    if (dynamic_cast<const base::SubscriptFailure*>(&failure) != nullptr) {
        return "The lists have changed meanwhile. Select the records once more and choose the "
               "command again.";
    }
    if (dynamic_cast<const base::FileFailure*>(&failure) != nullptr) {
        return "Check that the file or the drive can be reached and that you may change it, and "
               "choose the command again.";
    }
    if (dynamic_cast<const std::bad_alloc*>(&failure) != nullptr) {
        return "Close other programs and choose the command again.";
    }
    return tryAgain;
}

base::Message report(std::string_view whatHappened, std::string_view advice) {
    return {"Verdolin",
            "This could not be finished: " + std::string(whatHappened) +
                ".\n\nWhat was stored before is kept, and the program goes on.\n\n" +
                std::string(advice),
            base::MessageButtons::Ok};
}

/// No fault, and not to be told as one.
base::Message nothingCollectedReport(const keywords::NothingCollectedFailure& failure) {
    return {"Verdolin",
            "The archive is open, but its keywords and notes could not be collected: " +
                failure.text() +
                ".\n\nWhat was known before is kept, and the program goes on.\n\nClose the "
                "open-archive window with its close box. Once the archive's records have keywords "
                "and notes, this is not said any more.",
            base::MessageButtons::Ok};
}

}  // namespace

base::Message failureReport(const std::exception& failure) {
    if (const auto* nothing = dynamic_cast<const keywords::NothingCollectedFailure*>(&failure)) {
        return nothingCollectedReport(*nothing);
    }
    const bool outOfMemory = dynamic_cast<const std::bad_alloc*>(&failure) != nullptr;
    return report(outOfMemory ? "there is not enough memory" : failure.what(), adviceFor(failure));
}

base::Message unknownFailureReport() { return report("something unforeseen happened", tryAgain); }

}  // namespace shell
