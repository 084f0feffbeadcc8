#include "searchcontrol/archive_reader.h"

#include <QFileInfo>

#include "base/failure.h"
#include "searchcontrol/texts.h"

namespace searchcontrol {

ArchiveReader::ArchiveReader(jet::Engine& engine, base::EventBoundary& boundary, QObject* parent)
    : QObject(parent), engine_(engine), releaser_(boundary, this), slices_(boundary, this) {
    rest_.setSingleShot(true);
    rest_.callOnTimeout(this, [this] {
        if (fileState() != read_) {
            reload();
        } else {
            watch();
        }
    });
    connect(&watcher_, &QFileSystemWatcher::fileChanged, this, [this] { rest_.start(restOfFile); });
}

void ArchiveReader::setPath(const QString& path) {
    if (path == path_) {
        if (!isReading() && (fileState() != read_ || index_ == nullptr)) {
            reload();
        }
        return;
    }
    path_ = path;
    location_ = base::splitArchivePath(path.toStdString());
    if (index_ != nullptr) {
        index_ = nullptr;
        emit indexChanged();
    }
    reload();
}

ArchiveReader::FileState ArchiveReader::fileState() const {
    const QFileInfo file(path_);
    return {file.lastModified(), file.exists() ? file.size() : -1};
}

void ArchiveReader::reload() {
    slices_.stop();
    loader_.reset();
    obstacle_.clear();
    read_ = fileState();
    watch();
    if (!location_.name.empty()) {
        slices_.start([this](const search::Budget& budget) { return readOn(budget); });
    }
    emit progressed();
}

/// A watcher forgets a file that was replaced by another one of the same name.
void ArchiveReader::watch() {
    if (!watcher_.files().isEmpty()) {
        watcher_.removePaths(watcher_.files());
    }
    if (read_.size >= 0) {
        watcher_.addPath(path_);
    }
}

bool ArchiveReader::readOn(const search::Budget& budget) {
    try {
        if (loader_ == nullptr) {
            loader_ = std::make_unique<search::IndexLoader>(engine_, location_);
        }
        if (!loader_->run(budget)) {
            emit progressed();
            return false;
        }
        index_ = releaser_.shared(loader_->takeIndex());
        loader_.reset();
    } catch (const base::EngineFailure& failure) {
        if (failure.fault() == base::EngineFault::InUse) {
            waitForFile(text(failure.text()));
        } else {
            fail(text(failure.text()));
        }
        return true;
    } catch (const base::Failure& failure) {
        fail(text(failure.text()));
        return true;
    }
    emit indexChanged();
    emit progressed();
    return true;
}

/// Who has the file now will be done with it: what was read before stays until then.
void ArchiveReader::waitForFile(const QString& why) {
    loader_.reset();
    obstacle_ = why;
    read_ = FileState::unknown();
    rest_.start(restOfUsedFile);
    emit progressed();
}

/// An archive that cannot be read any more has no entries to show.
void ArchiveReader::fail(const QString& why) {
    loader_.reset();
    obstacle_ = why;
    if (index_ != nullptr) {
        index_ = nullptr;
        emit indexChanged();
    }
    emit progressed();
}

}  // namespace searchcontrol
