#include "shell/help_window.h"

#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QScreen>
#include <QShortcut>
#include <QSplitter>
#include <QTextBrowser>
#include <QTextCursor>
#include <QTextTable>
#include <QUrl>
#include <QVBoxLayout>

#include "base/failure.h"
#include "controls/bring_to_front.h"
#include "controls/roomy_rows.h"

namespace shell {

namespace {

constexpr QSize firstSize(820, 600);
constexpr int contentsWidth = 230;
constexpr qint64 largestFile = 8 << 20;
constexpr int pageRole = Qt::UserRole;
constexpr int noPage = -1;
constexpr qreal cellPadding = 4;

/// Gives tables room and thin lines; as they come from Markdown they have neither.
void dressTables(QTextDocument& document, const QBrush& lines) {
    for (QTextFrame* frame : document.rootFrame()->childFrames()) {
        auto* table = qobject_cast<QTextTable*>(frame);
        if (table == nullptr) {
            continue;
        }
        QTextTableFormat format = table->format();
        format.setCellPadding(cellPadding);
        format.setCellSpacing(0);
        format.setBorderCollapse(true);
        format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
        format.setBorderBrush(lines);
        format.setTopMargin(2 * cellPadding);
        format.setBottomMargin(2 * cellPadding);
        table->setFormat(format);
    }
}

}  // namespace

HelpWindow::HelpWindow() {
    setObjectName("helpWindow");
    setWindowTitle("Verdolin Help");
    resize(firstSize.boundedTo(screen()->availableSize()));
    auto* halves = new QSplitter(this);
    halves->addWidget(createContents());
    halves->addWidget(createPage());
    halves->setStretchFactor(1, 1);
    halves->setSizes({contentsWidth, firstSize.width() - contentsWidth});
    halves->setChildrenCollapsible(false);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(halves);
    auto* toSearch = new QShortcut(QKeySequence::Find, this);
    connect(toSearch, &QShortcut::activated, inputSearch_, [this] {
        inputSearch_->setFocus();
        inputSearch_->selectAll();
    });
    auto* toClose = new QShortcut(Qt::Key_Escape, this);
    connect(toClose, &QShortcut::activated, this, &QWidget::close);
}

QWidget* HelpWindow::createContents() {
    auto* half = new QWidget(this);
    inputSearch_ = new QLineEdit(half);
    inputSearch_->setObjectName("inputSearch");
    inputSearch_->setAccessibleName("Search in the help");
    inputSearch_->setPlaceholderText("Search");
    inputSearch_->setClearButtonEnabled(true);
    connect(inputSearch_, &QLineEdit::textChanged, this, &HelpWindow::search);
    auto* labelContents = new QLabel("Contents", half);
    listContents_ = new QListWidget(half);
    listContents_->setObjectName("listContents");
    listContents_->setAccessibleName("Contents");
    listContents_->setItemDelegate(new controls::RoomyRows(listContents_));
    labelContents->setBuddy(listContents_);
    connect(listContents_, &QListWidget::currentItemChanged, this, [this](QListWidgetItem* item) {
        if (item != nullptr && item->data(pageRole).toInt() != noPage) {
            showPage(static_cast<std::size_t>(item->data(pageRole).toInt()));
        }
    });
    auto* layout = new QVBoxLayout(half);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(inputSearch_);
    layout->addWidget(labelContents);
    layout->addWidget(listContents_);
    return half;
}

QWidget* HelpWindow::createPage() {
    textPage_ = new QTextBrowser(this);
    textPage_->setObjectName("textPage");
    textPage_->setAccessibleName("Help page");
    textPage_->setOpenLinks(false);
    textPage_->document()->setDocumentMargin(textPage_->fontMetrics().height());
    connect(textPage_, &QTextBrowser::anchorClicked, this, &HelpWindow::follow);
    return textPage_;
}

void HelpWindow::setBook(HelpBook book) {
    book_ = std::move(book);
    inputSearch_->clear();
    search();
}

void HelpWindow::search() { listPages(book_.search(inputSearch_->text().toStdString())); }

void HelpWindow::listPages(const std::vector<std::size_t>& pages) {
    listContents_->clear();
    for (const std::size_t page : pages) {
        auto* item = new QListWidgetItem(QString::fromStdString(book_.pages()[page].title));
        item->setData(pageRole, static_cast<int>(page));
        listContents_->addItem(item);
    }
    if (pages.empty()) {
        auto* item = new QListWidgetItem("No page holds these words.", listContents_);
        item->setData(pageRole, noPage);
        item->setFlags(Qt::NoItemFlags);
        return;
    }
    listContents_->setCurrentRow(0);
}

void HelpWindow::showPage(std::size_t page) {
    textPage_->setMarkdown(QString::fromStdString(book_.pages()[page].text));
    dressTables(*textPage_->document(), palette().mid());
    markWords();
}

/// Marks what was searched for; the colours are those of a selection, which every theme has.
void HelpWindow::markWords() {
    QList<QTextEdit::ExtraSelection> marks;
    for (const QString& word : inputSearch_->text().split(' ', Qt::SkipEmptyParts)) {
        QTextCursor found = textPage_->document()->find(word, 0);
        for (; !found.isNull(); found = textPage_->document()->find(word, found)) {
            QTextCharFormat look;
            look.setBackground(palette().highlight());
            look.setForeground(palette().highlightedText());
            marks.append({found, look});
        }
    }
    textPage_->setExtraSelections(marks);
}

void HelpWindow::follow(const QUrl& link) {
    const std::optional<std::size_t> page = book_.pageOf(link.fragment().toStdString());
    if (!page) {
        return;
    }
    inputSearch_->clear();
    listContents_->setCurrentRow(static_cast<int>(*page));
}

void HelpDesk::showHelpFile(const std::string& path) {
    QFile file(QString::fromStdString(path));
    if (!file.open(QIODevice::ReadOnly)) {
        throw base::FileFailure(path + ": " + file.errorString().toStdString());
    }
    HelpBook book = HelpBook::parse(file.read(largestFile).toStdString());
    if (!window_) {
        window_ = std::make_unique<HelpWindow>();
    }
    window_->setBook(std::move(book));
    controls::bringToFront(*window_);
}

}  // namespace shell
