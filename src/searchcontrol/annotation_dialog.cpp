#include "searchcontrol/annotation_dialog.h"

#include <QComboBox>
#include <QCompleter>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>

#include "searchcontrol/texts.h"

namespace searchcontrol {

namespace {

/// What a text field of an archive holds at most, in UTF-16 units.
constexpr int longestText = 255;

QStringList knownKeywords(const search::Index& index) {
    QStringList keywords;
    for (const std::string_view known : index.knownKeywords()) {
        for (const QString& keyword : text(known).split(',', Qt::SkipEmptyParts)) {
            keywords.append(keyword.trimmed());
        }
    }
    keywords.removeDuplicates();
    return keywords;
}

}  // namespace

AnnotationDialog::AnnotationDialog(const ChosenEntries& chosen, QWidget* parent) : QDialog(parent) {
    const bool isOne = chosen.size() == 1;
    const archive::Annotation now =
        isOne ? annotationOf(*chosen.index, chosen.rows.front()) : archive::Annotation();
    setObjectName("form_annotations");
    setWindowTitle("Keywords and Notes");
    auto* layout = new QFormLayout(this);
    auto* entries =
        new QLabel(isOne ? text(chosen.index->name(chosen.rows.front()))
                         : countText(static_cast<std::int64_t>(chosen.size()), "entry", "entries"),
                   this);
    entries->setTextFormat(Qt::PlainText);
    entries->setObjectName("labelEntries");
    layout->addRow(entries);
    fields_ = {createField("Keywords", "&Keywords", text(now.keywords), isOne),
               createField("Notes1", "Notes &1", text(now.notes1), isOne),
               createField("Notes2", "Notes &2", text(now.notes2), isOne)};
    auto* completer = new QCompleter(knownKeywords(*chosen.index), this);
    completer->setCaseSensitivity(Qt::CaseInsensitive);
    fields_[0].text->setCompleter(completer);
    auto* hint = new QLabel(
        "Several keywords are separated by commas. What is entered here is written into the "
        "archive; keywords applied to explored records in the main window are in memory only.",
        this);
    hint->setObjectName("labelHint");
    hint->setWordWrap(true);
    layout->addRow(hint);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    layout->addRow(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    fields_[0].text->setFocus();
    resize(520, sizeHint().height());
}

AnnotationDialog::Field AnnotationDialog::createField(const char* name, const QString& title,
                                                      const QString& now, bool isOne) {
    Field field{new QComboBox(this), new QLineEdit(now, this)};
    QString plain = title;
    plain.remove('&');
    field.kind->setObjectName(QString("combo") + name);
    field.kind->setAccessibleName("What to do with " + plain);
    field.kind->addItems({"Leave as it is", "Set to", "Add"});
    field.kind->setCurrentIndex(0);
    field.text->setObjectName(QString("input") + name);
    field.text->setAccessibleName(plain);
    field.text->setMaxLength(longestText);
    // Who types into a field wants it changed: of one entry to that text, of several by that text.
    connect(field.text, &QLineEdit::textEdited, this, [kind = field.kind, isOne] {
        if (kind->currentIndex() == 0) {
            kind->setCurrentIndex(
                static_cast<int>(isOne ? TextWish::Kind::Set : TextWish::Kind::Add));
        }
    });
    auto* row = new QHBoxLayout;
    row->addWidget(field.kind);
    row->addWidget(field.text, 1);
    auto* label = new QLabel(title, this);
    label->setBuddy(field.text);
    static_cast<QFormLayout*>(layout())->addRow(label, row);
    return field;
}

TextWish AnnotationDialog::wishOf(const Field& field) {
    return {static_cast<TextWish::Kind>(field.kind->currentIndex()),
            field.text->text().toStdString()};
}

AnnotationWish AnnotationDialog::wish() const {
    return {wishOf(fields_[0]), wishOf(fields_[1]), wishOf(fields_[2])};
}

}  // namespace searchcontrol
