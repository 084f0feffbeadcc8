#include "searchcontrol/pick_list_dialog.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QTextBrowser>
#include <QVBoxLayout>

namespace searchcontrol {

PickListDialog::PickListDialog(const QString& html, QWidget* parent)
    : QDialog(parent), textList_(new QTextBrowser(this)) {
    setObjectName("form_picklist");
    setWindowTitle("Pick List");
    textList_->setObjectName("textPickList");
    textList_->setAccessibleName("Media to fetch, and the files wanted from each");
    textList_->setOpenLinks(false);
    textList_->setHtml(html);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    QPushButton* print = buttons->addButton("&Print", QDialogButtonBox::ActionRole);
    print->setObjectName("btnPrint");
    QPushButton* pdf = buttons->addButton("&Save as PDF", QDialogButtonBox::ActionRole);
    pdf->setObjectName("btnPdf");
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(textList_);
    layout->addWidget(buttons);
    connect(print, &QPushButton::clicked, this, &PickListDialog::print);
    connect(pdf, &QPushButton::clicked, this, &PickListDialog::choosePdf);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    resize(640, 560);
}

void PickListDialog::print() {
    QPrinter printer(QPrinter::HighResolution);
    QPrintDialog dialog(&printer, this);
    if (dialog.exec() == QDialog::Accepted) {
        textList_->document()->print(&printer);
    }
}

bool PickListDialog::writePdf(const QString& file) {
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(file);
    textList_->document()->print(&printer);
    return printer.printerState() != QPrinter::Error && QFileInfo(file).size() > 0;
}

void PickListDialog::choosePdf() {
    const QString file = QFileDialog::getSaveFileName(
        this, "Pick List", QDir::homePath() + "/pick list.pdf", "PDF (*.pdf)");
    if (!file.isEmpty() && !writePdf(file)) {
        QMessageBox box(QMessageBox::NoIcon, "Pick List",
                        QDir::toNativeSeparators(file) + " cannot be written.", QMessageBox::Ok,
                        this);
        box.setTextFormat(Qt::PlainText);
        box.exec();
    }
}

}  // namespace searchcontrol
