// Ends a run at its first failure, as --strict asks: for scripts that nobody watches.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "platform/Dialogs.h"
#include "platform/EventPump.h"

namespace korvane::app {

// A message box that tells of a failure: none with the information icon, and not the notice about a program folder
// without names of channels, which every new folder gives.
[[nodiscard]] bool isErrorBox(const platform::MessageBox& box);

// Hears the replies of the console, and is told of all message boxes as the display of a run that has none.
class StrictRun : public platform::Dialogs {
public:
    // `quit` ends the program. `complain` gets the reason, once, without a line end.
    StrictRun(platform::EventPump& pump, std::function<void()> quit, std::function<void(std::string_view)> complain);

    // A box may be shown by a handler at any moment: the program ends when the events that are due have run.
    void show(const platform::MessageBox& box) override;
    [[nodiscard]] std::string choose(const platform::FileDialog& /*dialog*/) override { return {}; }
    // One reply with its line end. After an error no further command is carried out.
    void hear(std::string_view reply);

    [[nodiscard]] bool failed() const { return failed_; }

private:
    // Whether this is the first failure.
    bool fail(const std::string& reason);

    std::function<void()> quit_;
    std::function<void(std::string_view)> complain_;
    std::unique_ptr<platform::Alarm> end_;
    platform::EventPump& pump_;
    int replies_ = 0;
    bool failed_ = false;
};

}  // namespace korvane::app
