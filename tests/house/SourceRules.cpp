#include "house/SourceRules.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>
#include <optional>
#include <regex>
#include <sstream>

namespace korvane::house {

namespace {

// In the order of the layers: a module may include its own files and those of the modules before it.
constexpr std::array<std::string_view, 24> kLayers{"platform",
                                                   "controls",
                                                   "core",
                                                   "link",
                                                   "fields",
                                                   "logs",
                                                   "live",
                                                   "maps",
                                                   "analysis",
                                                   "settings",
                                                   "trend",
                                                   "performance",
                                                   "ecu",
                                                   "console",
                                                   "views/widgets",
                                                   "views/frame",
                                                   "views/dashboard",
                                                   "views/maps",
                                                   "views/settings",
                                                   "views/trend",
                                                   "views/performance",
                                                   "views",
                                                   "program",
                                                   "app"};

struct Machine {
    std::string_view module;
    std::array<std::string_view, 2> users;
};

// The two machines are outside the layers: only these modules may use them.
constexpr std::array<Machine, 2> kMachines{
    Machine{"platform/virtual", {"platform/virtual", "app"}},
    Machine{"platform/qt", {"platform/qt", "app"}},
};

constexpr std::array<std::string_view, 10> kQtModules{
    "platform/qt",    "views/widgets", "views/frame",       "views/dashboard", "views/maps",
    "views/settings", "views/trend",   "views/performance", "views",           "app"};

constexpr std::string_view kSharedWithEcu = "core/ParameterNames.h";

struct Include {
    std::string name;
    bool quoted = false;
};

std::vector<Include> includesOf(const std::string& text) {
    static const std::regex directive(R"(^\s*#\s*include\s*([<"])([^>"]+)[>"])");
    std::vector<Include> found;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        if (std::smatch match; std::regex_search(line, match, directive)) {
            found.push_back({match[2].str(), match[1].str() == "\""});
        }
    }
    return found;
}

const Machine* machineIn(std::string_view module) {
    const auto* const machine = std::ranges::find(kMachines, module, &Machine::module);
    return machine == kMachines.end() ? nullptr : machine;
}

std::optional<std::ptrdiff_t> layerOf(std::string_view module) {
    const auto* const layer = std::ranges::find(kLayers, module);
    return layer == kLayers.end() ? std::nullopt : std::optional(std::distance(kLayers.begin(), layer));
}

bool isModule(std::string_view folder) {
    return machineIn(folder) != nullptr || layerOf(folder).has_value();
}

std::string_view folderOf(std::string_view path) {
    const auto slash = path.rfind('/');
    return slash == std::string_view::npos ? std::string_view{} : path.substr(0, slash);
}

// A folder inside a module belongs to it, unless it is a module itself. Empty where there is none.
std::string_view moduleOf(std::string_view path) {
    std::string_view folder = folderOf(path);
    while (!folder.empty() && !isModule(folder)) {
        folder = folderOf(folder);
    }
    return folder;
}

bool mayInclude(std::string_view module, std::string_view name) {
    const std::string_view other = moduleOf(name);
    if (module == "ecu") {
        return other == "ecu" || name == kSharedWithEcu;
    }
    if (const auto* const machine = machineIn(other)) {
        return std::ranges::find(machine->users, module) != machine->users.end();
    }
    return layerOf(other) && layerOf(other) <= layerOf(machineIn(module) != nullptr ? "platform" : module);
}

bool isQt(std::string_view name) {
    static const std::regex qt(R"(^(Q[A-Z]\w*|Qt\w*/.+)$)");
    return std::regex_match(name.begin(), name.end(), qt);
}

// The standard library's headers are single words; those of POSIX and the kernel end in .h and may stand in a folder.
bool isSystem(std::string_view name) {
    static const std::regex system(R"(^([a-z_0-9]+|([a-z]+\.h)|((sys|asm|linux)/[a-z]+\.h))$)");
    return std::regex_match(name.begin(), name.end(), system);
}

void append(std::vector<std::string>& all, std::vector<std::string> more) {
    all.insert(all.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
}

}  // namespace

std::vector<std::string> brokenNaming(const SourceFile& file) {
    static const std::regex name(R"(^(main\.cpp|(c|cls|frm)?[A-Z]\w*\.(h|cpp|h\.in))$)");
    std::vector<std::string> broken;
    if (moduleOf(file.path).empty()) {
        broken.push_back(file.path + ": stands in no module");
    }
    if (!std::regex_match(file.path.substr(file.path.rfind('/') + 1), name)) {
        broken.push_back(
            file.path +
            ": a file is named for its class and ends in .h or .cpp (.h.in for a header that the build fills in)");
    }
    return broken;
}

std::vector<std::string> brokenGuard(const SourceFile& file) {
    static const std::regex once(R"((^|\n)#pragma once\s*\n)");
    if (file.path.ends_with(".h") && !std::regex_search(file.text, once)) {
        return {file.path + ": has no #pragma once"};
    }
    return {};
}

std::vector<std::string> brokenLayers(const SourceFile& file) {
    std::vector<std::string> broken;
    for (const Include& include : includesOf(file.text)) {
        if (include.quoted && !include.name.ends_with(".moc") && !mayInclude(moduleOf(file.path), include.name)) {
            broken.push_back(file.path + ": must not include \"" + include.name + "\"");
        }
    }
    return broken;
}

std::vector<std::string> brokenLibraries(const SourceFile& file) {
    const bool qtModule = std::ranges::find(kQtModules, moduleOf(file.path)) != kQtModules.end();
    std::vector<std::string> broken;
    for (const Include& include : includesOf(file.text)) {
        if (!include.quoted && !isSystem(include.name) && !(qtModule && isQt(include.name))) {
            broken.push_back(file.path + ": must do without <" + include.name + ">");
        }
        if (include.quoted && isQt(include.name)) {
            broken.push_back(file.path + ": includes \"" + include.name + "\" as if it were the project's own");
        }
    }
    return broken;
}

std::vector<std::string> brokenContinuation(const SourceFile& file, const std::vector<SourceFile>& all) {
    constexpr std::string_view ending = ".cpp";
    if (!file.path.ends_with(ending) || file.path.ends_with("/main.cpp") || file.text.starts_with("// ")) {
        return {};
    }
    const std::string header = file.path.substr(0, file.path.size() - ending.size()) + ".h";
    if (std::ranges::find(all, header, &SourceFile::path) != all.end()) {
        return {};
    }
    return {file.path + ": has no header of its own and does not begin with a comment on what it continues"};
}

std::vector<std::string> brokenRules(const SourceFile& file, const std::vector<SourceFile>& all) {
    std::vector<std::string> broken = brokenNaming(file);
    append(broken, brokenGuard(file));
    append(broken, brokenLayers(file));
    append(broken, brokenLibraries(file));
    append(broken, brokenContinuation(file, all));
    return broken;
}

std::vector<SourceFile> readSources(const std::filesystem::path& folder) {
    std::vector<SourceFile> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (entry.is_regular_file()) {
            std::ifstream stream(entry.path(), std::ios::binary);
            files.push_back({std::filesystem::relative(entry.path(), folder).generic_string(),
                             {std::istreambuf_iterator<char>(stream), {}}});
        }
    }
    std::ranges::sort(files, {}, &SourceFile::path);
    return files;
}

}  // namespace korvane::house
