#include "keywords/form_keywords.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <initializer_list>

#include "base/event_boundary.h"
#include "keywords/form_info_label.h"
#include "keywords/form_text_combo.h"

namespace keywords {

namespace {

constexpr int smallestWidth = 520;
constexpr int infoLines = 4;

QHBoxLayout* rowOf(std::initializer_list<QWidget*> controls) {
    auto* row = new QHBoxLayout;
    for (QWidget* control : controls) {
        row->addWidget(control);
    }
    row->addStretch();
    return row;
}

}  // namespace

FormKeywords::FormKeywords(base::ProgramState& state, RecordColumns& columns,
                           base::EventBoundary& boundary, QWidget* owner)
    : QDialog(owner), choice_(state), columns_(columns), boundary_(boundary) {
    setObjectName("form_keywords");
    setWindowTitle("Apply Keywords and Notes");
    setModal(true);
    auto* layout = new QVBoxLayout(this);
    layout->addStrut(smallestWidth);
    layout->addWidget(createKeywordsFrame());
    layout->addWidget(createNotesFrame());
    createInfo();
    connectCombos();
}

QGroupBox* FormKeywords::createKeywordsFrame() {
    auto* frame = new QGroupBox("KeyWords", this);
    frame->setObjectName("frameKeywords");
    comboKeywords_ =
        createCombo("comboKeywords", "Keyword", "Type a keyword, or choose a known one", frame);
    btnKeyAdd_ = createButton("btnKeyAdd", "Add Keyword", &FormKeywords::addKeyword, frame);
    btnKeyDelete_ = createButton("btnKeyDelete", "Delete Keyword", nullptr, frame);
    btnSelectKW_ =
        createButton("btnSelectKW", "Select Keyword", &FormKeywords::selectKeyword, frame);
    checkArchiveKW_ = createCheck("checkArchiveKW", "Show Archive Keywords",
                                  &FormKeywords::clickArchiveKeywords, frame);

    auto* layout = new QVBoxLayout(frame);
    layout->addWidget(comboKeywords_);
    layout->addLayout(rowOf({btnKeyAdd_, btnKeyDelete_, btnSelectKW_}));
    layout->addLayout(rowOf({checkArchiveKW_}));
    return frame;
}

QGroupBox* FormKeywords::createNotesFrame() {
    auto* frame = new QGroupBox("Notes", this);
    frame->setObjectName("frameNotes");
    comboNotes_ = createCombo("comboNotes", "Note", "Type a note, or choose a known one", frame);
    btnNoteAdd_ = createButton("btnNoteAdd", "Add Note", &FormKeywords::addNote, frame);
    btnDeleteNotes_ = createButton("btnDeleteNotes", "Delete Note", nullptr, frame);
    btnSelectNote_ = createButton("btnSelectNote", "Select Note", &FormKeywords::selectNote, frame);
    checkNotes1_ = createCheck("checkNotes1", "Apply to Notes1", &FormKeywords::clickNotes1, frame);
    checkNotes2_ = createCheck("checkNotes2", "Apply to Notes2", &FormKeywords::clickNotes2, frame);
    // The caption is that of the keywords' box, word for word.
    checkArchiveNote_ = createCheck("checkArchiveNote", "Show Archive Keywords",
                                    &FormKeywords::clickArchiveNotes, frame);
    checkArchiveNote_->setAccessibleName("Show archive notes");

    auto* layout = new QVBoxLayout(frame);
    layout->addWidget(comboNotes_);
    layout->addLayout(rowOf({btnNoteAdd_, btnDeleteNotes_, btnSelectNote_}));
    layout->addLayout(rowOf({checkNotes1_, checkNotes2_}));
    layout->addLayout(rowOf({checkArchiveNote_}));
    return frame;
}

void FormKeywords::createInfo() {
    displayInfo_ = new InfoLabel(infoLines, this);
    displayInfo_->setObjectName("displayInfo");
    auto* labelSelectFirst = new QLabel(
        "No records have been selected yet. Select records in the main window's list first; "
        "until then nothing is changed here but the known keywords and notes.",
        this);
    labelSelectFirst->setObjectName("labelSelectFirst");
    labelSelectFirst->setWordWrap(true);
    // Otherwise the layout counts on fewer lines than there are at the smallest width.
    labelSelectFirst->setMinimumHeight(labelSelectFirst->heightForWidth(smallestWidth));
    labelSelectFirst->setHidden(choice_.recordsEverSelected());
    btnApply_ = createButton("btnApply", "Apply", &FormKeywords::apply, this);
    btnApply_->setDefault(true);
    QPushButton* btnCancel = createButton("btnCancel", "Cancel", &QDialog::reject, this);

    auto* layout = static_cast<QVBoxLayout*>(this->layout());
    layout->addSpacing(layout->spacing());
    layout->addWidget(labelSelectFirst);
    layout->addWidget(displayInfo_);
    layout->addStretch();
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(btnApply_);
    buttons->addWidget(btnCancel);
    layout->addLayout(buttons);
}

TextCombo* FormKeywords::createCombo(const char* name, const QString& accessibleName,
                                     const QString& hint, QWidget* parent) {
    auto* combo = new TextCombo(parent);
    combo->setObjectName(name);
    combo->setAccessibleName(accessibleName);
    combo->lineEdit()->setPlaceholderText(hint);
    return combo;
}

QPushButton* FormKeywords::createButton(const char* name, const QString& caption,
                                        void (FormKeywords::*operation)(), QWidget* parent) {
    auto* button = new QPushButton(caption, parent);
    button->setObjectName(name);
    if (operation != nullptr) {
        connect(button, &QPushButton::clicked, this,
                [this, operation] { boundary_.run([this, operation] { (this->*operation)(); }); });
    }
    return button;
}

QCheckBox* FormKeywords::createCheck(const char* name, const QString& caption,
                                     void (FormKeywords::*operation)(), QWidget* parent) {
    auto* check = new QCheckBox(caption, parent);
    check->setObjectName(name);
    connect(check, &QCheckBox::toggled, this,
            [this, operation] { boundary_.run([this, operation] { (this->*operation)(); }); });
    return check;
}

/// What was enabled once stays so while the window is open.
void FormKeywords::connectCombos() {
    connect(comboKeywords_->lineEdit(), &QLineEdit::textEdited, this,
            [this] { btnKeyAdd_->setEnabled(true); });
    connect(comboKeywords_, &QComboBox::activated, this, [this] {
        btnSelectKW_->setEnabled(true);
        btnKeyDelete_->setEnabled(true);
    });
    connect(comboNotes_->lineEdit(), &QLineEdit::textEdited, this,
            [this] { btnNoteAdd_->setEnabled(true); });
    connect(comboNotes_, &QComboBox::activated, this, [this] {
        btnSelectNote_->setEnabled(true);
        btnDeleteNotes_->setEnabled(true);
    });
}

void FormKeywords::load() {
    displayInfo_->setText(QString::fromStdString(choice_.openingInfo()));
    // Each of these runs what a click on the box does.
    checkArchiveKW_->setChecked(true);
    checkArchiveNote_->setChecked(true);
    checkNotes1_->setChecked(true);
    showArchiveKeywords_ = true;
    showArchiveNotes_ = true;
    for (QPushButton* button : {btnApply_, btnSelectKW_, btnKeyAdd_, btnKeyDelete_, btnSelectNote_,
                                btnNoteAdd_, btnDeleteNotes_}) {
        button->setEnabled(false);
    }
    fillComboKeywords(showArchiveKeywords_);
    fillComboNotes(showArchiveNotes_);
}

void FormKeywords::fillComboKeywords(bool showAll) {
    comboKeywords_->setTexts(choice_.keywords(showAll ? Listed::All : Listed::Added));
}

void FormKeywords::fillComboNotes(bool showAll) {
    comboNotes_->setTexts(choice_.notes(showAll ? Listed::All : Listed::Added));
}

void FormKeywords::updateInfo() {
    displayInfo_->setText(QString::fromStdString(choice_.info()));
    btnApply_->setEnabled(true);
}

void FormKeywords::addKeyword() {
    choice_.addKeyword(comboKeywords_->text());
    fillComboKeywords(showArchiveKeywords_);
}

void FormKeywords::selectKeyword() {
    choice_.selectKeyword(comboKeywords_->text());
    updateInfo();
}

void FormKeywords::clickArchiveKeywords() {
    showArchiveKeywords_ = checkArchiveKW_->isChecked();
    fillComboKeywords(showArchiveKeywords_);
}

void FormKeywords::addNote() {
    choice_.addNote(comboNotes_->text());
    fillComboNotes(showArchiveNotes_);
}

void FormKeywords::selectNote() {
    choice_.selectNote(comboNotes_->text(), {checkNotes1_->isChecked(), checkNotes2_->isChecked()});
    updateInfo();
}

void FormKeywords::clickNotes1() { keepOneChecked(*checkNotes1_); }
void FormKeywords::clickNotes2() { keepOneChecked(*checkNotes2_); }

void FormKeywords::keepOneChecked(QCheckBox& clicked) {
    if (!checkNotes1_->isChecked() && !checkNotes2_->isChecked()) {
        clicked.setChecked(true);
    }
}

void FormKeywords::clickArchiveNotes() {
    showArchiveNotes_ = checkArchiveNote_->isChecked();
    fillComboNotes(showArchiveNotes_);
}

void FormKeywords::apply() {
    choice_.apply(columns_);
    accept();
}

void FormKeywords::keyPressEvent(QKeyEvent* event) {
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isEnter && (comboKeywords_->hasFocus() || comboNotes_->hasFocus())) {
        // Whoever ends a text with Enter does not mean to apply and close.
        event->accept();
        return;
    }
    QDialog::keyPressEvent(event);
}

}  // namespace keywords
