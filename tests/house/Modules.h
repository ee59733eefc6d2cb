// The modules as CMakeLists.txt declares them: the folder of each, and which others it may use.
#pragma once

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace korvane::house {

struct Module {
    std::string name;
    std::string folder;          // below src/
    std::set<std::string> uses;  // by name, with all that those use
    bool usesQt = false;
};

class Modules {
public:
    // `cmake` is the text of CMakeLists.txt. Of it only the calls of korvane_module() count.
    explicit Modules(const std::string& cmake);

    // The module of a file below src/. A folder inside a module belongs to it, unless it is a module itself. Null where
    // there is none.
    [[nodiscard]] const Module* of(std::string_view path) const;

    // One sentence for each use of a module that is not declared before its user.
    [[nodiscard]] const std::vector<std::string>& brokenOrder() const { return brokenOrder_; }

private:
    void add(const std::string& declaration);
    void addUse(Module& module, const std::string& used);

    std::vector<Module> modules_;
    std::vector<std::string> brokenOrder_;
};

}  // namespace korvane::house
