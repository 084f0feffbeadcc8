#include "searchcontrol/export_task.h"

#include <QDir>
#include <utility>

#include "base/failure.h"
#include "search/copies.h"

namespace searchcontrol {

ExportTask::ExportTask(base::EventBoundary& boundary, QObject* parent)
    : QObject(parent), slices_(boundary, this) {}

ExportTask::~ExportTask() = default;

QString ExportTask::fileName() const {
    return file_ ? QDir::toNativeSeparators(file_->fileName()) : QString();
}

void ExportTask::start(const QString& file, ChosenEntries entries, search::ExportFormat format,
                       search::ExportOptions options) {
    slices_.stop();
    exporter_.reset();
    entries_ = std::move(entries);
    file_ = std::make_unique<QSaveFile>(file);
    if (!file_->open(QIODevice::WriteOnly)) {
        fail();
    }
    // Converted here: that this is a sink is known to nobody else.
    search::ExportSink& sink = *this;
    exporter_ = std::make_unique<search::Exporter>(*entries_.index, entries_.rows, format,
                                                   std::move(options), sink);
    slices_.start([this](const search::Budget& budget) { return exportOn(budget); });
}

bool ExportTask::exportOn(const search::Budget& budget) {
    // A column of the export may be the number of copies.
    while (!entries_.index->copies().advance()) {
        if (budget.isSpent()) {
            return false;
        }
    }
    if (!exporter_->run(budget)) {
        emit progressed();
        return false;
    }
    if (!file_->commit()) {
        fail();
    }
    emit finished();
    return true;
}

void ExportTask::write(std::string_view bytes) {
    if (file_->write(bytes.data(), static_cast<qint64>(bytes.size())) !=
        static_cast<qint64>(bytes.size())) {
        fail();
    }
}

void ExportTask::fail() {
    const std::string what = fileName().toStdString() + ": " + file_->errorString().toStdString();
    file_->cancelWriting();
    throw base::FileFailure(what);
}

}  // namespace searchcontrol
