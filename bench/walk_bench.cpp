// The walk over a drive, side by side with find asking for the same facts, in one run. The tree is
// made for the purpose and warm; each of the two walks it in turn, and the best of the rounds
// counts.
//
//     walk_bench [ENTRIES [FOLDER]]     FOLDER: where the tree is made, or with ENTRIES 0 the tree
//     itself

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "base/media_info.h"
#include "counting_destination.h"
#include "entry_tree.h"
#include "platform/directory_lister.h"
#include "platform/platform.h"
#include "scan/scandriveapi.h"
#include "scratch_folder.h"
#include "stopwatch.h"

namespace {

namespace fs = std::filesystem;
constexpr int rounds = 5;

class CountingProgress final : public scan::ScanProgress {
  public:
    void showScanProgress(std::int64_t count) override { last_ = count; }

  private:
    std::int64_t last_ = 0;
};

std::int64_t walk(platform::Platform& platform) {
    base::MediaInfo media;
    media.mediaId = 1;
    media.driveLetter = "P";
    bench::CountingDestination destination;
    CountingProgress progress;
    const auto lister = platform.createDirectoryLister();
    scan::Walker walker(media, *lister, destination, progress, scan::WalkLimits::Lifted);
    walker.scanDrive("p:");
    return destination.count();
}

}  // namespace

// NOLINTNEXTLINE(bugprone-exception-escape): a failure ends the benchmark
int main(int argc, char** argv) {
    const std::size_t entries = argc > 1 ? std::strtoull(argv[1], nullptr, 10) : 300000;
    const fs::path parent = argc > 2 ? fs::path(argv[2]) : fs::temp_directory_path();
    const bench::ScratchFolder scratch(fs::temp_directory_path());
    fs::path root = parent;
    std::unique_ptr<bench::ScratchFolder> tree;
    if (entries != 0) {
        tree = std::make_unique<bench::ScratchFolder>(parent);
        root = tree->path();
        bench::makeEntryTree(root, entries);
    }
    std::ofstream(scratch.file("vdln.ini")) << "[drives]\np=" << root.string() << "\n";
    const auto platform = platform::createPlatform(scratch.file("vdln.ini"));
    const std::string command =
        "find '" + root.string() + "' -xdev -printf '%p %s %T@ %B@\\n' > /dev/null";

    double bestFind = 1e9;
    double bestWalk = 1e9;
    std::int64_t count = 0;
    for (int round = 0; round <= rounds; ++round) {
        bench::Stopwatch watch;
        if (std::system(command.c_str()) != 0) {
            return 1;
        }
        const double find = watch.lap();
        count = walk(*platform);
        const double ours = watch.lap();
        if (round > 0) {  // the first one warms the cache
            bestFind = std::min(bestFind, find);
            bestWalk = std::min(bestWalk, ours);
        }
    }
    std::printf("%lld entries: scanDrive %.3f s, find %.3f s, ratio %.2f (best of %d rounds)\n",
                static_cast<long long>(count), bestWalk, bestFind, bestWalk / bestFind, rounds);
    return 0;
}
