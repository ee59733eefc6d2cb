// From raw input to commands and back to replies.
#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "console/Console.h"
#include "controls/Control.h"

namespace korvane::console {

// Input may come in any pieces and at any moment, also while a command waits: commands run one after the other, in
// order. Each reply goes to the sink, with its line end, when the pump has settled behind its command, and before the
// next command begins.
class ConsoleSession {
public:
    using Sink = std::function<void(std::string_view)>;

    // A line longer than this gets an error reply and is not executed.
    static constexpr std::size_t kLongestLine = std::size_t{1} << 20U;

    ConsoleSession(Console& console, Sink sink) : console_(console), sink_(std::move(sink)) {}

    // Takes bytes of input and executes the lines that they complete.
    void feed(std::string_view bytes);
    // No more input comes: the rest is executed, and then the program quits.
    void endOfInput();
    // The program has ended: a command that was carried out and has no reply yet gets it.
    void endOfProgram() { answer(); }
    // Called whenever all that was fed is answered, until the end of input. A caller that feeds more only then keeps no
    // more than one piece of input in memory.
    controls::Event<> Wanting;

private:
    struct Line {
        std::string text;
        bool tooLong = false;
        bool comment = false;  // of one that is too long
    };

    void append(std::string_view part);
    void endLine();
    void executeAll();
    void execute(const Line& line);
    void answer();
    void goOn();

    Console& console_;
    Sink sink_;
    Line open_;
    std::deque<Line> waiting_;
    std::optional<std::string> unanswered_;  // the reply of the command under way
    bool ended_ = false;                     // the input
    bool executing_ = false;                 // a command that has not been answered
    bool stepping_ = false;                  // executeAll() goes on by itself
};

}  // namespace korvane::console
