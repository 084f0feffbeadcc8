#include "shell/pictures.h"

#include "base/failure.h"

/// The pictures lie in a library, from where they are only taken into a program that asks for them.
/// Must stand outside of every namespace.
static void takePicturesIn() { Q_INIT_RESOURCE(pictures); }

namespace shell {

QIcon applicationIcon() {
    takePicturesIn();
    return QIcon(":/pictures/verdolin.svg");
}

QIcon aboutPicture() {
    takePicturesIn();
    return QIcon(":/pictures/about.svg");
}

ImageList::ImageList(QObject* parent) : QObject(parent) {
    takePicturesIn();
    for (const QString& key : keys()) {
        const QString file = ":/pictures/tree/" + key + ".svg";
        QIcon image(file);
        // Otherwise a selected line's image would be tinted, which a small drawing does not
        // survive.
        image.addFile(file, {}, QIcon::Selected);
        images_.append(image);
    }
}

QStringList ImageList::keys() {
    return {"folder", "folderopen", "removable", "fixed", "remote",
            "cdrom",  "ramdisk",    "unknown",   "file"};
}

QIcon ImageList::image(const QString& key) const {
    const qsizetype place = keys().indexOf(key);
    if (place < 0) {
        throw base::InvalidArgumentFailure("there is no image \"" + key.toStdString() + "\"");
    }
    return images_[place];
}

}  // namespace shell
