// What may include what, and how files are named: rules about the text of the files in src/.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "house/Modules.h"

namespace korvane::house {

// `path` is relative to src/, with '/' between its parts. Each function returns one sentence for every line or name
// that breaks a rule, and nothing for a file that follows them.
struct SourceFile {
    std::string path;
    std::string text;
};

// A folder of no module, a name that is not made like a class's, an ending other than .h and .cpp, or .h.in for a
// header that the build fills in.
[[nodiscard]] std::vector<std::string> brokenNaming(const SourceFile& file, const Modules& modules);

// A header without "#pragma once".
[[nodiscard]] std::vector<std::string> brokenGuard(const SourceFile& file);

// An include of a module that the file's own does not use, of something that is in no module, or by the virtual ECU of
// anything but its own files and the table of parameter names.
[[nodiscard]] std::vector<std::string> brokenLayers(const SourceFile& file, const Modules& modules);

// An include of Qt outside the modules that may use it; of a third party's header anywhere.
[[nodiscard]] std::vector<std::string> brokenLibraries(const SourceFile& file, const Modules& modules);

// A .cpp file without a header of its name beside it, other than main.cpp, that does not begin with a comment: it has
// to say what it continues. `all` are the files of the project.
[[nodiscard]] std::vector<std::string> brokenContinuation(const SourceFile& file, const std::vector<SourceFile>& all);

// All the rules together.
[[nodiscard]] std::vector<std::string> brokenRules(const SourceFile& file, const std::vector<SourceFile>& all,
                                                   const Modules& modules);

// The text of a file.
[[nodiscard]] std::string readSource(const std::filesystem::path& path);
// Every file under `folder`, in order of path.
[[nodiscard]] std::vector<SourceFile> readSources(const std::filesystem::path& folder);

}  // namespace korvane::house
