#pragma once

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QWidget>
#include <cstdint>
#include <string>

#include "keywords/collection_progress.h"

class QProgressBar;

namespace controls {
class ProgressLine;
}

namespace shell {

/// Shows how far a long operation is. It has nothing to do of its own: its owner sets bar and text
/// and shows and hides it.
///
/// It may be told of a million records: bar and text are always the last that was set, and are
/// painted at most every few hundredths of a second while the window is visible. The last is
/// painted in any case.
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
    void paintBar();
    void paintLastSoon();
    void endRun();

    QElapsedTimer sinceBarPainted_;
    QBasicTimer endOfRun_;
    QProgressBar* progressInit_;
    controls::ProgressLine* line_;
};

}  // namespace shell
