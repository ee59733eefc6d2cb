// A drop-down list that calls a function before it opens and ignores the wheel while it has no focus.
#pragma once

#include <QComboBox>

#include <functional>

namespace korvane::views {

class DropDown : public QComboBox {
public:
    explicit DropDown(QWidget* parent);

    // Called before the list drops down.
    void onOpening(std::function<void()> opening) { opening_ = std::move(opening); }

    void showPopup() override;

protected:
    void wheelEvent(QWheelEvent* event) override;

private:
    std::function<void()> opening_;
};

}  // namespace korvane::views
