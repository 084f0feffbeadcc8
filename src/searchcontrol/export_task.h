#pragma once

#include <QObject>
#include <QSaveFile>
#include <memory>

#include "search/exporter.h"
#include "searchcontrol/chosen_entries.h"
#include "searchcontrol/slices.h"

namespace searchcontrol {

/// Writes an export piece by piece. The file appears when it is complete; one that was there before
/// stays until then, and for good where the export fails.
class ExportTask : public QObject, private search::ExportSink {
    Q_OBJECT

  public:
    ExportTask(base::EventBoundary& boundary, QObject* parent);
    ~ExportTask() override;

    /// base::FileFailure where the file cannot be written.
    void start(const QString& file, ChosenEntries entries, search::ExportFormat format,
               search::ExportOptions options);
    bool isRunning() const { return slices_.isRunning(); }
    std::size_t done() const { return exporter_ ? exporter_->done() : 0; }
    std::size_t expected() const { return entries_.size(); }
    QString fileName() const;

  signals:
    void progressed();
    void finished();

  private:
    void write(std::string_view bytes) override;
    bool exportOn(const search::Budget& budget);
    [[noreturn]] void fail();

    ChosenEntries entries_;
    std::unique_ptr<QSaveFile> file_;
    std::unique_ptr<search::Exporter> exporter_;
    Slices slices_;
};

}  // namespace searchcontrol
