#pragma once

#include <QElapsedTimer>
#include <QWidget>

class QLabel;

namespace controls {

/// A line of text that changes many thousand times in a row. The text is always the last one that
/// was set; what costs is painting it, which is done at most every few hundredths of a second while
/// it runs.
class ProgressLine : public QWidget {
    Q_OBJECT

  public:
    /// How long a painted text stays at least while it runs: an eye can tell no more.
    static constexpr int millisecondsBetweenPaintings = 40;

    /// The label inside gets that name.
    ProgressLine(const char* labelName, QWidget* parent);

    /// Sets the text and has it painted soon.
    void setText(const QString& text);
    /// Sets one of a run of texts.
    void setRunningText(const QString& text);
    /// At the end of a run: has the last text painted.
    void endRun();

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    QLabel* label_;
    QElapsedTimer sincePainted_;
};

}  // namespace controls
