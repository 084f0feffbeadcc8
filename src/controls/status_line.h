#pragma once

#include <QLabel>

namespace controls {

/// A line of text as it is. Where it does not fit, its end, or another part of it, gives way to
/// dots and the tool tip shows all of it.
class StatusLine : public QLabel {
  public:
    StatusLine(const QString& text, QWidget* parent);

    /// Which part gives way.
    void setElideMode(Qt::TextElideMode mode) { elideMode_ = mode; }

  protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    QString shownText() const;

    Qt::TextElideMode elideMode_ = Qt::ElideRight;
};

}  // namespace controls
