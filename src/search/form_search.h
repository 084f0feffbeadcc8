#pragma once

#include <QWidget>
#include <functional>
#include <string>

#include "search/search.h"

class QLabel;

namespace search {

/// What came of the attempt to make the search component: it, or why there is none.
struct MadeControl {
    QWidget* control = nullptr;  ///< has no parent yet
    std::string obstacle;        ///< a sentence without its full stop
};

/// The search window: a frame around the search component, which fills it. Where the component
/// cannot be had the window says so, and tries again each time it is shown. Escape, where the
/// component has no use for it, closes the window, which hides it.
class FormSearch : public QWidget, public SearchFrame {
    Q_OBJECT

  public:
    /// `make` makes the component.
    explicit FormSearch(std::function<MadeControl()> make);

    void showWindow() override;
    void setArchivePath(const std::string& path) override;

    /// The component; null where there is none.
    QWidget* control() const { return control_; }

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void makeControl();

    std::function<MadeControl()> make_;
    QLabel* labelObstacle_;
    QWidget* control_ = nullptr;
};

}  // namespace search
