#include "explore/explore_texts.h"

#include <charconv>

#include "base/failure.h"

namespace explore {

namespace {

/// The image of a medium by its exact type, letter case included.
std::string_view imageOfType(std::string_view mediaType) {
    constexpr std::pair<std::string_view, std::string_view> images[] = {{"Removable", "removable"},
                                                                        {"Fixed", "fixed"},
                                                                        {"Remote", "remote"},
                                                                        {"CDROM", "cdrom"},
                                                                        {"RAMDisk", "ramdisk"}};
    for (const auto& [type, image] : images) {
        if (type == mediaType) {
            return image;
        }
    }
    return "unknown";
}

}  // namespace

std::string mediumKey(std::int32_t mediaId) { return std::to_string(mediaId) + ":"; }

bool isMediumKey(std::string_view key) { return !key.empty() && key.find(':') == key.size() - 1; }

std::int32_t mediaIdOf(std::string_view key) {
    const std::string_view digits = key.substr(0, key.find(':'));
    std::int32_t number = 0;
    const auto [end, error] = std::from_chars(digits.begin(), digits.end(), number);
    if (error == std::errc::result_out_of_range) {
        throw base::OverflowFailure("the medium's number in \"" + std::string(key) +
                                    "\" does not fit 32 bits");
    }
    if (error != std::errc() || end != digits.end()) {
        throw base::InvalidArgumentFailure("\"" + std::string(key) +
                                           "\" does not begin with a medium's number");
    }
    return number;
}

TreeNode mediumNode(const base::MediaInfo& medium) {
    const std::string key = mediumKey(medium.mediaId);
    return {key, key + " " + medium.mediaName + "(" + medium.mediaLabel + ")",
            std::string(imageOfType(medium.mediaType)), ""};
}

TreeNode folderNode(const base::ScanEntry& folder) {
    return {folder.path + "\\" + folder.FileName, folder.FileName, "folder", "folderopen"};
}

const std::array<RecordColumn, 10>& recordColumns() {
    // Two columns are called "Type": whether a record is a folder or a file, and a file's type.
    static constexpr std::array<RecordColumn, 10> columns = {{{"Name", 10},
                                                              {"Path", 20},
                                                              {"Type", 5},
                                                              {"Type", 15},
                                                              {"Keywords", 10},
                                                              {"Notes 1", 10},
                                                              {"Notes 2", 10},
                                                              {"Date Created", 5},
                                                              {"Date Modified", 5},
                                                              {"Size", 10}}};
    return columns;
}

ListControl::Row recordRow(const base::ScanEntry& record) {
    return {record.FileName,     record.path,
            record.Folder,       record.Type,
            record.keywords,     record.Notes1,
            record.Notes2,       record.DateCreated,
            record.DateModified, std::to_string(record.Size)};
}

base::Message openArchiveQuestion() {
    return {"Open Archive Required",
            "You do not have an archive open currently, would you like to open one?",
            base::MessageButtons::YesNoCancel};
}

base::Message noDataMessage() {
    return {"No Data in Current Archive", "There is no data in the current archive.",
            base::MessageButtons::Ok};
}

base::Message accessErrorMessage() {
    return {"Error Accessing Data",
            "There was an error accessing the data, please see the Help file for more information.",
            base::MessageButtons::Ok};
}

}  // namespace explore
