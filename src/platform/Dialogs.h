// Message boxes and file dialogs.
#pragma once

#include <string>
#include <string_view>

namespace korvane::platform {

enum class MessageIcon { None, Information, Exclamation, Critical };

[[nodiscard]] std::string_view nameOf(MessageIcon icon);

struct MessageBox {
    std::string title;
    std::string text;
    MessageIcon icon = MessageIcon::None;
};

struct FileDialog {
    enum class Kind { Open, Save };
    Kind kind = Kind::Open;
    std::string title;
    std::string filter;            // "All Files (*.txt)|*.txt"
    bool confirmOverwrite = true;  // saving over an existing file asks first
};

// A question of the windows themselves, which scripts never see.
struct Question {
    std::string title;
    std::string text;
    std::string yes, no;  // the buttons
    std::string stop;     // the box that says not to ask again
};

struct Answer {
    bool yes = true;
    bool stop = false;
};

class Dialogs {
public:
    virtual ~Dialogs() = default;

    // Without a user to answer it is yes. No handler of the program runs meanwhile.
    [[nodiscard]] virtual Answer ask(const Question& question) {
        static_cast<void>(question);
        return {};
    }

    // Shows the box and returns when the user has closed it. No handler of the program runs meanwhile.
    virtual void show(const MessageBox& box) = 0;
    // The chosen path, empty when the user cancels.
    [[nodiscard]] virtual std::string choose(const FileDialog& dialog) = 0;
};

}  // namespace korvane::platform
