#include "house/Modules.h"

#include <algorithm>
#include <regex>
#include <sstream>

namespace korvane::house {

namespace {

std::string_view folderOf(std::string_view path) {
    const auto slash = path.rfind('/');
    return slash == std::string_view::npos ? std::string_view{} : path.substr(0, slash);
}

bool isKeyword(const std::string& word) {
    return word == "DIR" || word == "WITHOUT" || word == "USES" || word == "QT";
}

}  // namespace

Modules::Modules(const std::string& cmake) {
    static const std::regex call(R"((?:^|\n)korvane_module\(([^)]*)\))");
    for (std::sregex_iterator found(cmake.begin(), cmake.end(), call), end; found != end; ++found) {
        add((*found)[1].str());
    }
}

void Modules::add(const std::string& declaration) {
    std::istringstream words(declaration);
    Module module;
    words >> module.name;
    module.folder = module.name;
    std::string keyword;
    for (std::string word; words >> word;) {
        if (isKeyword(word)) {
            keyword = word;
        } else if (keyword == "DIR") {
            module.folder = word;
        } else if (keyword == "USES") {
            addUse(module, word);
        }
        module.usesQt = module.usesQt || word == "QT";
    }
    modules_.push_back(module);
}

void Modules::addUse(Module& module, const std::string& used) {
    const auto other = std::ranges::find(modules_, used, &Module::name);
    if (other == modules_.end()) {
        brokenOrder_.push_back(module.name + ": uses " + used + ", which is not declared before it");
        return;
    }
    module.uses.insert(used);
    module.uses.insert(other->uses.begin(), other->uses.end());
}

const Module* Modules::of(std::string_view path) const {
    for (auto folder = folderOf(path); !folder.empty(); folder = folderOf(folder)) {
        const auto module = std::ranges::find(modules_, folder, &Module::folder);
        if (module != modules_.end()) {
            return &*module;
        }
    }
    return nullptr;
}

}  // namespace korvane::house
