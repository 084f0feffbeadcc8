#include "shell/workspace.h"

#include <QEvent>
#include <QFrame>

#include "controls/status_line.h"
#include "shell/archive_tree.h"
#include "shell/record_list.h"
#include "shell/workspace_layout.h"

namespace shell {

namespace {

void place(QWidget* widget, const Rectangle& twips) {
    const Rectangle pixels = pixelsFromTwips(twips, widget->logicalDpiX());
    widget->setGeometry(pixels.left, pixels.top, pixels.width, pixels.height);
}

}  // namespace

Workspace::Workspace(QWidget* parent) : QWidget(parent) {
    panel_ = new QFrame(this);
    panel_->setObjectName("scan_main");
    tree_ = new ArchiveTree(panel_);
    tree_->setObjectName("tvArchiveExplore");
    tree_->setAccessibleName("Archive");
    list_ = new RecordList(panel_);
    list_->setObjectName("listScan");
    list_->setAccessibleName("Records");
    status_ = {createStatus(0), createStatus(1)};
}

QLabel* Workspace::createStatus(int index) {
    auto* label = new controls::StatusLine("Loading . . .", panel_);
    label->setObjectName("displayDriveInfo");
    label->setProperty("index", index);
    return label;
}

void Workspace::hidePanel() { panel_->hide(); }

void Workspace::arrange() {
    panel_->setEnabled(true);
    panel_->show();
    layOut();
}

void Workspace::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    layOut();
}

void Workspace::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        layOut();
    }
}

void Workspace::layOut() {
    const int dotsPerInch = logicalDpiX();
    const WorkspaceLayout layout = layOutWorkspace(
        twipsFromPixels(width(), dotsPerInch), twipsFromPixels(height(), dotsPerInch),
        twipsFromPixels(status_[0]->sizeHint().height(), dotsPerInch));
    place(panel_, layout.panel);
    place(tree_, layout.tree);
    place(list_, layout.list);
    place(status_[0], layout.firstLabel);
    place(status_[1], layout.secondLabel);
}

}  // namespace shell
