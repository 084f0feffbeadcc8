#pragma once

#include <QWidget>
#include <array>
#include <functional>

class QFrame;
class QLabel;

namespace shell {

class ArchiveTree;
class RecordList;

/// The main window's inner area with the workspace panel: tree and record list side by side, two
/// status lines below them. The panel is hidden until somebody arranges the workspace, and is laid
/// out again whenever the area changes its size.
class Workspace : public QWidget {
  public:
    explicit Workspace(QWidget* parent);

    QFrame* panel() { return panel_; }
    ArchiveTree* tree() { return tree_; }
    RecordList* list() { return list_; }
    /// Status line 0 or 1.
    QLabel* status(int index) { return status_[static_cast<std::size_t>(index)]; }

    void hidePanel();
    /// Enables, shows and lays out the panel.
    void arrange();

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    QLabel* createStatus(int index);
    void layOut();

    QFrame* panel_;
    ArchiveTree* tree_;
    RecordList* list_;
    std::array<QLabel*, 2> status_;
};

}  // namespace shell
