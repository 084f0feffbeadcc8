#include "searchcontrol/annotation_editor.h"

#include <QProgressDialog>
#include <utility>

#include "base/message_box.h"
#include "searchcontrol/annotation_dialog.h"
#include "searchcontrol/texts.h"

namespace searchcontrol {

namespace {

/// Rows between two looks at the progress window.
constexpr std::size_t rowsOfLook = 64;

}  // namespace

AnnotationEditor::AnnotationEditor(const search::SearchHost& host, QWidget* window)
    : QObject(window), host_(host), window_(window) {}

void AnnotationEditor::edit(const base::ArchiveLocation& archive, const ChosenEntries& chosen) {
    if (chosen.isEmpty()) {
        return;
    }
    AnnotationDialog dialog(chosen, window_);
    if (dialog.exec() != QDialog::Accepted) {
        return;
    }
    const auto changes = changesFor(chosen, dialog.wish());
    if (!changes.empty()) {
        write(archive, changes);
    }
}

void AnnotationEditor::write(const base::ArchiveLocation& archive,
                             const std::vector<archive::AnnotationChange>& changes) {
    QProgressDialog progress("Writing keywords and notes", "Cancel", 0,
                             static_cast<int>(changes.size()), window_);
    progress.setObjectName("form_progress");
    progress.setWindowTitle("Search");
    progress.setWindowModality(Qt::WindowModal);
    const auto goOn = [&](std::size_t done) {
        if (done % rowsOfLook == 0) {
            progress.setValue(static_cast<int>(done));
        }
        return !progress.wasCanceled();
    };
    archive::AnnotationResult result = archive::annotate(host_.engine, archive, changes, goOn);
    progress.reset();
    archive_ = archive;
    undo_ = std::move(result.undo);
    emit changed();
    tellOfMissed(result.missed.size());
}

void AnnotationEditor::undo() {
    const auto changes = std::exchange(undo_, {});
    if (!changes.empty()) {
        write(archive_, changes);
        undo_.clear();
        emit changed();
    }
}

void AnnotationEditor::forget() {
    undo_.clear();
    emit changed();
}

void AnnotationEditor::tellOfMissed(std::size_t count) {
    if (count > 0) {
        host_.messages.show(
            {"Keywords and Notes",
             countText(static_cast<std::int64_t>(count), "entry was", "entries were")
                     .toStdString() +
                 " changed or deleted by someone else meanwhile, and left as found.",
             base::MessageButtons::Ok});
    }
}

}  // namespace searchcontrol
