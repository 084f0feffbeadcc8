#pragma once

#include <QDateTime>
#include <QFileSystemWatcher>
#include <QObject>
#include <QString>
#include <QTimer>
#include <memory>

#include "base/archive_location.h"
#include "search/index.h"
#include "search/index_loader.h"
#include "searchcontrol/index_releaser.h"
#include "searchcontrol/slices.h"

namespace searchcontrol {

/// Keeps the index of one archive at what its file holds: reads it piece by piece, watches the
/// file, and reads it anew some time after it was changed. While it is read anew, or another
/// program has the file for itself, the index read before stays.
class ArchiveReader : public QObject {
    Q_OBJECT

  public:
    /// How long a file that changes must rest before it is read anew, in milliseconds.
    static constexpr int restOfFile = 1000;
    /// How long a file that another program has for itself is left alone.
    static constexpr int restOfUsedFile = 3000;

    /// Both must outlive this.
    ArchiveReader(jet::Engine& engine, base::EventBoundary& boundary, QObject* parent);

    /// The archive to read, now and from then on; "" for none. The same one again is read again
    /// only where its file has changed.
    void setPath(const QString& path);
    const QString& path() const { return path_; }
    /// Reads anew in any case.
    void reload();

    /// What was read last; null where nothing could be read yet.
    const std::shared_ptr<const search::Index>& index() const { return index_; }
    bool isReading() const { return slices_.isRunning(); }
    /// Entries read so far, and about how many there will be.
    std::int64_t done() const { return loader_ ? loader_->done() : 0; }
    std::int64_t expected() const { return loader_ ? loader_->expected() : 0; }
    /// Why the archive cannot be read; empty while it can.
    const QString& obstacle() const { return obstacle_; }

  signals:
    /// The index is another one, or there is none any more.
    void indexChanged();
    /// More has been read, or the reading has ended.
    void progressed();

  private:
    struct FileState {
        QDateTime changed;
        qint64 size = -1;
        /// Like no state that a file has.
        static FileState unknown() { return {{}, -2}; }
        friend bool operator==(const FileState&, const FileState&) = default;
    };

    FileState fileState() const;
    bool readOn(const search::Budget& budget);
    void waitForFile(const QString& why);
    void fail(const QString& why);
    void watch();

    jet::Engine& engine_;
    QString path_;
    base::ArchiveLocation location_;
    FileState read_;  ///< the file as it was when its reading began
    QString obstacle_;
    std::unique_ptr<search::IndexLoader> loader_;
    IndexReleaser releaser_;  ///< before the index, which goes first
    std::shared_ptr<const search::Index> index_;
    Slices slices_;
    QFileSystemWatcher watcher_;
    QTimer rest_;
};

}  // namespace searchcontrol
