#pragma once

#include <QEvent>
#include <QObject>
#include <QPointer>
#include <QWidget>
#include <cstdint>
#include <functional>
#include <map>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace support {

/// Somebody who clicks and types at random, and who never waits: whenever events are handled, in
/// the middle of a scan, a save or a reading as well, the next action comes. While a window is
/// modal only that one is used, and while a menu is open only the menu, as for any user.
///
/// Actions that are set off while another one runs may nest as deeply as `deepest`; there the
/// user waits, so that every operation comes to its end, and only answers modal windows and
/// closes menus.
class RandomUser : public QObject {
  public:
    static constexpr int deepest = 5;

    explicit RandomUser(std::uint32_t seed) : random_(seed) {}

    /// Something else that may happen at any time, as often as `weight` actions on a control.
    void mayAlso(std::string name, int weight, std::function<void()> action);

    /// Only one time in `in` is this control, menu item or close box (as "close " and the window's
    /// name) thought of at all.
    void doesRarely(const std::string& name, int in) { rare_[name] = in; }

    /// This control or menu item is never used.
    void leavesAlone(const std::string& name) { leftAlone_.insert(name); }

    /// This control or menu item is `factor` times as likely as others of its kind.
    void prefers(const std::string& name, int factor) { preferred_[name] = factor; }

    /// Acts until `count` more actions are done or stop() is called, and every operation set off
    /// has ended. How many actions these were.
    int act(int count);
    /// No further action.
    void stop() { remaining_ = 0; }
    bool isActing() const { return remaining_ > 0; }

    bool chance(int in) { return number(in) == 0; }
    /// 0 to `end` - 1.
    int number(int end) { return std::uniform_int_distribution<int>(0, end - 1)(random_); }

    /// How often each action was done, by the name of its control.
    const std::map<std::string, int>& done() const { return done_; }
    /// How many actions came while another one was running.
    int nested() const { return nested_; }

  protected:
    void timerEvent(QTimerEvent* event) override;

  private:
    struct Action {
        std::string name;
        int weight = 1;
        std::function<void()> run;
    };

    void arm();
    void doOneAction();
    void dismissWhatWaits();
    bool mayAct() const;
    std::vector<Action> possibleActions();
    void addActionsOf(QWidget& window, std::vector<Action>& actions);
    void addKeysOf(QWidget& window, std::vector<Action>& actions);
    void addActionsOfControl(QWidget& control, std::vector<Action>& actions);

    std::mt19937 random_;
    std::vector<Action> others_;
    std::map<std::string, int> rare_;
    std::set<std::string> leftAlone_;
    std::map<std::string, int> preferred_;
    std::map<std::string, int> done_;
    int remaining_ = 0;
    int total_ = 0;
    int depth_ = 0;
    int nested_ = 0;
};

}  // namespace support
