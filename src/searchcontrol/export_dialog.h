#pragma once

#include <QDialog>
#include <string>

#include "search/exporter.h"

class QCheckBox;
class QComboBox;
class QLineEdit;

namespace searchcontrol {

/// Asks what to export, in which format, and where to.
class ExportDialog : public QDialog {
    Q_OBJECT

  public:
    /// How many results there are, and how many of them are selected.
    ExportDialog(std::size_t results, std::size_t selected, QWidget* parent);

    search::ExportFormat format() const;
    QString file() const;
    bool onlySelected() const;
    bool onlyShownColumns() const;
    bool neutralisesFormulas() const;

    void accept() override;

  private:
    void fitToFormat();
    void browse();

    QComboBox* comboFormat_;
    QLineEdit* textFile_;
    QCheckBox* checkSelected_;
    QCheckBox* checkShownColumns_;
    QCheckBox* checkFormulas_;
};

}  // namespace searchcontrol
