#include "shell/system_file_dialogs.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>

namespace shell {

namespace {

QString text(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

}  // namespace

QStringList nameFilters(std::string_view filter) {
    const QStringList pieces = text(filter).split('|');
    QStringList filters;
    for (qsizetype i = 0; i + 1 < pieces.size(); i += 2) {
        const QString pattern = pieces[i + 1] == "*.*" ? QString("*") : pieces[i + 1];
        filters.append(pieces[i] + " (" + pattern + ")");
    }
    return filters;
}

std::optional<std::string> SystemFileDialogs::showOpen(const open::FileDialogRequest& request) {
    QFileDialog dialog(QApplication::activeWindow());
    dialog.setWindowTitle("Open Archive");
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    dialog.setFileMode(QFileDialog::ExistingFile);
    return show(dialog, request);
}

std::optional<std::string> SystemFileDialogs::showSave(const open::FileDialogRequest& request) {
    QFileDialog dialog(QApplication::activeWindow());
    dialog.setWindowTitle("New Archive");
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    // The window that uses the name asks that itself.
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    return show(dialog, request);
}

std::optional<std::string> SystemFileDialogs::show(QFileDialog& dialog,
                                                   const open::FileDialogRequest& request) {
    dialog.setObjectName("comDialog");
    dialog.setNameFilters(nameFilters(request.filter));
    dialog.setDirectory(QString::fromStdString(request.initialFolder));
    dialog.setDefaultSuffix(text(request.defaultExtension));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        return std::nullopt;
    }
    return QDir::toNativeSeparators(dialog.selectedFiles().first()).toStdString();
}

}  // namespace shell
