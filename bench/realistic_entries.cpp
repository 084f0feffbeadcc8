#include "realistic_entries.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <random>
#include <string>
#include <string_view>

namespace bench {

namespace {

using Random = std::mt19937_64;

constexpr std::array<std::string_view, 24> words{
    "holiday", "report",  "invoice", "backup", "photo",  "scan",   "draft",  "letter",
    "music",   "project", "summer",  "winter", "garden", "family", "budget", "meeting",
    "notes",   "video",   "archive", "final",  "copy",   "source", "manual", "paper"};
constexpr std::array<std::string_view, 6> foreignWords{"Übersicht", "été",    "Документ",
                                                       "写真",      "αρχείο", "żółw"};

struct Kind {
    std::string_view extension;
    std::string_view type;
};
constexpr std::array<Kind, 10> kinds{{{".jpg", "JPEG image"},
                                      {".pdf", "PDF document"},
                                      {".txt", "plain text document"},
                                      {".mp3", "MP3 audio"},
                                      {".docx", "Word 2007 document"},
                                      {".html", "HTML document"},
                                      {".cpp", "C++ source code"},
                                      {".png", "PNG image"},
                                      {".zip", "Zip archive"},
                                      {".mp4", "MPEG-4 video"}}};

std::size_t pick(Random& random, std::size_t count) {
    return std::uniform_int_distribution<std::size_t>(0, count - 1)(random);
}

std::string word(Random& random) {
    return std::string(pick(random, 20) == 0 ? foreignWords[pick(random, foreignWords.size())]
                                             : words[pick(random, words.size())]);
}

std::string stem(Random& random) {
    std::string name = word(random);
    for (std::size_t more = pick(random, 3); more > 0; --more) {
        name += (pick(random, 2) == 0 ? "_" : " ") + word(random);
    }
    return name + " " + std::to_string(pick(random, 10000));
}

std::string dateText(Random& random) {
    char text[24];
    std::snprintf(text, sizeof text, "%02zu/%02zu/%04zu %02zu:%02zu:%02zu", 1 + pick(random, 12),
                  1 + pick(random, 28), 2003 + pick(random, 20), pick(random, 24), pick(random, 60),
                  pick(random, 60));
    return text;
}

base::ScanEntry entryIn(Random& random, const std::string& path, std::int32_t mediaId) {
    base::ScanEntry entry;
    entry.path = path;
    entry.DateCreated = dateText(random);
    entry.DateModified = dateText(random);
    entry.mediaId = mediaId;
    return entry;
}

}  // namespace

std::vector<base::ScanEntry> realisticEntries(std::size_t count, std::int32_t mediaId,
                                              std::uint64_t seed) {
    Random random(seed);
    std::vector<base::ScanEntry> entries;
    entries.reserve(count);
    std::vector<std::string> paths{std::to_string(mediaId) + ":"};
    while (entries.size() < count) {
        // A folder below one of the latest, so that trees grow deep as well as wide.
        const std::size_t recent = std::min<std::size_t>(paths.size(), 200);
        const std::string parent = paths[paths.size() - 1 - pick(random, recent)];
        base::ScanEntry folder = entryIn(random, parent, mediaId);
        folder.FileName = stem(random);
        folder.Folder = "folder";
        folder.Type = "Folder";
        const std::string path = parent + "\\" + folder.FileName;
        entries.push_back(folder);
        if (path.size() < 160) {
            paths.push_back(path);
        }
        for (std::size_t files = pick(random, 40); files > 0 && entries.size() < count; --files) {
            const Kind kind = kinds[pick(random, kinds.size())];
            base::ScanEntry file = entryIn(random, path.size() < 160 ? path : parent, mediaId);
            file.FileName = stem(random) + std::string(kind.extension);
            file.Folder = "file";
            file.Type = kind.type;
            file.Size = static_cast<std::int32_t>(random() >> (33 + pick(random, 24)));
            entries.push_back(std::move(file));
        }
    }
    return entries;
}

}  // namespace bench
