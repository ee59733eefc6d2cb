// The procedure that compares; declared in Registry.h.
#include <utility>

#include "console/names/Registry.h"
#include "console/text/Convert.h"

namespace korvane::console {

void registerComparison(Names& names, std::function<void(const keep::Source&, const keep::Source&)> open) {
    names.addProcedure("keep.compare", "LEFT RIGHT",
                       [open = std::move(open)](std::span<const Json> arguments) -> std::optional<Json> {
                           open(keep::sourceOf(text(arguments[0])), keep::sourceOf(text(arguments[1])));
                           return {};
                       });
}

}  // namespace korvane::console
