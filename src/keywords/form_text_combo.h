#pragma once

#include <QComboBox>
#include <string>
#include <vector>

class QStringListModel;

namespace keywords {

/// An editable combo box for very many texts. As one types it offers the texts that begin so,
/// whatever the case, and never changes what was typed. Every text is taken as it is: none is
/// trimmed, sorted or left out as known.
///
/// activated() is sent when the user chooses an item, of the list or of those that are offered;
/// typing is lineEdit()->textEdited().
class TextCombo : public QComboBox {
    Q_OBJECT

  public:
    explicit TextCombo(QWidget* parent);

    /// Takes these texts instead of those that are listed. What stands in the box stays there.
    void setTexts(const std::vector<std::string>& texts);
    /// What stands in the box.
    std::string text() const;

  private:
    void createCompleter();

    QStringListModel* model_;
};

}  // namespace keywords
