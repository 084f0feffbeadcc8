// Bringing an archive's folders into the order of the exchange sort: 30,000 folders in six levels.

#include <algorithm>
#include <cstdio>
#include <random>
#include <string>
#include <utility>

#include "archive/data.h"
#include "base/program_state.h"
#include "jet/engine.h"
#include "platform/platform.h"
#include "scratch_folder.h"
#include "stopwatch.h"

namespace {

constexpr std::size_t folders = 30000;
constexpr int levels = 6;
constexpr int rounds = 5;

class NoEvents final : public base::PendingEvents {
  public:
    void runPendingEvents() override {}
};

base::NumberedList<base::ScanEntry> randomFolders(std::uint64_t seed) {
    std::mt19937_64 random(seed);
    base::NumberedList<base::ScanEntry> list;
    for (std::size_t i = 0; i < folders; ++i) {
        base::ScanEntry folder;
        folder.path = "1:";
        for (int depth = static_cast<int>(random() % levels); depth > 0; --depth) {
            folder.path += "\\folder " + std::to_string(random() % 1000);
        }
        folder.FileName = "folder " + std::to_string(i);
        list.append(std::move(folder));
    }
    return list;
}

/// The described order the simple way: every pair is compared.
double exchangeSort(base::NumberedList<base::ScanEntry> list) {
    bench::Stopwatch watch;
    for (base::ScanEntry& folder : list.elements()) {
        folder.level =
            static_cast<std::int16_t>(std::count(folder.path.begin(), folder.path.end(), '\\') + 1);
    }
    const std::int64_t last = list.upperBound();
    for (std::int64_t i = 1; i <= last; ++i) {
        for (std::int64_t j = i; j <= last; ++j) {
            if (list[i].level > list[j].level) {
                std::swap(list[i], list[j]);
            }
        }
    }
    return watch.lap();
}

}  // namespace

// NOLINTNEXTLINE(bugprone-exception-escape): a failure ends the benchmark
int main() {
    const bench::ScratchFolder scratch(std::filesystem::temp_directory_path());
    const auto platform = platform::createPlatform(scratch.file("vdln.ini"));
    jet::Engine engine(platform->files());
    base::ProgramState state;
    NoEvents events;
    archive::Data data(state, engine, events);
    const auto folderList = randomFolders(20011);
    double best = 1e9;
    for (int round = 0; round < rounds; ++round) {
        state.archiveFolders = folderList;
        bench::Stopwatch watch;
        data.sortFoldersByLevel();
        best = std::min(best, watch.lap());
    }
    const double simple = exchangeSort(folderList);
    std::printf(
        "sortFoldersByLevel of %zu folders in %d levels: %.1f ms (best of %d), "
        "every pair compared: %.0f ms\n",
        folders, levels, best * 1e3, rounds, simple * 1e3);
    return 0;
}
