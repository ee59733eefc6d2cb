// Executes the commands by which users' scripts drive the program. docs/console.md describes them.
#pragma once

#include <cstdint>
#include <list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "console/ConsoleContext.h"
#include "console/Watches.h"
#include "console/names/Finder.h"
#include "console/text/Arguments.h"

namespace korvane::console {

class Console {
public:
    explicit Console(ConsoleContext context);

    // Executes one line and returns its reply without a line end: "ok", "ok VALUE" or "error TEXT"; nothing for a blank
    // line or a comment. The command has ended when the pump has settled. Never throws.
    [[nodiscard]] std::optional<std::string> execute(std::string_view line);
    // Calls when the command has ended: when the machine's events have settled. A line that may flood is not waited for
    // longer than a moment.
    void whenEnded(std::function<void()> call);

    // Ends the program as `quit` does, if it has not ended.
    void quit();
    // Whether the program has ended: nothing more is to be executed then.
    [[nodiscard]] bool ended() const;

private:
    using Answer = std::optional<Json>;
    struct Command {
        std::string_view name;
        std::string_view usage;  // what follows the name
        std::size_t least;       // words
        std::size_t most;
        Answer (Console::*handler)(Arguments&);
    };
    static const Command kCommands[];
    struct Delayed {
        std::string command;
        std::unique_ptr<platform::Alarm> alarm;
        bool done = false;
    };

    static const Command& commandNamed(std::string_view name);

    [[nodiscard]] std::string reply(std::string_view line);
    Answer run(std::string_view line);
    void runDelayed(Delayed& delayed);

    Answer get(Arguments& arguments);
    Answer set(Arguments& arguments);
    Answer click(Arguments& arguments);
    Answer choose(Arguments& arguments);
    Answer column(Arguments& arguments);
    Answer type(Arguments& arguments);
    Answer key(Arguments& arguments);
    Answer keyup(Arguments& arguments);
    Answer mouse(Arguments& arguments);
    Answer focus(Arguments& arguments);
    Answer close(Arguments& arguments);
    Answer resize(Arguments& arguments);
    Answer file(Arguments& arguments);
    Answer dialogs(Arguments& arguments);
    Answer messages(Arguments& arguments);
    Answer windows(Arguments& arguments);
    Answer controls(Arguments& arguments);
    Answer wait(Arguments& arguments);
    Answer watch(Arguments& arguments);
    Answer unwatch(Arguments& arguments);
    Answer changes(Arguments& arguments);
    Answer at(Arguments& arguments);
    Answer sent(Arguments& arguments);
    Answer receive(Arguments& arguments);
    Answer ecu(Arguments& arguments);
    Answer call(Arguments& arguments);
    Answer screenshot(Arguments& arguments);
    Answer now(Arguments& arguments);
    Answer help(Arguments& arguments);
    Answer quitCommand(Arguments& arguments);

    [[nodiscard]] controls::Window& nextWindow(Arguments& arguments) const;
    [[nodiscard]] controls::Control& nextControl(Arguments& arguments) const;
    [[nodiscard]] std::string pathOf(const controls::Control& control) const;
    // Each raises ConsoleError if a user could not do it now.
    void requireReach(const controls::Control& control) const;
    void requireFocusable(const controls::Control& control) const;
    [[noreturn]] void cannot(const controls::Control& control, std::string_view what) const;
    [[nodiscard]] Target targetOf(const Path& path) const;

    ConsoleContext context_;
    Finder finder_;
    Watches watches_;
    std::list<Delayed> delayed_;
    bool delayedDone_ = false;
    int delayedDepth_ = 0;  // delayed commands that run inside each other now
    bool quitting_ = false;
    bool quitDone_ = false;
};

}  // namespace korvane::console
