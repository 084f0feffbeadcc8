#pragma once

#include <QGroupBox>

namespace controls {

/// A frame whose caption is shown as it is, "&" included. Where it does not fit, its middle gives
/// way to dots and the tool tip shows all of it, so that a long caption does not widen the window.
class PlainFrame : public QGroupBox {
    Q_OBJECT

  public:
    using QGroupBox::QGroupBox;

    /// Use this in place of setTitle().
    void setCaption(const QString& caption);
    const QString& caption() const { return caption_; }

    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QString caption_;
};

}  // namespace controls
