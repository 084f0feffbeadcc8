#pragma once

#include <QDialog>

#include "keywords/keyword_choice.h"

class QCheckBox;
class QGroupBox;
class QPushButton;

namespace base {
class EventBoundary;
}

namespace keywords {

class InfoLabel;
class TextCombo;

/// The window in which the user composes keywords and notes and gives them to the records that are
/// selected in the main window's list. Modal, and made anew each time. It shows and asks; what is
/// known, selected and applied is KeywordChoice's. Cancel, the close box and Escape leave the
/// records as they were; what was added to the known texts stays known.
class FormKeywords : public QDialog {
    Q_OBJECT

  public:
    /// `owner` is the main window; the others must outlive this.
    FormKeywords(base::ProgramState& state, RecordColumns& columns, base::EventBoundary& boundary,
                 QWidget* owner);

    /// To be called once, before the window is shown.
    void load();

    /// Lists the known keywords: all of them, or those that were added in this run.
    void fillComboKeywords(bool showAll);
    void fillComboNotes(bool showAll);
    /// Says what was selected, which may be applied from now on.
    void updateInfo();

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    QGroupBox* createKeywordsFrame();
    QGroupBox* createNotesFrame();
    void createInfo();
    TextCombo* createCombo(const char* name, const QString& accessibleName, const QString& hint,
                           QWidget* parent);
    /// The button runs that operation when it is clicked, and does nothing without one.
    QPushButton* createButton(const char* name, const QString& caption,
                              void (FormKeywords::*operation)(), QWidget* parent);
    /// The box runs that operation whenever it is checked or unchecked, by the user or not.
    QCheckBox* createCheck(const char* name, const QString& caption,
                           void (FormKeywords::*operation)(), QWidget* parent);
    void connectCombos();

    void addKeyword();
    void selectKeyword();
    void clickArchiveKeywords();
    void addNote();
    void selectNote();
    void clickNotes1();
    void clickNotes2();
    void clickArchiveNotes();
    void keepOneChecked(QCheckBox& clicked);
    void apply();

    KeywordChoice choice_;
    RecordColumns& columns_;
    base::EventBoundary& boundary_;
    bool showArchiveKeywords_ = false;
    bool showArchiveNotes_ = false;

    TextCombo* comboKeywords_ = nullptr;
    QPushButton* btnKeyAdd_ = nullptr;
    QPushButton* btnKeyDelete_ = nullptr;
    QPushButton* btnSelectKW_ = nullptr;
    QCheckBox* checkArchiveKW_ = nullptr;
    TextCombo* comboNotes_ = nullptr;
    QPushButton* btnNoteAdd_ = nullptr;
    QPushButton* btnDeleteNotes_ = nullptr;
    QPushButton* btnSelectNote_ = nullptr;
    QCheckBox* checkNotes1_ = nullptr;
    QCheckBox* checkNotes2_ = nullptr;
    QCheckBox* checkArchiveNote_ = nullptr;
    InfoLabel* displayInfo_ = nullptr;
    QPushButton* btnApply_ = nullptr;
};

}  // namespace keywords
