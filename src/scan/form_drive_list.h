#pragma once

#include <QComboBox>
#include <QStringList>
#include <functional>
#include <string>
#include <vector>

namespace scan {

/// The list of drives. It asks for the drives of the moment when it is opened, whenever its
/// owner says so, and every now and then while it is visible. The chosen drive stays chosen, also
/// when it has gone: what the user has chosen changes by the user's hand only. Where another medium
/// is in it by now, choosing it once more is a change like that of the drive.
class DriveList : public QComboBox {
    Q_OBJECT

  public:
    explicit DriveList(QWidget* parent);

    /// Where the entries come from, in their order.
    void setSource(std::function<std::vector<std::string>()> source) {
        source_ = std::move(source);
    }
    /// What choosing the chosen drive once more does.
    void onChosenAgain(std::function<void()> action) { chosenAgain_ = std::move(action); }
    /// Lists the drives of this moment; where none was chosen, the first one is.
    void refresh();
    /// The chosen entry; empty when there is none.
    std::string currentEntry() const { return currentText().toStdString(); }

    void showPopup() override;

  private:
    QStringList present() const;

    std::function<std::vector<std::string>()> source_;
    std::function<void()> chosenAgain_;
    int indexWhenOpened_ = -1;
    bool otherMedium_ = false;  // than when the chosen drive was chosen
};

}  // namespace scan
