// A drop-down list that calls a function before it opens and ignores the wheel while it has no focus. A choice that is
// too long for it ends in dots, and the tool-tip has it whole.
#pragma once

#include <QComboBox>
#include <QStyleOptionComboBox>

#include <functional>

namespace korvane::views {

class DropDown : public QComboBox {
public:
    explicit DropDown(QWidget* parent);

    // Called before the list drops down.
    void onOpening(std::function<void()> opening) { opening_ = std::move(opening); }

    // While the list is closed, keys that would pick another item and the wheel pick nothing: the keys open it.
    void setPicksInList() { picksInList_ = true; }

    void showPopup() override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    [[nodiscard]] QString shownText(const QStyleOptionComboBox& option) const;

    std::function<void()> opening_;
    bool picksInList_ = false;
};

}  // namespace korvane::views
