#pragma once

#include <QIcon>
#include <QObject>
#include <QString>
#include <QStringList>

namespace shell {

/// The application's icon.
QIcon applicationIcon();
/// The picture of the about window.
QIcon aboutPicture();

/// The images of the archive tree, found by their keys.
class ImageList : public QObject {
  public:
    explicit ImageList(QObject* parent = nullptr);

    /// The nine keys in their order.
    static QStringList keys();
    /// The image of that key; base::InvalidArgumentFailure where there is none.
    QIcon image(const QString& key) const;

  private:
    QList<QIcon> images_;  // at the places of their keys
};

}  // namespace shell
