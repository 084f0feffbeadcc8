#pragma once

#include <QLabel>

namespace controls {

/// A line of text as it is. Where it does not fit, its end gives way to dots and the tool tip shows
/// all of it.
class StatusLine : public QLabel {
  public:
    StatusLine(const QString& text, QWidget* parent);

  protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    QString shownText() const;
};

}  // namespace controls
