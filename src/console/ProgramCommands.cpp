// Continues Console: the commands that read and set values, and those for time, files, messages and the line.
#include <limits>

#include "console/Console.h"
#include "console/ConsoleError.h"
#include "console/text/Hex.h"

namespace korvane::console {

namespace {

constexpr int kLongest = std::numeric_limits<int>::max();
constexpr std::size_t kMostDelayed = 10'000;
constexpr int kDeepestDelayed = 100;  // each may hold a wait on the stack

Json dialogJson(const platform::FileDialog& dialog) {
    const bool opens = dialog.kind == platform::FileDialog::Kind::Open;
    return Json::Object{{"kind", opens ? "open" : "save"}, {"title", dialog.title}, {"filter", dialog.filter}};
}

Json messageJson(const platform::MessageBox& box) {
    return Json::Object{{"title", box.title}, {"text", box.text}, {"icon", platform::nameOf(box.icon)}};
}

// The cells that have been written at all, by their addresses.
Json writesByCell(const std::vector<std::uint32_t>& writes) {
    Json::Object cells;
    for (std::size_t address = 0; address < writes.size(); ++address) {
        if (writes[address] != 0) {
            cells.push_back({std::to_string(address), writes[address]});
        }
    }
    return cells;
}

void requireSuccess(const std::string& failure) {
    if (!failure.empty()) {
        throw ConsoleError(failure);
    }
}

}  // namespace

Console::Answer Console::get(Arguments& arguments) {
    const Path path = parsePath(arguments.text());
    if (auto value = context_.names.get(path)) {
        return value;
    }
    return readProperty(targetOf(path));
}

Console::Answer Console::set(Arguments& arguments) {
    const Path path = parsePath(arguments.text());
    const Json value = arguments.value();
    if (context_.names.set(path, value)) {
        return {};
    }
    assignProperty(targetOf(path), value);
    return {};
}

Console::Answer Console::file(Arguments& arguments) {
    context_.dialogs.answerFile(arguments.takeKeyword("-") ? std::string() : arguments.text());
    return {};
}

Console::Answer Console::dialogs(Arguments&) {
    Json::Array out;
    for (const auto& dialog : context_.dialogs.takeFileDialogs()) {
        out.push_back(dialogJson(dialog));
    }
    return out;
}

Console::Answer Console::messages(Arguments&) {
    Json::Array out;
    for (const auto& box : context_.dialogs.takeMessages()) {
        out.push_back(messageJson(box));
    }
    return out;
}

Console::Answer Console::wait(Arguments& arguments) {
    context_.machine.pump.wait(arguments.number(0, kLongest));
    return {};
}

Console::Answer Console::watch(Arguments& arguments) {
    const Path path = parsePath(arguments.text());
    if (context_.names.get(path)) {
        throw ConsoleError(shown(path.text) + " is no property of a window or control and can't be watched");
    }
    watches_.add(path.text, targetOf(path));
    return {};
}

Console::Answer Console::unwatch(Arguments& arguments) {
    const std::string name = arguments.text();
    if (!watches_.remove(name)) {
        throw ConsoleError(shown(name) + " is not watched");
    }
    return {};
}

Console::Answer Console::changes(Arguments&) {
    return watches_.takeChanges();
}

Console::Answer Console::at(Arguments& arguments) {
    const int delay = arguments.number(0, kLongest);
    if (delayed_.size() >= kMostDelayed) {
        throw ConsoleError("too many commands are waiting");
    }
    auto& pump = context_.machine.pump;
    auto& delayed = delayed_.emplace_back();
    delayed.command = arguments.rest();
    delayed.alarm = pump.makeAlarm([this, &delayed] { runDelayed(delayed); });
    delayed.alarm->callAt(pump.now() + delay * platform::kMicrosPerMilli);
    return {};
}

void Console::runDelayed(Delayed& delayed) {
    if (!ended()) {
        ++delayedDepth_;
        const auto answer = delayedDepth_ <= kDeepestDelayed ? reply(delayed.command)
                                                             : "error too many commands wait inside each other";
        --delayedDepth_;
        if (answer.starts_with("error ")) {
            context_.errors << answer << std::endl;
        }
    }
    delayed.done = true;
    delayedDone_ = true;
}

Console::Answer Console::sent(Arguments& arguments) {
    if (arguments.empty()) {
        return hexText(context_.tap.takeSentBytes());
    }
    if (!arguments.takeKeyword("times")) {
        throw ConsoleError("sent takes nothing or the word times");
    }
    Json::Array out;
    for (const auto& write : context_.tap.takeSent()) {
        out.emplace_back(Json::Array{write.milliseconds, hexText(write.bytes)});
    }
    return out;
}

Console::Answer Console::receive(Arguments& arguments) {
    std::string digits;
    while (!arguments.empty()) {
        digits += arguments.text();
    }
    const auto bytes = bytesFromHex(digits);
    if (!context_.tap.inject(bytes)) {
        throw ConsoleError("bytes can't be put on a real line (receive needs --ecu none)");
    }
    return {};
}

Console::Answer Console::ecu(Arguments& arguments) {
    if (context_.ecu == nullptr) {
        throw ConsoleError("there is no virtual ECU (start with --ecu KEY=VALUE)");
    }
    if (arguments.empty()) {
        return Json::Object{{"sparks", context_.ecu->sparksFired()}};
    }
    const bool alone = arguments.left() == 1;
    const std::string key = arguments.text();
    if (alone && key == "wear") {
        return writesByCell(context_.ecu->writes());
    }
    if (alone) {
        throw ConsoleError("ecu takes a KEY and its VALUE, or nothing");
    }
    requireSuccess(context_.ecu->set(key, arguments.text()));
    return {};
}

Console::Answer Console::call(Arguments& arguments) {
    const std::string name = arguments.text();
    Json::Array values;
    while (!arguments.empty()) {
        values.push_back(arguments.value());
    }
    return context_.names.call(name, values);
}

Console::Answer Console::screenshot(Arguments& arguments) {
    auto& window = nextWindow(arguments);
    if (context_.screenshots == nullptr) {
        throw ConsoleError("there is no display to take a picture of");
    }
    requireSuccess(context_.screenshots->take(window, arguments.text()));
    return {};
}

Console::Answer Console::now(Arguments&) {
    return context_.machine.pump.milliseconds();
}

Console::Answer Console::quitCommand(Arguments&) {
    quit();
    return {};
}

}  // namespace korvane::console
