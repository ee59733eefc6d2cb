// What scripts reach by name beside windows and controls: shared tables and values, members of shared objects, and
// procedures that no control reaches.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "console/names/Finder.h"
#include "console/names/Path.h"
#include "console/text/Json.h"

namespace korvane::console {

struct IndexRange {
    int first;
    int last;
};

// Errors that getters, setters and procedures raise (ConsoleError, RuntimeError) reach the user with the name in front.
class Names {
public:
    using Indices = std::span<const int>;
    using Get = std::function<Json(Indices)>;
    using Set = std::function<void(Indices, const Json&)>;
    using Procedure = std::function<std::optional<Json>(std::span<const Json>)>;

    // `form` is the name with empty brackets where indices stand, "FuelMapOut()" or "liveValues().value"; `ranges` has
    // one entry for each index. Getters are called with indices in range only. Without `set` it can only be read.
    void add(const std::string& form, std::vector<IndexRange> ranges, Get get, Set set = {});

    // An object that is in no window, with its properties as members; its bare name is the property `main`.
    void addObject(const std::string& name, controls::Object& object, std::string_view main);

    // `arguments` names them for error sentences, those that may be left out in brackets: "ADDR VALUE [FORCE16]".
    void addProcedure(const std::string& name, std::string_view arguments, Procedure procedure);

    // The value at `path`, or nothing if no such name is known. ConsoleError for wrong indices.
    [[nodiscard]] std::optional<Json> get(const Path& path) const;
    // The property of an object that `path` names, or nothing if no object is named so.
    [[nodiscard]] std::optional<Target> property(const Path& path) const;
    // False if no such name is known.
    [[nodiscard]] bool set(const Path& path, const Json& value) const;
    // The procedure's answer, if it has one.
    [[nodiscard]] std::optional<Json> call(const std::string& name, std::span<const Json> arguments) const;

    // What is known of `path`, which is not known, for an error sentence.
    [[nodiscard]] std::string missing(const Path& path) const;

private:
    struct Entry {
        std::string form;
        std::vector<IndexRange> ranges;
        Get get;
        Set set;
    };
    struct ObjectEntry {
        controls::Object* object;
        std::string main;
    };
    struct ProcedureEntry {
        std::string arguments;
        std::size_t least = 0;
        std::size_t most = 0;
        Procedure procedure;
    };

    [[nodiscard]] const Entry* find(const Path& path, std::vector<int>& indices) const;

    std::map<std::string, Entry, std::less<>> entries_;  // by name without brackets
    std::map<std::string, ObjectEntry, std::less<>> objects_;
    std::map<std::string, ProcedureEntry, std::less<>> procedures_;
};

}  // namespace korvane::console
