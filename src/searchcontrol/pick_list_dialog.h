#pragma once

#include <QDialog>

class QTextBrowser;

namespace searchcontrol {

/// Shows a pick list, and prints it or writes it as a PDF.
class PickListDialog : public QDialog {
    Q_OBJECT

  public:
    PickListDialog(const QString& html, QWidget* parent);

    /// Writes the list as a PDF; false where that is not possible.
    bool writePdf(const QString& file);

  private:
    void print();
    void choosePdf();

    QTextBrowser* textList_;
};

}  // namespace searchcontrol
