#include "shell/window_message_box.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>

namespace shell {

namespace {

QMessageBox::StandardButtons buttonsOf(base::MessageButtons buttons) {
    switch (buttons) {
        case base::MessageButtons::OkCancel:
            return QMessageBox::Ok | QMessageBox::Cancel;
        case base::MessageButtons::YesNoCancel:
            return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
        case base::MessageButtons::Ok:
            break;
    }
    return QMessageBox::Ok;
}

/// Anything but a button, such as the end of the program, is what Escape is.
base::MessageAnswer answerOf(int button, base::MessageButtons buttons) {
    switch (button) {
        case QMessageBox::Ok:
            return base::MessageAnswer::Ok;
        case QMessageBox::Yes:
            return base::MessageAnswer::Yes;
        case QMessageBox::No:
            return base::MessageAnswer::No;
        default:
            return buttons == base::MessageButtons::Ok ? base::MessageAnswer::Ok
                                                       : base::MessageAnswer::Cancel;
    }
}

}  // namespace

base::MessageAnswer WindowMessageBox::show(const base::Message& message) {
    QMessageBox box(QMessageBox::NoIcon, QString::fromStdString(message.title),
                    QString::fromStdString(message.text), buttonsOf(message.buttons),
                    QApplication::activeWindow());
    box.setObjectName("messageBox");
    box.setTextFormat(Qt::PlainText);
    box.setEscapeButton(message.buttons == base::MessageButtons::Ok ? QMessageBox::Ok
                                                                    : QMessageBox::Cancel);
    for (QAbstractButton* button : box.buttons()) {
        button->setIcon({});
    }
    return answerOf(box.exec(), message.buttons);
}

}  // namespace shell
