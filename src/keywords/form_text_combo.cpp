#include "keywords/form_text_combo.h"

#include <QCompleter>
#include <QLineEdit>
#include <QListView>
#include <QStringListModel>

namespace keywords {

namespace {

constexpr int visibleTexts = 12;
constexpr int shownCharacters = 30;

/// A list that measures one row and takes the others for as high.
QListView* createPopup(QWidget* parent) {
    auto* popup = new QListView(parent);
    popup->setUniformItemSizes(true);
    popup->setTextElideMode(Qt::ElideRight);
    popup->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    return popup;
}

}  // namespace

TextCombo::TextCombo(QWidget* parent) : QComboBox(parent), model_(new QStringListModel(this)) {
    setEditable(true);
    setInsertPolicy(NoInsert);
    setMaxVisibleItems(visibleTexts);
    // Any other policy would measure every text.
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(shownCharacters);
    setView(createPopup(this));
    setModel(model_);
    createCompleter();
    // Of itself the box takes a text that was typed and then left for the choice of the first item
    // of that text. Typing is not choosing.
    disconnect(lineEdit(), &QLineEdit::editingFinished, this, nullptr);
}

void TextCombo::createCompleter() {
    auto* completer = new QCompleter(model_, this);
    completer->setCompletionMode(QCompleter::PopupCompletion);
    completer->setCaseSensitivity(Qt::CaseInsensitive);
    completer->setMaxVisibleItems(visibleTexts);
    completer->setPopup(createPopup(nullptr));
    setCompleter(completer);
}

void TextCombo::setTexts(const std::vector<std::string>& texts) {
    QStringList list;
    list.reserve(static_cast<qsizetype>(texts.size()));
    for (const std::string& text : texts) {
        list.append(QString::fromStdString(text));
    }
    const QString typed = currentText();
    model_->setStringList(list);
    setCurrentIndex(-1);
    setEditText(typed);
}

std::string TextCombo::text() const { return currentText().toStdString(); }

}  // namespace keywords
