#include "searchcontrol/query_line.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QKeyEvent>
#include <QPainter>
#include <QStandardItemModel>
#include <QStyle>

#include "searchcontrol/query_history.h"
#include "searchcontrol/texts.h"

namespace searchcontrol {

namespace {

constexpr std::size_t mostCompletions = 40;

}  // namespace

QueryLine::QueryLine(QueryHistory& history, QWidget* parent)
    : QLineEdit(parent),
      history_(history),
      completer_(new QCompleter(this)),
      completionModel_(new QStandardItemModel(this)) {
    setObjectName("queryLine");
    setAccessibleName("Search for");
    setPlaceholderText("Type a few letters of a name or a path; F1 explains more");
    setClearButtonEnabled(true);
    completer_->setModel(completionModel_);
    completer_->setWidget(this);
    completer_->setCompletionMode(QCompleter::UnfilteredPopupCompletion);
    completer_->popup()->setObjectName("listCompletions");
    completer_->popup()->setAccessibleName("Completions");
    connect(completer_, qOverload<const QModelIndex&>(&QCompleter::activated), this,
            [this](const QModelIndex& index) {
                if (static_cast<std::size_t>(index.row()) < shown_.size()) {
                    insert(shown_[static_cast<std::size_t>(index.row())]);
                }
            });
    connect(this, &QLineEdit::textEdited, this, [this] {
        historyPlace_ = -1;
        if (completer_->popup()->isVisible()) {
            showCompletions();
        }
    });
    connect(this, &QLineEdit::textChanged, this, &QueryLine::propose);
    connect(this, &QLineEdit::cursorPositionChanged, this, &QueryLine::propose);
}

void QueryLine::setIndex(std::shared_ptr<const search::Index> index) {
    index_ = std::move(index);
    propose();
}

void QueryLine::setQuery(const std::string& query) {
    const QString wanted = searchcontrol::text(query);
    if (wanted != text()) {
        selectAll();
        insertText(wanted);
    }
}

void QueryLine::insertText(const QString& wanted) {
    if (wanted.isEmpty()) {
        del();
    } else {
        QLineEdit::insert(wanted);
    }
}

void QueryLine::type(const QString& text) {
    deselect();
    end(false);
    if (text == "\b") {
        backspace();
    } else {
        QLineEdit::insert(text);
    }
}

void QueryLine::remember() { history_.add(text()); }

/// Positions of the engine are bytes, those of the line UTF-16 units.
std::vector<search::Completion> QueryLine::completions(std::size_t most) const {
    if (index_ == nullptr || cursorPosition() == 0) {
        return {};
    }
    const std::string before = text().left(cursorPosition()).toStdString();
    return search::completionsAt(*index_, before, before.size(), most);
}

void QueryLine::propose() {
    proposal_.clear();
    if (cursorPosition() == text().size() && !text().endsWith(' ') && hasFocus()) {
        const auto found = completions(1);
        if (!found.empty()) {
            const std::string typed = query().substr(found[0].start, found[0].length);
            const QString all = searchcontrol::text(found[0].text);
            const QString part = searchcontrol::text(typed);
            if (all.startsWith(part, Qt::CaseInsensitive) && part.size() > 1) {
                proposal_ = all.mid(part.size());
            }
        }
    }
    update();
}

void QueryLine::acceptProposal() {
    const auto found = completions(1);
    if (!found.empty()) {
        insert(found[0]);
    }
}

void QueryLine::insert(const search::Completion& completion) {
    const std::string before = text().left(cursorPosition()).toStdString();
    const std::size_t end = std::min(before.size(), completion.start + completion.length);
    const std::size_t start = std::min(end, completion.start);
    const auto units = [&](std::size_t first, std::size_t count) {
        return static_cast<int>(
            searchcontrol::text(std::string_view(before).substr(first, count)).size());
    };
    setSelection(units(0, start), units(start, end - start));
    QLineEdit::insert(searchcontrol::text(completion.text));
}

void QueryLine::showCompletions() {
    shown_ = completions(mostCompletions);
    completionModel_->clear();
    for (const search::Completion& each : shown_) {
        const QString meaning =
            each.meaning.empty() ? QString() : "   " + searchcontrol::text(each.meaning);
        completionModel_->appendRow(new QStandardItem(searchcontrol::text(each.text) + meaning));
    }
    if (shown_.empty()) {
        completer_->popup()->hide();
    } else {
        completer_->complete();
    }
}

void QueryLine::goThroughHistory(int step) {
    if (historyPlace_ < 0) {
        typedBeforeHistory_ = text();
    }
    const int place = std::clamp(historyPlace_ + step, -1, history_.size() - 1);
    if (place == historyPlace_) {
        return;
    }
    setQuery((place < 0 ? typedBeforeHistory_ : history_.at(place)).toStdString());
    historyPlace_ = place;
}

/// Some of the window's keys are editing keys of lines as well; here they are the window's.
bool QueryLine::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride) {
        const auto* key = static_cast<QKeyEvent*>(event);
        const bool isWindows = key->key() == Qt::Key_E || key->key() == Qt::Key_K ||
                               key->key() == Qt::Key_L || key->key() == Qt::Key_D ||
                               key->key() == Qt::Key_P;
        if (key->modifiers() == Qt::ControlModifier && isWindows) {
            event->ignore();
            return false;
        }
    }
    return QLineEdit::event(event);
}

void QueryLine::keyPressEvent(QKeyEvent* event) {
    const bool isAlt = event->modifiers() == Qt::AltModifier;
    const bool isPlain = (event->modifiers() & ~Qt::KeypadModifier) == 0;
    if (event->key() == Qt::Key_Up && isAlt) {
        goThroughHistory(1);
    } else if (event->key() == Qt::Key_Down && isAlt) {
        goThroughHistory(-1);
    } else if (event->key() == Qt::Key_Down && isPlain) {
        remember();
        emit leftDownwards();
    } else if (event->key() == Qt::Key_Space && event->modifiers() == Qt::ControlModifier) {
        showCompletions();
    } else if (event->key() == Qt::Key_Right && isPlain && !proposal_.isEmpty()) {
        acceptProposal();
    } else if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && isPlain) {
        remember();
        emit entered();
    } else if (event->key() == Qt::Key_Escape) {
        event->ignore();
    } else {
        QLineEdit::keyPressEvent(event);
    }
}

void QueryLine::paintEvent(QPaintEvent* event) {
    QLineEdit::paintEvent(event);
    if (proposal_.isEmpty() || !hasFocus()) {
        return;
    }
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::PlaceholderText));
    const QRect cursor = cursorRect();
    const QRect place(cursor.center().x() + 1, 0, width() - cursor.center().x(), height());
    painter.drawText(place, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine, proposal_);
}

}  // namespace searchcontrol
