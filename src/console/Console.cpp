#include "console/Console.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <utility>

#include "console/ConsoleError.h"
#include "core/TextEncoding.h"

namespace korvane::console {

namespace {

constexpr std::size_t kAnyNumber = std::numeric_limits<std::size_t>::max();
constexpr std::string_view kBlanks = " \t\r";

void requireText(std::string_view line) {
    if (line.find('\0') != std::string_view::npos || !core::isUtf8(line)) {
        throw ConsoleError("the line is no text in UTF-8");
    }
}

std::string withoutLineBreaks(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](char character) { return static_cast<unsigned char>(character) < 0x20; }, ' ');
    return text;
}

}  // namespace

Console::Console(ConsoleContext context)
    : context_(std::move(context)), finder_(context_.machine.windows), watches_(context_.machine.pump) {}

constexpr Console::Command Console::kCommands[] = {
    {"get", "PATH", 1, 1, &Console::get},
    {"set", "PATH VALUE", 2, 2, &Console::set},
    {"click", "CONTROL", 1, 1, &Console::click},
    {"choose", "CONTROL N", 2, 2, &Console::choose},
    {"column", "CONTROL N", 2, 2, &Console::column},
    {"type", "CONTROL TEXT", 2, 2, &Console::type},
    {"key", "CONTROL CODE [SHIFT]", 2, 3, &Console::key},
    {"keyup", "CONTROL CODE [SHIFT]", 2, 3, &Console::keyup},
    {"mouse", "CONTROL [SHIFT]", 1, 2, &Console::mouse},
    {"focus", "CONTROL or WINDOW", 1, 1, &Console::focus},
    {"close", "WINDOW", 1, 1, &Console::close},
    {"resize", "WINDOW WIDTH HEIGHT", 3, 3, &Console::resize},
    {"file", "PATH or -", 1, 1, &Console::file},
    {"dialogs", "", 0, 0, &Console::dialogs},
    {"messages", "", 0, 0, &Console::messages},
    {"windows", "", 0, 0, &Console::windows},
    {"controls", "WINDOW", 1, 1, &Console::controls},
    {"wait", "MS", 1, 1, &Console::wait},
    {"watch", "PATH", 1, 1, &Console::watch},
    {"unwatch", "PATH", 1, 1, &Console::unwatch},
    {"changes", "", 0, 0, &Console::changes},
    {"at", "MS COMMAND ...", 2, kAnyNumber, &Console::at},
    {"sent", "[times]", 0, 1, &Console::sent},
    {"receive", "HEX", 1, kAnyNumber, &Console::receive},
    {"ecu", "[KEY VALUE]", 0, 2, &Console::ecu},
    {"call", "NAME ARGUMENTS", 1, kAnyNumber, &Console::call},
    {"screenshot", "WINDOW FILE.png", 2, 2, &Console::screenshot},
    {"now", "", 0, 0, &Console::now},
    {"help", "", 0, 0, &Console::help},
    {"quit", "", 0, 0, &Console::quitCommand},
};

const Console::Command& Console::commandNamed(std::string_view name) {
    const auto* const found = std::find_if(std::begin(kCommands), std::end(kCommands),
                                           [&](const Command& each) { return each.name == name; });
    if (found == std::end(kCommands)) {
        throw ConsoleError("no command is named " + shown(name) + "; help lists them all");
    }
    return *found;
}

Console::Answer Console::help(Arguments&) {
    Json::Array out;
    for (const auto& command : kCommands) {
        out.emplace_back(command.name);
    }
    return out;
}

std::optional<std::string> Console::execute(std::string_view line) {
    const auto begin = line.find_first_not_of(kBlanks);
    if (begin == std::string_view::npos || line[begin] == '#') {
        return {};
    }
    if (ended()) {
        return "error the program has ended";
    }
    if (std::exchange(delayedDone_, false)) {
        std::erase_if(delayed_, [](const Delayed& each) { return each.done; });
    }
    return reply(line);
}

void Console::whenEnded(std::function<void()> call) {
    constexpr platform::Micros kFloodPatience = 200 * platform::kMicrosPerMilli;
    constexpr platform::Micros kPatience = 3'600'000 * platform::kMicrosPerMilli;
    context_.machine.pump.whenSettled(std::move(call), context_.tap.mayFlood() ? kFloodPatience : kPatience);
}

std::string Console::reply(std::string_view line) {
    try {
        const Answer answer = run(line);
        return answer ? "ok " + writeJson(*answer) : "ok";
    } catch (const std::exception& error) {
        return withoutLineBreaks(std::string("error ") + error.what());
    }
}

Console::Answer Console::run(std::string_view line) {
    line = line.substr(0, line.find_last_not_of(kBlanks) + 1);
    requireText(line);
    const auto begin = line.find_first_not_of(kBlanks);
    const auto end = std::min(line.find_first_of(kBlanks, begin), line.size());
    const Command& command = commandNamed(line.substr(begin, end - begin));
    const auto rest = line.substr(end);
    Arguments arguments(rest, splitWords(rest));
    if (arguments.left() < command.least || arguments.left() > command.most) {
        throw ConsoleError(std::string(command.name) +
                           (command.usage.empty() ? " takes nothing" : " takes " + std::string(command.usage)));
    }
    return (this->*command.handler)(arguments);
}

void Console::quit() {
    if (quitting_ || ended()) {
        return;
    }
    quitting_ = true;
    context_.quit();
    quitDone_ = true;
}

bool Console::ended() const {
    return quitDone_ || (context_.programEnded && context_.programEnded());
}

controls::Window& Console::nextWindow(Arguments& arguments) const {
    return finder_.window(parsePath(arguments.text()));
}

controls::Control& Console::nextControl(Arguments& arguments) const {
    return finder_.control(parsePath(arguments.text()));
}

std::string Console::pathOf(const controls::Control& control) const {
    return finder_.nameOf(control.window()) + '.' + control.path();
}

void Console::requireReach(const controls::Control& control) const {
    if (!control.inSight()) {
        throw ConsoleError(pathOf(control) + " is out of sight");
    }
    if (!control.usable()) {
        throw ConsoleError(pathOf(control) + " is disabled");
    }
}

void Console::requireFocusable(const controls::Control& control) const {
    if (!control.canFocus()) {
        cannot(control, "can't have the focus");
    }
    requireReach(control);
}

void Console::cannot(const controls::Control& control, std::string_view what) const {
    throw ConsoleError(pathOf(control) + " is " + withArticle(control.kind()) + " and " + std::string(what));
}

Target Console::targetOf(const Path& path) const {
    if (auto property = context_.names.property(path)) {
        return *std::move(property);
    }
    if (!finder_.knowsWindow(path)) {
        throw ConsoleError(context_.names.missing(path));
    }
    return finder_.target(path);
}

}  // namespace korvane::console
