// How long a key press keeps the search window busy, and how long the window does not look at
// events at all while it reads, searches and counts:
//
//     search_window_bench [ENTRIES]     1,000,000 if not given
//
// Without a screen it is run with QT_QPA_PLATFORM=offscreen.

#include <QApplication>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QTabWidget>
#include <QTableView>
#include <QTest>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
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

void writeArchive(jet::Engine& engine, const base::ArchiveLocation& place, std::size_t count) {
    archive::createArchive(engine, place);
    archive::ArchiveTable table(engine, place, "main");
    archive::RecordWriter writer(table.rows());
    constexpr std::size_t entriesOfMedium = 100000;
    for (std::size_t done = 0; done < count; done += entriesOfMedium) {
        const auto medium = static_cast<std::int32_t>(1 + done / entriesOfMedium);
        for (const base::ScanEntry& entry :
             bench::realisticEntries(std::min(entriesOfMedium, count - done), medium,
                                     static_cast<std::uint64_t>(medium))) {
            writer.write(entry, medium);
        }
    }
    table.close();
}

/// The longest time, in milliseconds, that one turn of the event loop takes.
class Turns {
  public:
    explicit Turns(searchcontrol::SearchControl& control) : control_(control) {}

    void untilDone() {
        do {
            QElapsedTimer turn;
            turn.start();
            QApplication::processEvents(QEventLoop::AllEvents, 0);
            longest_ = std::max(longest_, milliseconds(turn));
        } while (control_.isBusy());
    }
    void act(const std::function<void()>& action) {
        QElapsedTimer turn;
        turn.start();
        action();
        longest_ = std::max(longest_, milliseconds(turn));
    }
    double take() { return std::exchange(longest_, 0.0); }

    static double milliseconds(const QElapsedTimer& timer) {
        return static_cast<double>(timer.nsecsElapsed()) / 1e6;
    }

  private:
    searchcontrol::SearchControl& control_;
    double longest_ = 0;
};

void report(const char* what, double whole, double longest) {
    std::printf("%-34s %9.1f ms   longest turn %6.1f ms\n", what, whole, longest);
}

template <typename Action>
void measure(const char* what, Turns& turns, Action action) {
    QElapsedTimer whole;
    whole.start();
    turns.act(action);
    turns.untilDone();
    const double taken = Turns::milliseconds(whole);
    report(what, taken, turns.take());
}

}  // namespace

// NOLINTNEXTLINE(bugprone-exception-escape): a failure ends the benchmark
int main(int argc, char** argv) {
    QApplication application(argc, argv);
    const std::size_t count = argc > 1 ? std::strtoull(argv[1], nullptr, 10) : 1000000;
    const bench::ScratchFolder folder(std::filesystem::temp_directory_path());
    const auto machine = platform::createPlatform(folder.file("settings.ini"));
    jet::Engine engine(machine->files());
    writeArchive(engine, {folder.folder(), "bench.mdb"}, count);

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
    line->setFocus();
    measure("read, and show everything", turns, [&] {
        control.setProperty("archivePath", QString::fromStdString(folder.file("bench.mdb")));
    });
    for (const char letter : std::string("report 2")) {
        const std::string what = std::string("type \"") + letter + "\"";
        measure(what.c_str(), turns, [&] { QTest::keyClick(line, letter); });
    }
    measure("clear", turns, [&] { line->clear(); });
    for (const char letter : std::string("size:>1mb")) {
        turns.act([&] { QTest::keyClick(line, letter); });
    }
    measure("size:>1mb typed without waiting", turns, [] {});
    measure("clear", turns, [&] { line->clear(); });
    measure("order by name", turns, [&] { line->setText("sort:name"); });
    measure("to the last row", turns, [&] { table->scrollToBottom(); });
    measure("select everything", turns, [&] { table->selectAll(); });
    measure("duplicates", turns, [&] { tabs->setCurrentIndex(1); });
    return 0;
}
