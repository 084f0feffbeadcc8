// Scanning and saving through the real windows, without a screen, side by side with the same work
// without windows, in one run: the walk as the companion does it (no list, no events), and the rows
// stored without bar and events. Tree and files are made for the purpose and warm; each round does
// both in turn, and the best of the rounds counts.
//
//     window_bench [ENTRIES]     default 30000, at most 32767

#include <QLineEdit>
#include <QPushButton>
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <string>

#include "archive/data.h"
#include "archive/makedb.h"
#include "base/pending_events.h"
#include "base/program_state.h"
#include "counting_destination.h"
#include "entry_tree.h"
#include "jet/engine.h"
#include "platform/directory_lister.h"
#include "platform/platform.h"
#include "save/form_save.h"
#include "scan/form_scan.h"
#include "scan/scandriveapi.h"
#include "scratch_folder.h"
#include "shell/application.h"
#include "shell/desktop.h"
#include "shell/failure_boundary.h"
#include "shell/form_main.h"
#include "shell/record_list.h"
#include "shell/window_message_box.h"
#include "shell/workspace.h"
#include "stopwatch.h"

namespace {

constexpr int rounds = 5;

class CountingProgress final : public scan::ScanProgress, public archive::SaveProgress {
  public:
    void showScanProgress(std::int64_t count) override { last_ = count; }
    void setProgress(std::int64_t entry) override { last_ = entry; }

  private:
    std::int64_t last_ = 0;
};

class NoEvents final : public base::PendingEvents {
  public:
    void runPendingEvents() override {}
};

class NoFileDialogs final : public open::FileDialogs {
  public:
    std::optional<std::string> showOpen(const open::FileDialogRequest&) override { return {}; }
    std::optional<std::string> showSave(const open::FileDialogRequest&) override { return {}; }
};

/// The desktop without its user, and what the companion has in its place.
class Work {
  public:
    Work(const bench::ScratchFolder& scratch, platform::Platform& platform)
        : platform_(platform), engine_(platform.files()) {
        state_.archiveFolder = scratch.folder();
        state_.archiveName = "bench.mdb";
        archive::createArchive(engine_, state_.currentArchive());
        desktop_.showMainWindow();
    }

    void walkAlone() {
        base::MediaInfo media;
        media.mediaId = 1;
        media.driveLetter = "A";
        bench::CountingDestination destination;
        CountingProgress progress;
        const auto lister = platform_.createDirectoryLister();
        scan::Walker(media, *lister, destination, progress, scan::WalkLimits::Lifted)
            .scanDrive("a:");
    }

    /// Opens the scan window, whose first drive is the tree; what is measured begins with Scan.
    void prepareScan() {
        desktop_.showScanWindow();
        desktop_.scanWindow()->findChild<QLineEdit*>("inputMediaName")->setText("bench");
        QCoreApplication::processEvents();
    }
    void scan() { desktop_.scanWindow()->findChild<QPushButton*>("btnScan")->click(); }

    void prepareSave() {
        desktop_.showSaveWindow();
        QCoreApplication::processEvents();
    }
    void save() { desktop_.saveWindow()->findChild<QPushButton*>("btnArchive")->click(); }
    void saveAlone() {
        NoEvents events;
        CountingProgress progress;
        archive::Data(state_, engine_, events).saveRecords(state_.currentMedia, progress);
    }

    std::int64_t listed() {
        return desktop_.mainWindow()->workspace().list()->records().rowCount();
    }

  private:
    platform::Platform& platform_;
    jet::Engine engine_;
    base::ProgramState state_;
    shell::WindowMessageBox messages_;
    shell::FailureBoundary boundary_{messages_};
    NoFileDialogs dialogs_;
    shell::Desktop desktop_{{state_, platform_, engine_, messages_, dialogs_, boundary_, [] {}}};
};

double secondsOf(const std::function<void()>& work) {
    bench::Stopwatch watch;
    work();
    return watch.lap();
}

}  // namespace

// NOLINTNEXTLINE(bugprone-exception-escape): a failure ends the benchmark
int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    shell::Application application(argc, argv);
    const std::size_t entries = argc > 1 ? std::strtoull(argv[1], nullptr, 10) : 30000;
    const bench::ScratchFolder scratch(std::filesystem::temp_directory_path());
    const bench::ScratchFolder tree(std::filesystem::temp_directory_path());
    bench::makeEntryTree(tree.path(), entries);
    std::ofstream(scratch.file("vdln.ini")) << "[drives]\na=" << tree.path().string() << "\n";
    const auto platform = platform::createPlatform(scratch.file("vdln.ini"));
    Work work(scratch, *platform);

    double walkAlone = 1e9;
    double scan = 1e9;
    double saveAlone = 1e9;
    double save = 1e9;
    for (int round = 0; round <= rounds; ++round) {
        const double bareWalk = secondsOf([&] { work.walkAlone(); });
        work.prepareScan();
        const double windowScan = secondsOf([&] { work.scan(); });
        const double bareSave = secondsOf([&] { work.saveAlone(); });
        work.prepareSave();
        const double windowSave = secondsOf([&] { work.save(); });
        if (round > 0) {  // the first one warms the cache
            walkAlone = std::min(walkAlone, bareWalk);
            scan = std::min(scan, windowScan);
            saveAlone = std::min(saveAlone, bareSave);
            save = std::min(save, windowSave);
        }
    }
    std::printf("%lld entries (best of %d rounds)\n", static_cast<long long>(work.listed()),
                rounds);
    std::printf("scan: window %.3f s, walk alone %.3f s, ratio %.2f\n", scan, walkAlone,
                scan / walkAlone);
    std::printf("save: window %.3f s, rows alone %.3f s, ratio %.2f\n", save, saveAlone,
                save / saveAlone);
    return 0;
}
