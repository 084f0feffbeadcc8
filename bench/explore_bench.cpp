// Exploring in the real windows: the first click on a medium of 10,000 folders and 100,000 files,
// beside what reading the same rows alone takes in the same run, and a click on one of its folders.
//
//     explore_bench [ARCHIVE [MEDIUM]]     without ARCHIVE on one that it makes; MEDIUM is 1 if not
//     given
//
// Without a screen it is run with QT_QPA_PLATFORM=offscreen.

#include <QAction>
#include <QElapsedTimer>
#include <QTest>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include "archive/data.h"
#include "archive/makedb.h"
#include "base/program_state.h"
#include "jet/engine.h"
#include "open/file_dialogs.h"
#include "platform/platform.h"
#include "scratch_folder.h"
#include "shell/application.h"
#include "shell/archive_tree.h"
#include "shell/desktop.h"
#include "shell/failure_boundary.h"
#include "shell/form_main.h"
#include "shell/record_list.h"
#include "shell/window_message_box.h"
#include "shell/workspace.h"
#include "stopwatch.h"

namespace {

constexpr int rounds = 5;
constexpr int yearCount = 100;
constexpr int foldersOfAYear = 99;
constexpr int filesInAFolder = 10;
constexpr int foldersToClick = 200;

class NoEvents final : public base::PendingEvents {
  public:
    void runPendingEvents() override {}
};

/// Asks the window system after every row.
class AllEvents final : public base::PendingEvents {
  public:
    void runPendingEvents() override { QCoreApplication::processEvents(); }
};

class NoProgress final : public archive::SaveProgress {
  public:
    void setProgress(std::int64_t /*entry*/) override {}
};

class NoDialogs final : public open::FileDialogs {
  public:
    std::optional<std::string> showOpen(const open::FileDialogRequest& /*request*/) override {
        return std::nullopt;
    }
    std::optional<std::string> showSave(const open::FileDialogRequest& /*request*/) override {
        return std::nullopt;
    }
};

base::ScanEntry entry(const char* kind, const std::string& path, const std::string& name) {
    base::ScanEntry entry;
    entry.Folder = kind;
    entry.path = path;
    entry.FileName = name;
    entry.Type = "JPEG image";
    entry.Size = 1234567;
    entry.DateCreated = "07/14/2003 18:05:11";
    entry.DateModified = "07/14/2003 18:05:12";
    return entry;
}

void addFolder(std::vector<base::ScanEntry>& entries, const std::string& path,
               const std::string& name) {
    entries.push_back(entry("folder", path, name));
    const std::string inside = path + "\\" + name;
    for (int i = 1; i <= filesInAFolder; ++i) {
        entries.push_back(entry("file", inside, "picture " + std::to_string(i)));
    }
}

std::vector<base::ScanEntry> largeMedium() {
    std::vector<base::ScanEntry> entries;
    for (int year = 1; year <= yearCount; ++year) {
        const std::string name = "Photos of the year " + std::to_string(1900 + year);
        addFolder(entries, "1:", name);
        for (int day = 1; day <= foldersOfAYear; ++day) {
            addFolder(entries, "1:\\" + name, "Day " + std::to_string(day));
        }
    }
    return entries;
}

int makeArchive(const std::string& path) {
    const auto platform = platform::createPlatform();
    jet::Engine engine(platform->files());
    base::ProgramState state;
    const base::ArchiveLocation archive = base::splitArchivePath(path);
    state.archiveFolder = archive.folder;
    state.archiveName = archive.name;
    archive::createArchive(engine, archive);
    state.scanList.growTo(0);
    state.scanList.elements() = largeMedium();
    base::MediaInfo medium;
    medium.mediaId = 1;
    medium.mediaName = "Large";
    medium.mediaType = "Fixed";
    NoEvents events;
    NoProgress progress;
    archive::Data data(state, engine, events);
    shell::WindowMessageBox messages;
    data.saveMedia(medium, archive::MediaSave::New, messages);
    data.saveRecords(medium, progress);
    return 0;
}

/// Reads a medium's rows as a first click does, but without a window.
double readAlone(jet::Engine& engine, const base::ArchiveLocation& archive, std::int32_t mediaId,
                 base::PendingEvents& events) {
    double best = 1e9;
    for (int round = 0; round < rounds; ++round) {
        base::ProgramState state;
        archive::Data data(state, engine, events);
        bench::Stopwatch watch;
        data.loadFolders(archive, mediaId);
        data.loadFiles(archive, mediaId);
        best = std::min(best, watch.lap());
    }
    return best;
}

/// The largest time between two moments at which the program answered.
class Pulse {
  public:
    Pulse() {
        timer_.setTimerType(Qt::PreciseTimer);
        timer_.callOnTimeout([this] { beat(); });
        timer_.start(1);
        watch_.start();
    }
    double longestGap() {
        beat();
        return static_cast<double>(longest_) * 1e-9;
    }

  private:
    void beat() { longest_ = std::max(longest_, watch_.nsecsElapsed()), watch_.start(); }

    QTimer timer_;
    QElapsedTimer watch_;
    qint64 longest_ = 0;
};

void click(shell::ArchiveTree& tree, const std::string& key) {
    QTreeWidgetItem* node = tree.node(key);
    if (node->parent() != nullptr) {
        node->parent()->setExpanded(true);
    }
    tree.scrollToItem(node);
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, tree.visualItemRect(node).center());
}

int nodesBelow(const QTreeWidgetItem* item) {
    int count = item->childCount();
    for (int i = 0; i < item->childCount(); ++i) {
        count += nodesBelow(item->child(i));
    }
    return count;
}

/// A line of this process's status, such as the largest memory that it had; in MiB.
double memory(const std::string& line) {
    std::ifstream status("/proc/self/status");
    std::string name;
    double kilobytes = 0;
    while (status >> name) {
        if (name == line + ":" && status >> kilobytes) {
            return kilobytes / 1024;
        }
    }
    return 0;
}

int measure(int argc, char** argv, const std::string& path, std::int32_t mediaId) {
    shell::Application application(argc, argv);
    const auto platform = platform::createPlatform();
    jet::Engine engine(platform->files());
    base::ProgramState state;
    const base::ArchiveLocation archive = base::splitArchivePath(path);
    state.archiveFolder = archive.folder;
    state.archiveName = archive.name;
    shell::WindowMessageBox messages;
    shell::FailureBoundary boundary(messages);
    NoDialogs dialogs;
    shell::Desktop desktop({state, *platform, engine, messages, dialogs, boundary, [] {}});
    desktop.showMainWindow();
    shell::FormMain& main = *desktop.mainWindow();
    if (!QTest::qWaitForWindowExposed(&main)) {
        return 1;
    }
    shell::ArchiveTree& tree = *main.workspace().tree();
    const std::string key = std::to_string(mediaId) + ":";
    const double before = memory("VmRSS");

    double best = 1e9;
    double gap = 0;
    for (int round = 0; round < rounds; ++round) {
        main.findChild<QAction*>("mnArchExplore")->trigger();
        QTest::qWait(50);
        Pulse pulse;
        bench::Stopwatch watch;
        click(tree, key);
        const double clickOnly = watch.lap();
        QCoreApplication::processEvents();  // and seen
        gap = std::max(gap, pulse.longestGap());
        best = std::min(best, clickOnly + watch.lap());
    }
    std::printf("%d folders, %lld files\n", nodesBelow(tree.node(key)),
                static_cast<long long>(state.archiveFiles.upperBound()));
    std::printf("memory: %.0f MiB before, %.0f MiB after, %.0f MiB at most\n", before,
                memory("VmRSS"), memory("VmHWM"));

    NoEvents none;
    AllEvents all;
    const double alone = readAlone(engine, archive, mediaId, none);
    std::printf("first click, to a filled tree and list  %7.1f ms   (best of %d)\n", best * 1e3,
                rounds);
    std::printf("reading the same rows alone             %7.1f ms   ratio %.2f\n", alone * 1e3,
                best / alone);
    std::printf("the same, asking for events every row   %7.1f ms\n",
                readAlone(engine, archive, mediaId, all) * 1e3);
    std::printf("longest time without an answer          %7.1f ms   (of %d clicks)\n", gap * 1e3,
                rounds);

    const QTreeWidgetItem* medium = tree.node(key);
    double longest = 0;
    double sum = 0;
    const int clicks = std::min(foldersToClick, medium->childCount());
    for (int i = 0; i < clicks; ++i) {
        const std::string folder = shell::ArchiveTree::keyOf(medium->child(i));
        tree.scrollToItem(tree.node(folder));
        bench::Stopwatch watch;
        click(tree, folder);
        QCoreApplication::processEvents();
        const double taken = watch.lap();
        longest = std::max(longest, taken);
        sum += taken;
    }
    if (clicks > 0) {
        std::printf("click on a folder, to a filled list     %7.1f ms   (mean; longest %.1f ms)\n",
                    sum / clicks * 1e3, longest * 1e3);
    }
    return 0;
}

}  // namespace

// NOLINTNEXTLINE(bugprone-exception-escape): a failure ends the benchmark
int main(int argc, char** argv) {
    if (argc > 2 && std::string(argv[1]) == "--make") {
        return makeArchive(argv[2]);
    }
    if (argc > 1) {
        return measure(argc, argv, argv[1], argc > 2 ? std::atoi(argv[2]) : 1);
    }
    // Made by a process of its own, whose memory does not count.
    const bench::ScratchFolder scratch(std::filesystem::temp_directory_path());
    const std::string archive = scratch.file("large.mdb");
    const std::string making = "'" + std::string(argv[0]) + "' --make '" + archive + "'";
    return std::system(making.c_str()) == 0 ? measure(argc, argv, archive, 1) : 1;
}
