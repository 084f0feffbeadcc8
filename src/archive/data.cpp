#include "archive/data.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "archive/archive_table.h"
#include "archive/exchange_order.h"
#include "archive/media_rows.h"
#include "archive/record_rows.h"
#include "base/checked.h"
#include "base/numbered_list.h"

namespace archive {
namespace {

using RecordList = base::NumberedList<base::ScanEntry>;

template <typename Element>
std::int64_t lastNumber(const base::NumberedList<Element>& list) {
    return list.neverGrown() ? 0 : list.upperBound();
}

/// The number stands in quotation marks although the field is a number; the engine compares it so.
std::string mediaFilter(std::int32_t mediaId) {
    return "mediaid='" + std::to_string(mediaId) + "'";
}

std::string storedPath(const std::string& path, std::int32_t mediaId) {
    const std::size_t colon = path.find(':');
    return std::to_string(mediaId) + (colon == std::string::npos ? path : path.substr(colon));
}

std::vector<std::int16_t> levelsOf(const RecordList& list, std::int64_t last) {
    std::vector<std::int16_t> levels;
    levels.reserve(static_cast<std::size_t>(last));
    for (std::int64_t i = 1; i <= last; ++i) {
        levels.push_back(list[i].level);
    }
    return levels;
}

/// Puts the element that stood at order[p] at position p, for every p, along the cycles of the
/// order.
void rearrange(RecordList& list, std::vector<std::uint32_t> order) {
    std::vector<base::ScanEntry>& elements = list.elements();
    for (std::uint32_t start = 0; start < order.size(); ++start) {
        if (order[start] == start) {
            continue;
        }
        base::ScanEntry displaced = std::move(elements[start]);
        std::uint32_t hole = start;
        while (order[hole] != start) {
            elements[hole] = std::move(elements[order[hole]]);
            hole = std::exchange(order[hole], hole);
        }
        elements[hole] = std::move(displaced);
        order[hole] = hole;
    }
}

// A line feed before the carriage return, the reverse of what texts usually have. Both are meant.
constexpr const char* lineEnd = "\n\r";

std::string noticesOfDifferences(const base::MediaInfo& stored, const base::MediaInfo& media) {
    std::string notices;
    if (stored.mediaLabel != media.mediaLabel) {
        notices.append("Media Label does not match.").append(lineEnd);
    }
    if (stored.mediaType != media.mediaType) {
        notices.append("Media Type does not match.").append(lineEnd);
    }
    if (stored.mediaSize != media.mediaSize) {
        notices.append("Media Size does not match.").append(lineEnd);
    }
    return notices;
}

bool confirmUpdate(const base::MediaInfo& stored, const base::MediaInfo& media,
                   base::MessageBox& box) {
    const std::optional<base::Message> question = updateQuestion(stored, media);
    return !question || box.show(*question) == base::MessageAnswer::Yes;
}

/// Makes the first row of that id the current one. There is no test for the end: past the last row
/// the engine itself refuses to read.
void findMedia(jet::Recordset& rows, const MediaFields& fields, std::int32_t mediaId) {
    while (rows.integer(fields.mediaId) != mediaId) {
        rows.moveNext();
    }
}

}  // namespace

std::string connectionString(const base::ArchiveLocation& archive) {
    return "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" + archive.fullPath();
}

std::optional<base::Message> updateQuestion(const base::MediaInfo& stored,
                                            const base::MediaInfo& media) {
    const std::string notices = noticesOfDifferences(stored, media);
    if (notices.empty()) {
        return std::nullopt;
    }
    base::Message question;
    question.title = "Update Existing Media's Data";
    question.text =
        "The following notices indicate that perhaps you have mistakenly "
        "chosen to update an existing media's data with the one that was just scanned. ";
    question.text.append(lineEnd).append(notices).append("Do you wish to proceed with the update?");
    question.buttons = base::MessageButtons::YesNoCancel;
    return question;
}

base::MediaInfo mediaForUpdate(base::MediaInfo stored, const base::MediaInfo& scanned) {
    stored.archiveUpdate = scanned.archiveUpdate;
    stored.numberFiles = scanned.numberFiles;
    return stored;
}

void Data::saveRecords(const base::MediaInfo& media, SaveProgress& progress) {
    // Taken once: `media` may be the shared record of the scanned medium, which events may change.
    const std::int32_t mediaId = media.mediaId;
    ArchiveTable table(engine_, state_.currentArchive(), "main");
    RecordWriter writer(table.rows());
    const std::int64_t last = lastNumber(state_.scanList);
    for (std::int64_t i = 1; i <= last; ++i) {
        writer.write(state_.scanList[i], mediaId);
        progress.setProgress(i);
        events_.runPendingEvents();
    }
    table.close();
}

void Data::deleteRecords(std::int32_t mediaId) {
    ArchiveTable table(engine_, state_.currentArchive(), "main");
    jet::Recordset& rows = table.rows();
    rows.setFilter(mediaFilter(mediaId));
    while (!rows.endOfFile()) {
        rows.deleteCurrent();
        rows.moveNext();
    }
    table.close();
}

void Data::adjustRecordPaths(const base::MediaInfo& media) {
    const std::int64_t last = lastNumber(state_.scanList);
    for (std::int64_t i = 1; i <= last; ++i) {
        std::string& path = state_.scanList[i].path;
        path = storedPath(path, media.mediaId);
    }
}

bool Data::loadFolders(const base::ArchiveLocation& archive, std::int32_t mediaId) {
    loadRecords(archive, mediaFilter(mediaId) + " AND folder='folder'", state_.archiveFolders);
    sortFoldersByLevel();
    return true;
}

bool Data::loadFiles(const base::ArchiveLocation& archive, std::int32_t mediaId) {
    loadRecords(archive, mediaFilter(mediaId) + " AND folder='file'", state_.archiveFiles);
    return true;
}

void Data::loadRecords(const base::ArchiveLocation& archive, const std::string& filter,
                       RecordList& list) {
    ArchiveTable table(engine_, archive, "main");
    jet::Recordset& rows = table.rows();
    const RecordReader reader(rows);
    rows.setFilter(filter);
    std::int64_t count = 0;
    while (!rows.endOfFile()) {
        ++count;
        list.growTo(count);
        reader.read(list[count]);
        rows.moveNext();
        events_.runPendingEvents();
    }
    table.close();
}

void Data::sortFoldersByLevel() {
    setFolderLevels();
    orderFolders();
}

void Data::setFolderLevels() {
    const std::int64_t last = lastNumber(state_.archiveFolders);
    for (std::int64_t i = 1; i <= last; ++i) {
        base::ScanEntry& folder = state_.archiveFolders[i];
        const auto separators = std::count(folder.path.begin(), folder.path.end(), '\\');
        folder.level = base::Int16(separators + 1);
        events_.runPendingEvents();
    }
}

void Data::orderFolders() {
    const std::int64_t last = lastNumber(state_.archiveFolders);
    const std::vector<std::int16_t> levels = levelsOf(state_.archiveFolders, last);
    ExchangeOrder order(levels);
    while (!order.finished()) {
        order.nextPass();
        events_.runPendingEvents();
    }
    // Events may have refilled the list, most likely by loading another medium. The order found is
    // then that of a list that is gone, and what stands there now is put in order, at one go. A
    // list that has become longer is sorted up to the element that was the last when the sort
    // began.
    const std::vector<std::int16_t> present = levelsOf(state_.archiveFolders, last);
    if (present != levels) {
        order = ExchangeOrder(present);
        order.finish();
    }
    rearrange(state_.archiveFolders, order.elements());
}

void Data::loadMedia(const base::ArchiveLocation& archive) {
    ArchiveTable table(engine_, archive, "media");
    jet::Recordset& rows = table.rows();
    const MediaFields fields(rows);
    base::Int16 count;
    while (!rows.endOfFile()) {
        ++count;
        state_.mediaList.growTo(count);
        state_.mediaList[count] = readMedia(rows, fields);
        rows.moveNext();
    }
    table.close();
}

// A copy: `media` may be the shared record of the scanned medium, which events may change while the
// question is open. NOLINTNEXTLINE(performance-unnecessary-value-param)
void Data::saveMedia(base::MediaInfo media, MediaSave save, base::MessageBox& box) {
    ArchiveTable table(engine_, state_.currentArchive(), "media");
    jet::Recordset& rows = table.rows();
    const MediaFields fields(rows);
    if (save == MediaSave::New) {
        addMedia(rows, fields, media);
    } else {
        findMedia(rows, fields, media.mediaId);
        if (confirmUpdate(readMedia(rows, fields), media, box)) {
            updateMedia(rows, fields, media);
        }
    }
    table.close();
}

}  // namespace archive
