#pragma once

#include <QLabel>

namespace keywords {

/// Lines of text, each ended with carriage return and line feed, on a height that is always that of
/// the same number of lines. A line that does not fit gives way to dots at its end, and the tool
/// tip shows the whole text.
class InfoLabel : public QLabel {
  public:
    InfoLabel(int lines, QWidget* parent);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    QStringList shownLines() const;

    int lines_;
};

}  // namespace keywords
