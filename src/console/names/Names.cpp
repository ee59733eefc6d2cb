#include "console/names/Names.h"

#include <algorithm>

#include "console/ConsoleError.h"

namespace korvane::console {

namespace {

std::string bareName(const Path& path) {
    std::string out;
    for (const auto& segment : path.segments) {
        out += (out.empty() ? "" : ".") + segment.name;
    }
    return out;
}

std::string formOf(const Path& path) {
    std::string out;
    for (const auto& segment : path.segments) {
        out += (out.empty() ? "" : ".") + segment.name + (segment.indexed ? "()" : "");
    }
    return out;
}

std::string withoutBrackets(std::string form) {
    std::erase_if(form, [](char character) { return character == '(' || character == ')'; });
    return form;
}

// "0 to 26, 0 to 100"
std::string rangesText(const std::vector<IndexRange>& ranges) {
    std::string out;
    for (const auto& range : ranges) {
        out += (out.empty() ? "" : ", ") + std::to_string(range.first) + " to " + std::to_string(range.last);
    }
    return out;
}

template <class Action>
auto named(std::string_view name, Action&& action) {
    try {
        return action();
    } catch (const std::exception& error) {
        throw ConsoleError(shown(name) + ": " + error.what());
    }
}

}  // namespace

void Names::add(const std::string& form, std::vector<IndexRange> ranges, Get get, Set set) {
    entries_.insert_or_assign(withoutBrackets(form), Entry{form, std::move(ranges), std::move(get), std::move(set)});
}

void Names::addObject(const std::string& name, controls::Object& object, std::string_view main) {
    objects_.insert_or_assign(name, ObjectEntry{&object, std::string(main)});
}

void Names::addProcedure(const std::string& name, std::string_view arguments, Procedure procedure) {
    ProcedureEntry entry{std::string(arguments), 0, 0, std::move(procedure)};
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (arguments[i] != ' ' && (i == 0 || arguments[i - 1] == ' ')) {
            ++entry.most;
            entry.least += arguments[i] == '[' ? 0 : 1;
        }
    }
    procedures_.insert_or_assign(name, std::move(entry));
}

const Names::Entry* Names::find(const Path& path, std::vector<int>& indices) const {
    const auto found = entries_.find(bareName(path));
    if (found == entries_.end() || path.segments.front().instance) {
        return nullptr;
    }
    const Entry& entry = found->second;
    for (const auto& segment : path.segments) {
        indices.insert(indices.end(), segment.indices.begin(), segment.indices.end());
    }
    if (formOf(path) != entry.form || indices.size() != entry.ranges.size()) {
        throw ConsoleError(entry.ranges.empty() ? entry.form + " takes no index"
                                                : entry.form + " needs an index: " + rangesText(entry.ranges));
    }
    for (std::size_t i = 0; i < indices.size(); ++i) {
        if (indices[i] < entry.ranges[i].first || indices[i] > entry.ranges[i].last) {
            throw ConsoleError(shown(path.text) + " does not exist: the index must be " + rangesText(entry.ranges));
        }
    }
    return &entry;
}

std::optional<Json> Names::get(const Path& path) const {
    std::vector<int> indices;
    const Entry* const entry = find(path, indices);
    if (entry == nullptr) {
        return {};
    }
    return named(path.text, [&] { return entry->get(indices); });
}

std::optional<Target> Names::property(const Path& path) const {
    const auto& segments = path.segments;
    const auto found = objects_.find(segments.front().name);
    if (found == objects_.end() || !segments.front().isPlain() || segments.size() > 2) {
        return {};
    }
    Segment property;
    property.name = found->second.main;
    return Target{found->second.object, nullptr, found->first, segments.size() == 2 ? segments[1] : property};
}

bool Names::set(const Path& path, const Json& value) const {
    std::vector<int> indices;
    const Entry* const entry = find(path, indices);
    if (entry == nullptr) {
        return false;
    }
    if (!entry->set) {
        throw ConsoleError(shown(path.text) + " can only be read");
    }
    named(path.text, [&] { entry->set(indices, value); });
    return true;
}

std::optional<Json> Names::call(const std::string& name, std::span<const Json> arguments) const {
    const auto found = procedures_.find(name);
    if (found == procedures_.end()) {
        throw ConsoleError("no procedure is named " + shown(name));
    }
    const ProcedureEntry& entry = found->second;
    if (arguments.size() < entry.least || arguments.size() > entry.most) {
        throw ConsoleError(name +
                           (entry.most == 0 ? " takes no arguments" : " takes the arguments " + entry.arguments));
    }
    return named(name, [&] { return entry.procedure(arguments); });
}

std::string Names::missing(const Path& path) const {
    const std::string& name = path.segments.front().name;
    const std::string root = name + '.';
    std::string members;
    for (auto entry = entries_.lower_bound(root); entry != entries_.end() && entry->first.starts_with(root); ++entry) {
        members += (members.empty() ? "" : ", ") + entry->first.substr(root.size());
    }
    if (members.empty()) {
        return "no open window, table or value is named " + shown(written(std::span(path.segments).first(1)));
    }
    if (name.starts_with("frm")) {
        return "no open window is named " + name + " (without one there is " + members + ")";
    }
    return shown(path.text) + " does not exist (" + name + " has " + members + ")";
}

}  // namespace korvane::console
