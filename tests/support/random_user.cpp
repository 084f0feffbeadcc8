#include "tests/support/random_user.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QTabBar>
#include <QTest>
#include <QTimerEvent>
#include <QTreeView>
#include <string_view>

namespace support {

namespace {

constexpr int weightOfButton = 3;
constexpr int weightOfRow = 4;
constexpr int weightOfMenuItem = 1;

std::string nameOf(const QObject& object) {
    const QString name = object.objectName();
    return name.isEmpty() ? object.metaObject()->className() : name.toStdString();
}

bool canBeUsed(const QWidget& control) {
    return control.isVisible() && control.isEnabled() && !control.visibleRegion().isEmpty();
}

std::vector<QPointer<QWidget>> windowsInReach() {
    if (QWidget* modal = QApplication::activeModalWidget()) {
        return {modal};
    }
    std::vector<QPointer<QWidget>> windows;
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && window->windowType() != Qt::Popup) {
            windows.emplace_back(window);
        }
    }
    return windows;
}

/// Of the program, not those of Qt's own controls.
bool isNamedItem(const QString& name) { return name.startsWith("mn") || name.startsWith("action"); }

QMenu* openMenu() { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }

void doubleClick(const QPointer<QWidget>& control, QPoint place) {
    QTest::mouseClick(control, Qt::LeftButton, {}, place);
    if (control) {
        QTest::mouseDClick(control, Qt::LeftButton, {}, place);
    }
    if (control) {
        QTest::mouseRelease(control, Qt::LeftButton, {}, place);
    }
}

void askForMenu(QWidget& control, QPoint place) {
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, control.mapToGlobal(place));
    QCoreApplication::sendEvent(&control, &event);
}

}  // namespace

void RandomUser::mayAlso(std::string name, int weight, std::function<void()> action) {
    others_.push_back({std::move(name), weight, std::move(action)});
}

int RandomUser::act(int count) {
    const int before = total_;
    remaining_ = count;
    arm();
    while (remaining_ > 0) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    QCoreApplication::processEvents();
    return total_ - before;
}

/// A new timer each time: one that is being handled is not due again before it has been.
void RandomUser::arm() { startTimer(0); }

bool RandomUser::mayAct() const {
    return remaining_ > 0 && (depth_ < deepest || QApplication::activeModalWidget() != nullptr);
}

void RandomUser::timerEvent(QTimerEvent* event) {
    killTimer(event->timerId());
    if (remaining_ == 0 && depth_ == 0) {
        return;
    }
    arm();
    if (!mayAct()) {
        dismissWhatWaits();
        return;
    }
    --remaining_;
    ++total_;
    nested_ += depth_ > 0 ? 1 : 0;
    ++depth_;
    doOneAction();
    --depth_;
}

/// A menu or a window that nobody answers would keep an operation from its end.
void RandomUser::dismissWhatWaits() {
    if (QMenu* menu = openMenu()) {
        menu->close();
        return;
    }
    QWidget* modal = QApplication::activeModalWidget();
    if (remaining_ == 0 && modal != nullptr) {
        modal->close();
    }
}

void RandomUser::doOneAction() {
    std::vector<Action> actions = possibleActions();
    if (actions.empty()) {
        return;
    }
    int total = 0;
    for (const Action& action : actions) {
        total += action.weight;
    }
    int drawn = number(total);
    for (const Action& action : actions) {
        drawn -= action.weight;
        if (drawn < 0) {
            ++done_[action.name];
            action.run();
            return;
        }
    }
}

std::vector<RandomUser::Action> RandomUser::possibleActions() {
    if (QMenu* menu = openMenu()) {
        const auto key = [menu](Qt::Key pressed) {
            return [menu, pressed] { QTest::keyClick(menu, pressed); };
        };
        return {{"next in menu", 2, key(Qt::Key_Down)},
                {"choose in menu", 1, key(Qt::Key_Return)},
                {"leave menu", 1, key(Qt::Key_Escape)}};
    }
    std::vector<Action> actions = others_;
    for (const QPointer<QWidget>& window : windowsInReach()) {
        addActionsOf(*window, actions);
    }
    std::erase_if(actions, [this](const Action& action) {
        const auto rare = rare_.find(action.name);
        return leftAlone_.contains(action.name) || (rare != rare_.end() && !chance(rare->second));
    });
    for (Action& action : actions) {
        const auto preferred = preferred_.find(action.name);
        action.weight *= preferred == preferred_.end() ? 1 : preferred->second;
    }
    return actions;
}

void RandomUser::addActionsOf(QWidget& window, std::vector<Action>& actions) {
    for (QWidget* control : window.findChildren<QWidget*>()) {
        if (control->window() == &window && canBeUsed(*control)) {
            addActionsOfControl(*control, actions);
        }
    }
    for (QAction* item : window.findChildren<QAction*>()) {
        if (item->isEnabled() && !item->isSeparator() && isNamedItem(item->objectName())) {
            actions.push_back({nameOf(*item), weightOfMenuItem, [item] { item->trigger(); }});
        }
    }
    addKeysOf(window, actions);
    actions.push_back({"close " + nameOf(window), 1, [closed = QPointer<QWidget>(&window)] {
                           if (closed) {
                               closed->close();
                           }
                       }});
}

/// Keys that mean something to whatever has the focus.
void RandomUser::addKeysOf(QWidget& window, std::vector<Action>& actions) {
    QWidget* focus = window.focusWidget() == nullptr ? &window : window.focusWidget();
    const auto add = [&](const char* name, Qt::Key key) {
        actions.push_back(
            {name + nameOf(window), 1, [focus, key] { QTest::keyClick(focus, key); }});
    };
    constexpr std::pair<const char*, Qt::Key> keys[] = {{"Tab in ", Qt::Key_Tab},
                                                        {"Enter in ", Qt::Key_Return},
                                                        {"Space in ", Qt::Key_Space},
                                                        {"Escape in ", Qt::Key_Escape}};
    const auto& [name, key] = keys[number(4)];
    add(name, key);
}

void RandomUser::addActionsOfControl(QWidget& control, std::vector<Action>& actions) {
    if (auto* button = qobject_cast<QAbstractButton*>(&control)) {
        actions.push_back({nameOf(control), weightOfButton,
                           [button] { QTest::mouseClick(button, Qt::LeftButton); }});
        actions.push_back({nameOf(control) + " twice", 1,
                           [button] { doubleClick(button, button->rect().center()); }});
    } else if (auto* tabs = qobject_cast<QTabBar*>(&control)) {
        const int tab = number(std::max(tabs->count(), 1));
        actions.push_back({nameOf(control), 1, [tabs, tab] {
                               QTest::mouseClick(tabs, Qt::LeftButton, {},
                                                 tabs->tabRect(tab).center());
                           }});
    } else if (auto* combo = qobject_cast<QComboBox*>(&control)) {
        const Qt::Key key = chance(2) ? Qt::Key_Down : Qt::Key_Up;
        actions.push_back(
            {nameOf(control), weightOfButton, [combo, key] { QTest::keyClick(combo, key); }});
    } else if (auto* line = qobject_cast<QLineEdit*>(&control)) {
        // Letters of which most names have some; and now and then all of them go again.
        constexpr std::string_view letters = "ade";
        const char letter = letters[static_cast<std::size_t>(number(3))];
        actions.push_back({nameOf(control), 1, [line, letter] { QTest::keyClick(line, letter); }});
        if (chance(2)) {
            actions.push_back({"empty " + nameOf(control), 1, [line] {
                                   line->selectAll();
                                   QTest::keyClick(line, Qt::Key_Delete);
                               }});
        }
    } else if (auto* header = qobject_cast<QHeaderView*>(&control)) {
        const int place = number(std::max(header->width(), 1));
        actions.push_back({nameOf(control), 1, [header, place] {
                               QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                                                 QPoint(place, header->height() / 2));
                           }});
    } else if (auto* view = qobject_cast<QAbstractItemView*>(&control)) {
        const QPoint place(10 + number(40), number(std::max(view->viewport()->height(), 1)));
        const Qt::KeyboardModifiers keys =
            chance(3) ? Qt::ControlModifier : Qt::KeyboardModifiers();
        actions.push_back({nameOf(control), weightOfRow, [view, place, keys] {
                               QTest::mouseClick(view->viewport(), Qt::LeftButton, keys, place);
                           }});
        actions.push_back({nameOf(control) + " twice", 1,
                           [view, place] { doubleClick(view->viewport(), place); }});
        actions.push_back({"menu of " + nameOf(control), 1,
                           [view, place] { askForMenu(*view->viewport(), place); }});
    }
}

}  // namespace support
