#pragma once

#include <QWidget>
#include <memory>

#include "shell/common_dialog.h"
#include "shell/help_book.h"

class QLineEdit;
class QListWidget;
class QListWidgetItem;
class QTextBrowser;
class QUrl;

namespace shell {

/// Shows a help book: its table of contents, which a search narrows down to the pages that hold the
/// words, and the page that was chosen.
class HelpWindow : public QWidget {
  public:
    HelpWindow();

    /// Shows another book, from its first page on.
    void setBook(HelpBook book);

  private:
    QWidget* createContents();
    QWidget* createPage();
    void search();
    void listPages(const std::vector<std::size_t>& pages);
    void showPage(std::size_t page);
    void markWords();
    void follow(const QUrl& link);

    HelpBook book_;
    QLineEdit* inputSearch_ = nullptr;
    QListWidget* listContents_ = nullptr;
    QTextBrowser* textPage_ = nullptr;
};

/// Reads help files and shows them in one window of its own.
class HelpDesk : public HelpViewer {
  public:
    /// base::FileFailure when the file cannot be read or is no help file.
    void showHelpFile(const std::string& path) override;
    /// Null until help was shown for the first time.
    HelpWindow* window() { return window_.get(); }

  private:
    std::unique_ptr<HelpWindow> window_;
};

}  // namespace shell
