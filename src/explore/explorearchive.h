#pragma once

#include <cstdint>
#include <string>

#include "base/archive_location.h"
#include "explore/explore_controls.h"

namespace archive {
class Data;
}
namespace base {
class MessageBox;
struct ProgramState;
}  // namespace base

// explorearchive: the open archive as a tree of media and folders, and the records of the node that
// was clicked last as a list. The main window's explore command and its tree call it.

namespace explore {

/// Exploring the current archive. Knows no window.
///
/// Only the media are read for the tree. A medium's folders and files are read at the first click
/// on it, into the shared lists, which hold one medium at a time; the list of records is always
/// filled from there.
///
/// While a medium is read events run, and the user may do anything: click another node, explore
/// again, open another archive, end the program. So nothing of the shared lists or of the tree is
/// held meanwhile; every node is found again by its key, every medium by its number.
class ExploreArchive {
  public:
    /// All must outlive this.
    ExploreArchive(base::ProgramState& state, archive::Data& data, base::MessageBox& messages,
                   TreeControl& tree, ListControl& list, ExploreCommands commands);

    /// The explore command: arranges the workspace, sets up the list, reads the media and builds
    /// their nodes. Without an open archive it asks whether one shall be opened. A failure of
    /// reading the media passes, and leaves the tree and its media as they were.
    void exploreArchive();
    /// A click on the node of that key: reads a medium that has not been read, then lists the files
    /// that lie directly in the node.
    void clickNode(std::string key);

    /// Lists the files in the folder of that key, which lies on that medium, as a click on its node
    /// does, but whatever medium was read last; the archive is explored where its tree is not there
    /// yet. False where the tree has no such node.
    bool showFolder(std::int32_t mediaId, const std::string& key);

    /// Empties the list and puts ten columns in front of those that are there.
    void setupRecordColumns();
    /// One root for each medium. Any failure ends it with a message; the nodes added so far stay.
    void buildMediaNodes();
    /// Reads the folders and the files of that medium into the shared lists. A failure is told in a
    /// message, and what was read stays.
    void loadMediaRecords(const std::string& key);
    /// Adds the folders read last, which are those of the medium of that key, each below the node
    /// that its path names. The first one that cannot be added ends it in silence.
    void addFolderNodes(const std::string& key);
    /// Shows the files whose path is exactly that key.
    void fillRecordList(const std::string& key);

  private:
    void readMedia(const base::ArchiveLocation& archive);
    void readMedium(const std::string& key);
    std::int64_t numberOf(const std::string& key) const;
    bool isUnread(const std::string& key) const;
    bool isReadLast(const std::string& key) const;
    void markAsRead(const std::string& key);

    base::ProgramState& state_;
    archive::Data& data_;
    base::MessageBox& messages_;
    TreeControl& tree_;
    ListControl& list_;
    ExploreCommands commands_;
    base::ArchiveLocation shown_;  // the archive of the tree
};

}  // namespace explore
