// The open frmBigText windows.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace korvane::live {

class FrmBigText;

// Each under the text of its window handle, in order of opening. The program holds it, and the windows enter and leave
// it by themselves.
class BigTexts {
public:
    // A handle that no window has had before.
    [[nodiscard]] int newHandle() { return ++lastHandle_; }

    void add(FrmBigText& window);
    void remove(const FrmBigText& window);

    // Null when no open window has this handle.
    [[nodiscard]] FrmBigText* find(std::string_view handle) const;
    [[nodiscard]] std::vector<FrmBigText*> all() const;

private:
    std::vector<std::pair<std::string, FrmBigText*>> windows_;
    int lastHandle_ = 0;
};

}  // namespace korvane::live
