#include "searchcontrol/annotation_editor.h"

#include <QProgressDialog>
#include <algorithm>
#include <iterator>
#include <set>
#include <utility>

#include "base/failure.h"
#include "base/message_box.h"
#include "searchcontrol/annotation_dialog.h"
#include "searchcontrol/texts.h"

namespace searchcontrol {

namespace {

/// Rows between two looks at the progress window.
constexpr std::size_t rowsOfLook = 64;

/// The changes that a cancelled writing did not come to. A row that holds something else by now is
/// no part of them: it can never be written.
std::vector<archive::AnnotationChange> notDone(
    const std::vector<archive::AnnotationChange>& changes,
    const archive::AnnotationResult& result) {
    std::set<jet::RowPlace> done;
    for (const archive::AnnotationChange& change : result.undo) {
        done.insert(change.place);
    }
    for (const std::size_t position : result.missed) {
        done.insert(changes[position].place);
    }
    std::vector<archive::AnnotationChange> rest;
    std::ranges::copy_if(changes, std::back_inserter(rest),
                         [&](const auto& change) { return !done.contains(change.place); });
    return rest;
}

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
    if (changes.empty()) {
        return;
    }
    archive::AnnotationResult result = write(archive, changes);
    // Where nothing was written, what was written before can still be taken back.
    if (!result.undo.empty()) {
        archive_ = archive;
        undo_ = std::move(result.undo);
    }
    emit changed();
    tellOfMissed(result.missed.size());
}

archive::AnnotationResult AnnotationEditor::write(
    const base::ArchiveLocation& archive, const std::vector<archive::AnnotationChange>& changes) {
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
    return archive::annotate(host_.engine, archive, changes, goOn);
}

/// A failure passes and leaves everything to be undone.
void AnnotationEditor::undo() {
    if (undo_.empty()) {
        return;
    }
    const std::vector<archive::AnnotationChange> changes = undo_;
    archive::AnnotationResult result;
    try {
        result = write(archive_, changes);
    } catch (const base::Failure&) {
        emit changed();
        throw;
    }
    undo_ = notDone(changes, result);
    emit changed();
    tellOfMissed(result.missed.size());
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
