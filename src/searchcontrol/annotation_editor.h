#pragma once

#include <QObject>
#include <vector>

#include "archive/annotations.h"
#include "search/search_host.h"
#include "searchcontrol/annotation_wish.h"

class QWidget;

namespace searchcontrol {

/// Writes keywords and notes of chosen entries into the archive, and takes the last writing back.
class AnnotationEditor : public QObject {
    Q_OBJECT

  public:
    /// Everything must outlive this.
    AnnotationEditor(const search::SearchHost& host, QWidget* window);

    /// Asks what is to be written, and writes it. Failures of the archive pass.
    void edit(const base::ArchiveLocation& archive, const ChosenEntries& chosen);
    bool canUndo() const { return !undo_.empty(); }
    /// Makes the last writing undone; once. What a failure or the user kept from being undone can
    /// be undone by another call.
    void undo();
    /// Another archive is searched: nothing is left to undo.
    void forget();

  signals:
    /// The archive has been written to, or what can be undone is another.
    void changed();

  private:
    archive::AnnotationResult write(const base::ArchiveLocation& archive,
                                    const std::vector<archive::AnnotationChange>& changes);
    void tellOfMissed(std::size_t count);

    const search::SearchHost& host_;
    QWidget* window_;
    base::ArchiveLocation archive_;
    std::vector<archive::AnnotationChange> undo_;
};

}  // namespace searchcontrol
