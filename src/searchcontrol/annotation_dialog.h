#pragma once

#include <QDialog>
#include <array>

#include "searchcontrol/annotation_wish.h"

class QComboBox;
class QLineEdit;

namespace searchcontrol {

/// Asks for the keywords and notes of chosen entries: of one entry its texts as they are, of
/// several what is to be set or added in all of them.
class AnnotationDialog : public QDialog {
    Q_OBJECT

  public:
    AnnotationDialog(const ChosenEntries& chosen, QWidget* parent);

    AnnotationWish wish() const;

  private:
    struct Field {
        QComboBox* kind;
        QLineEdit* text;
    };

    Field createField(const char* name, const QString& title, const QString& now, bool isOne);
    static TextWish wishOf(const Field& field);

    std::array<Field, 3> fields_{};
};

}  // namespace searchcontrol
