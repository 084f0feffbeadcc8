#pragma once

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QWidget>
#include <cstdint>
#include <string>

#include "keywords/collection_progress.h"

class QLabel;
class QProgressBar;

namespace shell {

/// Shows how far a long operation is. It has nothing to do of its own: its owner sets bar and text
/// and shows and hides it.
///
/// It may be told of a million records: while it is visible, what it is told between two pictures
/// that an eye can tell apart is not drawn. The last it was told is drawn in any case.
class FormProgress : public QWidget, public keywords::CollectionProgress {
  public:
    FormProgress();

    void setRange(std::int64_t minimum, std::int64_t maximum) override;
    void setPosition(std::int64_t position) override;
    void setText(const std::string& text) override;
    void showProgress() override;

  protected:
    void timerEvent(QTimerEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    void drawSoon();
    void drawNow();

    std::int64_t position_ = 0;
    std::string text_;
    QElapsedTimer sinceDrawn_;
    QBasicTimer nextPicture_;
    QProgressBar* progressInit_;
    QLabel* displayProgress_;
};

}  // namespace shell
