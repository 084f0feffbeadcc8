#include "explore/explorearchive.h"

#include <exception>
#include <utility>
#include <vector>

#include "archive/data.h"
#include "base/message_box.h"
#include "base/program_state.h"
#include "explore/explore_texts.h"

namespace explore {

namespace {

void run(const std::function<void()>& command) {
    if (command) {
        command();
    }
}

/// A list that was never filled counts as one without elements.
template <typename Element>
std::int64_t lastNumber(const base::NumberedList<Element>& list) {
    return list.neverGrown() ? 0 : list.upperBound();
}

/// Does what may fail; whether it succeeded. What ends the program is no failure and passes.
template <typename Action>
bool succeeds(const Action& action) {
    try {
        return action();
    } catch (const std::exception&) {
        return false;
    }
}

/// Shows the loading window, and hides it at the end of its scope however that is left: a window
/// that says that something is being read must not stay when nothing is.
class LoadingShown {
  public:
    explicit LoadingShown(const ExploreCommands& commands) : commands_(commands) {
        run(commands_.showLoading);
    }
    ~LoadingShown() { run(commands_.hideLoading); }
    LoadingShown(const LoadingShown&) = delete;
    LoadingShown& operator=(const LoadingShown&) = delete;

  private:
    const ExploreCommands& commands_;
};

}  // namespace

ExploreArchive::ExploreArchive(base::ProgramState& state, archive::Data& data,
                               base::MessageBox& messages, TreeControl& tree, ListControl& list,
                               ExploreCommands commands)
    : state_(state),
      data_(data),
      messages_(messages),
      tree_(tree),
      list_(list),
      commands_(std::move(commands)) {}

void ExploreArchive::exploreArchive() {
    const base::ArchiveLocation archive = state_.currentArchive();
    if (archive.name.empty() || archive.folder.empty()) {
        if (messages_.show(openArchiveQuestion()) == base::MessageAnswer::Yes) {
            run(commands_.showOpenWindow);
        }
        return;
    }
    run(commands_.arrangeWorkspace);
    setupRecordColumns();
    readMedia(archive);
    shown_ = archive;
    buildMediaNodes();
    state_.viewMode = "archive";
}

/// Reading leaves the list as it was where an archive has no media, so that those of an archive
/// explored earlier would be taken for its own.
void ExploreArchive::readMedia(const base::ArchiveLocation& archive) {
    base::NumberedList<base::MediaInfo> before = std::exchange(state_.mediaList, {});
    try {
        data_.loadMedia(archive);
    } catch (...) {
        state_.mediaList = std::move(before);
        throw;
    }
}

void ExploreArchive::setupRecordColumns() {
    list_.removeAllRows();
    const int width = list_.widthInTwips();
    int position = 0;
    for (const RecordColumn& column : recordColumns()) {
        ++position;
        list_.insertColumn(position, std::string(column.heading), width * column.hundredths / 100);
    }
}

void ExploreArchive::buildMediaNodes() {
    const bool built = succeeds([this] {
        tree_.clearNodes();
        const std::int64_t last = state_.mediaList.upperBound();
        for (std::int64_t i = 1; i <= last; ++i) {
            tree_.addRootNode(mediumNode(state_.mediaList[i]));
        }
        return true;
    });
    if (!built) {
        messages_.show(noDataMessage());
    }
}

// A copy: the node that holds the key may go while the medium is read.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
void ExploreArchive::clickNode(std::string key) {
    if (isMediumKey(key) && isUnread(key)) {
        const base::ArchiveLocation shown = shown_;
        readMedium(key);
        if (shown_ != shown) {
            return;  // the tree is another archive's by now, and the node that was clicked gone
        }
    }
    fillRecordList(key);
}

bool ExploreArchive::showFolder(std::int32_t mediaId, const std::string& key) {
    const std::string medium = mediumKey(mediaId);
    if (shown_ != state_.currentArchive() || numberOf(medium) == 0) {
        exploreArchive();
    }
    if (numberOf(medium) == 0) {
        return false;
    }
    const base::ArchiveLocation shown = shown_;
    if (isUnread(medium)) {
        readMedium(medium);
    } else if (!isReadLast(medium)) {
        const LoadingShown loading(commands_);
        loadMediaRecords(medium);
    }
    if (shown_ != shown) {
        return false;
    }
    state_.viewMode = "archive";
    fillRecordList(key);
    return true;
}

/// Whether the shared lists hold that medium.
bool ExploreArchive::isReadLast(const std::string& key) const {
    const auto holdsOther = [&](const base::NumberedList<base::ScanEntry>& list) {
        return lastNumber(list) > 0 && mediumKey(list[1].mediaId) != key;
    };
    const bool isEmpty =
        lastNumber(state_.archiveFolders) == 0 && lastNumber(state_.archiveFiles) == 0;
    return !isEmpty && !holdsOther(state_.archiveFolders) && !holdsOther(state_.archiveFiles);
}

void ExploreArchive::readMedium(const std::string& key) {
    const LoadingShown loading(commands_);
    const base::ArchiveLocation shown = shown_;
    loadMediaRecords(key);
    if (shown_ != shown) {
        return;
    }
    markAsRead(key);
    addFolderNodes(key);
}

/// The number in the media list of the medium of that key, the last one if there are several; 0 if
/// there is none.
std::int64_t ExploreArchive::numberOf(const std::string& key) const {
    for (std::int64_t i = lastNumber(state_.mediaList); i > 0; --i) {
        if (mediumKey(state_.mediaList[i].mediaId) == key) {
            return i;
        }
    }
    return 0;
}

bool ExploreArchive::isUnread(const std::string& key) const {
    const std::int64_t number = numberOf(key);
    return number > 0 && !state_.mediaList[number].loaded;
}

/// Whether the reading succeeded or not: a medium that cannot be read is tried again only when the
/// tree has been built anew. The medium is looked for again, as the list may have been read anew.
void ExploreArchive::markAsRead(const std::string& key) {
    const std::int64_t number = numberOf(key);
    if (number > 0) {
        state_.mediaList[number].loaded = true;
    }
}

void ExploreArchive::loadMediaRecords(const std::string& key) {
    const std::int32_t mediaId = mediaIdOf(key);
    const base::ArchiveLocation archive = state_.currentArchive();
    // Both readers leave their list as it was where a medium has no such rows.
    state_.archiveFolders = {};
    state_.archiveFiles = {};
    const bool folders = succeeds([&] { return data_.loadFolders(archive, mediaId); });
    const bool files = succeeds([&] { return data_.loadFiles(archive, mediaId); });
    if (!folders || !files) {
        messages_.show(accessErrorMessage());
    }
}

void ExploreArchive::addFolderNodes(const std::string& /*key*/) {
    succeeds([this] {
        const std::int64_t last = state_.archiveFolders.upperBound();
        for (std::int64_t i = 1; i <= last; ++i) {
            const base::ScanEntry& folder = state_.archiveFolders[i];
            tree_.addChildNode(folder.path, folderNode(folder));
        }
        return true;
    });
}

void ExploreArchive::fillRecordList(const std::string& key) {
    if (!succeeds([this] {
            list_.removeAllRows();
            return true;
        })) {
        return;
    }
    std::vector<ListControl::Row> rows;
    const std::int64_t last = lastNumber(state_.archiveFiles);
    for (std::int64_t i = 1; i <= last; ++i) {
        const base::ScanEntry& record = state_.archiveFiles[i];
        if (record.path == key) {
            rows.push_back(recordRow(record));
        }
    }
    list_.appendRows(std::move(rows));
}

}  // namespace explore
