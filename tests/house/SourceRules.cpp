#include "house/SourceRules.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <regex>
#include <sstream>

namespace korvane::house {

namespace {

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

bool mayInclude(const Module& module, std::string_view name, const Modules& modules) {
    const Module* const other = modules.of(name);
    if (module.name == "ecu") {
        return other == &module || name == kSharedWithEcu;
    }
    return other != nullptr && (other == &module || module.uses.contains(other->name));
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

std::vector<std::string> brokenNaming(const SourceFile& file, const Modules& modules) {
    static const std::regex name(R"(^(main\.cpp|(c|cls|frm)?[A-Z]\w*\.(h|cpp|h\.in))$)");
    std::vector<std::string> broken;
    if (modules.of(file.path) == nullptr) {
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

std::vector<std::string> brokenLayers(const SourceFile& file, const Modules& modules) {
    const Module* const module = modules.of(file.path);
    std::vector<std::string> broken;
    for (const Include& include : includesOf(file.text)) {
        const bool counts = module != nullptr && include.quoted && !include.name.ends_with(".moc");
        if (counts && !mayInclude(*module, include.name, modules)) {
            broken.push_back(file.path + ": must not include \"" + include.name + "\"");
        }
    }
    return broken;
}

std::vector<std::string> brokenLibraries(const SourceFile& file, const Modules& modules) {
    const Module* const module = modules.of(file.path);
    const bool qtModule = module != nullptr && module->usesQt;
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

std::vector<std::string> brokenRules(const SourceFile& file, const std::vector<SourceFile>& all,
                                     const Modules& modules) {
    std::vector<std::string> broken = brokenNaming(file, modules);
    append(broken, brokenGuard(file));
    append(broken, brokenLayers(file, modules));
    append(broken, brokenLibraries(file, modules));
    append(broken, brokenContinuation(file, all));
    return broken;
}

std::string readSource(const std::filesystem::path& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::vector<SourceFile> readSources(const std::filesystem::path& folder) {
    std::vector<SourceFile> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (entry.is_regular_file()) {
            files.push_back(
                {std::filesystem::relative(entry.path(), folder).generic_string(), readSource(entry.path())});
        }
    }
    std::ranges::sort(files, {}, &SourceFile::path);
    return files;
}

}  // namespace korvane::house
