// How long a key press keeps the search window busy, and how long the window does not look at
// events at all while it reads, searches and counts:
//
//     search_window_bench [ENTRIES | ARCHIVE]     1,000,000 entries if not given
//
// Without a screen it is run with QT_QPA_PLATFORM=offscreen. On a machine with other work the time
// that the processor was busy with the longest turn tells more than how long it took.

#include <QApplication>
#include <QComboBox>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QTabWidget>
#include <QTableView>
#include <QTest>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <string>

#include "archive/archive_table.h"
#include "archive/makedb.h"
#include "archive/record_rows.h"
#include "base/event_boundary.h"
#include "base/message_box.h"
#include "jet/engine.h"
#include "platform/platform.h"
#include "realistic_entries.h"
#include "scratch_folder.h"
#include "searchcontrol/search_control.h"

namespace {

class PlainBoundary final : public base::EventBoundary {
  public:
    bool run(const std::function<void()>& handler) noexcept override {
        handler();
        return true;
    }
};

class NoMessages final : public base::MessageBox {
  public:
    base::MessageAnswer show(const base::Message& /*message*/) override {
        return base::MessageAnswer::Ok;
    }
};

/// Leaves the folder's own name of the path, and the dates and types out.
void shorten(base::ScanEntry& entry) {
    const std::size_t last = entry.path.rfind('\\');
    if (last != std::string::npos) {
        entry.path = entry.path.substr(0, entry.path.find('\\')) + entry.path.substr(last);
    }
    entry.Type.clear();
    entry.DateCreated.clear();
}

void writeArchive(jet::Engine& engine, const base::ArchiveLocation& place, std::size_t count) {
    archive::createArchive(engine, place);
    archive::ArchiveTable table(engine, place, "main");
    archive::RecordWriter writer(table.rows());
    constexpr std::size_t entriesOfMedium = 100000;
    // A file of 2 GiB, the most that the format allows, does not hold more of them.
    constexpr std::size_t mostWholeEntries = 7000000;
    for (std::size_t done = 0; done < count; done += entriesOfMedium) {
        const auto medium = static_cast<std::int32_t>(1 + done / entriesOfMedium);
        for (base::ScanEntry& entry :
             bench::realisticEntries(std::min(entriesOfMedium, count - done), medium,
                                     static_cast<std::uint64_t>(medium))) {
            if (count > mostWholeEntries) {
                shorten(entry);
            }
            writer.write(entry, medium);
        }
    }
    table.close();
}

/// How long something took, in milliseconds: by the wall's clock, and of the processor's time.
class Watch {
  public:
    Watch() { wall_.start(); }
    double wall() const { return static_cast<double>(wall_.nsecsElapsed()) / 1e6; }
    double busy() const {
        return static_cast<double>(std::clock() - begun_) * 1e3 / CLOCKS_PER_SEC;
    }

  private:
    QElapsedTimer wall_;
    std::clock_t begun_ = std::clock();
};

struct Longest {
    double wall = 0;
    double busy = 0;
};

/// The longest turns of the event loop.
class Turns {
  public:
    explicit Turns(searchcontrol::SearchControl& control) : control_(control) {}

    void untilDone() {
        do {
            const Watch turn;
            QApplication::processEvents(QEventLoop::AllEvents, 0);
            count(turn);
        } while (control_.isBusy());
    }
    void act(const std::function<void()>& action) {
        const Watch turn;
        action();
        count(turn);
    }
    Longest take() { return std::exchange(longest_, {}); }

  private:
    void count(const Watch& turn) {
        longest_.wall = std::max(longest_.wall, turn.wall());
        longest_.busy = std::max(longest_.busy, turn.busy());
    }

    searchcontrol::SearchControl& control_;
    Longest longest_;
};

void report(const char* what, double whole, const Longest& longest) {
    std::printf("%-34s %9.1f ms   longest turn %6.1f ms, busy %6.1f ms\n", what, whole,
                longest.wall, longest.busy);
    std::fflush(stdout);
}

template <typename Action>
void measure(const char* what, Turns& turns, Action action) {
    const Watch whole;
    turns.act(action);
    turns.untilDone();
    const double taken = whole.wall();
    report(what, taken, turns.take());
}

}  // namespace

// NOLINTNEXTLINE(bugprone-exception-escape): a failure ends the benchmark
int main(int argc, char** argv) {
    QApplication application(argc, argv);
    const std::string what = argc > 1 ? argv[1] : "1000000";
    const std::size_t count = std::strtoull(what.c_str(), nullptr, 10);
    const bench::ScratchFolder folder(std::filesystem::temp_directory_path());
    const auto machine = platform::createPlatform(folder.file("settings.ini"));
    jet::Engine engine(machine->files());
    const std::string archive = count > 0 ? folder.file("bench.mdb") : what;
    if (count > 0) {
        writeArchive(engine, {folder.folder(), "bench.mdb"}, count);
    }

    PlainBoundary boundary;
    NoMessages messages;
    const search::SearchHost host{boundary, messages, engine, *machine, {}, {}};
    searchcontrol::SearchControl control(host);
    control.resize(1200, 760);
    control.show();
    Turns turns(control);
    turns.untilDone();
    turns.take();
    auto* line = control.findChild<QLineEdit*>("queryLine");
    auto* table = control.findChild<QTableView*>("listResults");
    auto* tabs = control.findChild<QTabWidget*>("tabSearch");
    auto* same = control.findChild<QComboBox*>("comboSame");
    auto* groups = control.findChild<QTableView*>("listDuplicates");
    line->setFocus();
    measure("read, and show everything", turns,
            [&] { control.setProperty("archivePath", QString::fromStdString(archive)); });
    for (const char letter : std::string("report 2")) {
        const std::string typed = std::string("type \"") + letter + "\"";
        measure(typed.c_str(), turns, [&] { QTest::keyClick(line, letter); });
    }
    measure("clear", turns, [&] { line->clear(); });
    for (const char letter : std::string("size:>1mb")) {
        turns.act([&] { QTest::keyClick(line, letter); });
    }
    measure("size:>1mb typed without waiting", turns, [] {});
    measure("clear", turns, [&] { line->clear(); });
    measure("order by name", turns, [&] { line->setText("sort:name"); });
    measure("order by folder", turns, [&] { line->setText("sort:folder"); });
    measure("order by rank", turns, [&] { line->clear(); });
    measure("to the last row", turns, [&] { table->scrollToBottom(); });
    table->setFocus();
    for (int page = 0; page < 30; ++page) {
        turns.act([&] { QTest::keyClick(table, Qt::Key_PageUp); });
        turns.untilDone();
    }
    measure("thirty pages up", turns, [] {});
    measure("select everything", turns, [&] { table->selectAll(); });
    measure("select one", turns, [&] { QTest::keyClick(table, Qt::Key_Home); });
    measure("duplicates", turns, [&] { tabs->setCurrentIndex(1); });
    measure("duplicates by name alone", turns, [&] { same->setCurrentIndex(2); });
    measure("order them by name", turns, [&] { groups->sortByColumn(0, Qt::AscendingOrder); });
    measure("statistics", turns, [&] { tabs->setCurrentIndex(2); });
    measure("read again", turns, [&] { QTest::keyClick(line, Qt::Key_F5); });
    return 0;
}
