#include "searchcontrol/export_dialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>

#include "searchcontrol/texts.h"

namespace searchcontrol {

namespace {

struct Format {
    search::ExportFormat format;
    const char* title;
};
constexpr Format formats[] = {{search::ExportFormat::Csv, "CSV: comma-separated, for spreadsheets"},
                              {search::ExportFormat::Tsv, "TSV: tab-separated"},
                              {search::ExportFormat::JsonLines, "JSON lines: for programs"},
                              {search::ExportFormat::Html, "HTML: a page with a table"},
                              {search::ExportFormat::Efu, "EFU: a file list"}};

}  // namespace

ExportDialog::ExportDialog(std::size_t results, std::size_t selected, QWidget* parent)
    : QDialog(parent),
      comboFormat_(new QComboBox(this)),
      textFile_(new QLineEdit(this)),
      checkSelected_(new QCheckBox(this)),
      checkShownColumns_(new QCheckBox("Only the columns that are shown, in their order", this)),
      checkFormulas_(new QCheckBox("Keep spreadsheets from taking names for formulas", this)) {
    setObjectName("form_export");
    setWindowTitle("Export");
    comboFormat_->setObjectName("comboFormat");
    comboFormat_->setAccessibleName("Format");
    for (const Format& format : formats) {
        comboFormat_->addItem(format.title);
    }
    textFile_->setObjectName("textFile");
    textFile_->setAccessibleName("File");
    textFile_->setText(QDir::toNativeSeparators(QDir::homePath() + "/search.csv"));
    checkSelected_->setObjectName("checkSelected");
    checkSelected_->setText("Only the " + countText(static_cast<std::int64_t>(selected),
                                                    "selected entry", "selected entries"));
    checkSelected_->setChecked(selected > 1);
    checkSelected_->setEnabled(selected > 0 && selected < results);
    checkShownColumns_->setObjectName("checkShownColumns");
    checkShownColumns_->setChecked(true);
    checkFormulas_->setObjectName("checkFormulas");
    auto* browse = new QPushButton("&Browse", this);
    browse->setObjectName("btnBrowse");
    auto* file = new QHBoxLayout;
    file->addWidget(textFile_, 1);
    file->addWidget(browse);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Ok)->setText("&Export");
    auto* layout = new QFormLayout(this);
    layout->addRow("&Format", comboFormat_);
    // A row that is a layout has nothing to give its letter to by itself.
    auto* labelFile = new QLabel("F&ile", this);
    labelFile->setBuddy(textFile_);
    layout->addRow(labelFile, file);
    layout->addRow(checkSelected_);
    layout->addRow(checkShownColumns_);
    layout->addRow(checkFormulas_);
    layout->addRow(buttons);
    connect(comboFormat_, &QComboBox::currentIndexChanged, this, &ExportDialog::fitToFormat);
    connect(browse, &QPushButton::clicked, this, &ExportDialog::browse);
    connect(buttons, &QDialogButtonBox::accepted, this, &ExportDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    resize(560, sizeHint().height());
}

search::ExportFormat ExportDialog::format() const {
    return formats[static_cast<std::size_t>(comboFormat_->currentIndex())].format;
}

QString ExportDialog::file() const { return QDir::fromNativeSeparators(textFile_->text()); }
bool ExportDialog::onlySelected() const {
    return checkSelected_->isEnabled() && checkSelected_->isChecked();
}
bool ExportDialog::onlyShownColumns() const { return checkShownColumns_->isChecked(); }
bool ExportDialog::neutralisesFormulas() const { return checkFormulas_->isChecked(); }

/// The file's extension follows the format, and not every choice makes sense in every format.
void ExportDialog::fitToFormat() {
    const QFileInfo file(textFile_->text());
    const QString name =
        file.path() + '/' + file.completeBaseName() + '.' + text(search::exportFormatKey(format()));
    textFile_->setText(QDir::toNativeSeparators(name));
    using search::ExportFormat;
    checkShownColumns_->setEnabled(format() != ExportFormat::Efu);
    checkFormulas_->setEnabled(format() == ExportFormat::Csv || format() == ExportFormat::Tsv);
}

void ExportDialog::browse() {
    // accept() asks whether a file that is there may go.
    const QString chosen = QFileDialog::getSaveFileName(this, "Export", textFile_->text(), {},
                                                        nullptr, QFileDialog::DontConfirmOverwrite);
    if (!chosen.isEmpty()) {
        textFile_->setText(QDir::toNativeSeparators(chosen));
    }
}

void ExportDialog::accept() {
    if (file().trimmed().isEmpty()) {
        textFile_->setFocus();
        return;
    }
    if (QFileInfo::exists(file())) {
        QMessageBox box(QMessageBox::NoIcon, "Export",
                        textFile_->text() + " is there already. Shall the export replace it?",
                        QMessageBox::Yes | QMessageBox::Cancel, this);
        box.setObjectName("messageBox");
        box.setTextFormat(Qt::PlainText);
        if (box.exec() != QMessageBox::Yes) {
            return;
        }
    }
    QDialog::accept();
}

}  // namespace searchcontrol
