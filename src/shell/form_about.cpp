#include "shell/form_about.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "base/event_boundary.h"
#include "platform/shell_services.h"
#include "shell/pictures.h"

namespace shell {

namespace {

constexpr const char* webAddress = "https://verdolin.example/";
constexpr int pictureSide = 160;

QLabel* createLink(QWidget* parent, platform::ShellServices& shell, base::EventBoundary& boundary) {
    auto* link = new QLabel(QString("<a href=\"%1\">%1</a>").arg(webAddress), parent);
    link->setObjectName("labelAboutWebLink");
    link->setAccessibleName(QString("Web page of the makers, ") + webAddress);
    link->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    QObject::connect(link, &QLabel::linkActivated, parent,
                     [&] { boundary.run([&] { shell.openWebPage(webAddress); }); });
    return link;
}

QLabel* createPicture(QWidget* parent) {
    auto* picture = new QLabel(parent);
    picture->setObjectName("imageAbout");
    picture->setAccessibleName("A cabinet with an open drawer, and a few media before it");
    picture->setPixmap(
        aboutPicture().pixmap(QSize(pictureSide, pictureSide), parent->devicePixelRatioF()));
    return picture;
}

}  // namespace

FormAbout::FormAbout(platform::ShellServices& shell, base::EventBoundary& boundary) {
    setObjectName("form_about");
    setWindowTitle("About Verdolin");
    auto* frameAbout = new QGroupBox("About Verdolin Version 1.01", this);
    frameAbout->setObjectName("frameAbout");
    auto* labelAbout =
        new QLabel("Verdolin Version 1.01\nCopyright 2001 The makers of Verdolin", frameAbout);
    labelAbout->setObjectName("labelAbout");
    QLabel* imageAbout = createPicture(frameAbout);
    QLabel* labelAboutWebLink = createLink(frameAbout, shell, boundary);
    auto* btnAboutClose = new QPushButton("Close", this);
    btnAboutClose->setObjectName("btnAboutClose");
    btnAboutClose->setAutoDefault(true);
    connect(btnAboutClose, &QPushButton::clicked, this, &QWidget::close);

    auto* texts = new QVBoxLayout;
    texts->addStretch();
    texts->addWidget(labelAbout);
    texts->addWidget(labelAboutWebLink);
    texts->addStretch();
    auto* inside = new QHBoxLayout(frameAbout);
    inside->addWidget(imageAbout);
    inside->addSpacing(inside->spacing());
    inside->addLayout(texts, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(frameAbout);
    layout->addWidget(btnAboutClose, 0, Qt::AlignRight);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    btnAboutClose->setFocus();
}

}  // namespace shell
