// The names of the log viewer's reader; declared in Registry.h.
#include "console/ConsoleError.h"
#include "console/names/Registry.h"
#include "console/text/Convert.h"
#include "logs/clsTXTdata.h"

namespace korvane::console {

namespace {

using Arguments = std::span<const Json>;
using Answer = std::optional<Json>;
using logs::clsTXTdata;

// A member that is null while there is no reader.
void addMember(Names& names, const std::string& form, std::vector<IndexRange> ranges, clsTXTdata*& reader,
               std::function<Json(const clsTXTdata&, Names::Indices)> get) {
    names.add("clsTXTdata." + form, std::move(ranges), [&reader, get = std::move(get)](Names::Indices at) {
        return reader == nullptr ? Json() : get(*reader, at);
    });
}

// A procedure that fails while there is no reader.
void addCall(Names& names, const std::string& name, std::string_view arguments, clsTXTdata*& reader,
             std::function<Json(clsTXTdata&, Arguments)> call) {
    names.addProcedure("clsTXTdata." + name, arguments, [&reader, call = std::move(call)](Arguments given) -> Answer {
        if (reader == nullptr) {
            throw ConsoleError("the log viewer is not open");
        }
        return call(*reader, given);
    });
}

}  // namespace

void registerLog(Names& names, clsTXTdata*& reader) {
    addMember(names, "ItemCount", {}, reader, [](const clsTXTdata& log, Names::Indices) { return log.ItemCount(); });
    addMember(names, "TData()", {{0, logs::kReadColumns - 1}, {0, logs::kReadRows}}, reader,
              [](const clsTXTdata& log, Names::Indices at) { return log.TData(at[0], at[1]); });
    addCall(names, "LoadFromFile", "PATH", reader,
            [](clsTXTdata& log, Arguments given) { return log.LoadFromFile(text(given[0])); });
    addCall(names, "getNextSimDataPacket", "", reader,
            [](clsTXTdata& log, Arguments) { return log.getNextSimDataPacket(); });
    addCall(names, "getSimSpeed", "", reader, [](clsTXTdata& log, Arguments) { return log.getSimSpeed(); });
}

}  // namespace korvane::console
