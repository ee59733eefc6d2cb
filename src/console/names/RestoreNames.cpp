// The names of the restore of settings; declared in Registry.h.
#include "console/names/Register.h"
#include "console/names/Registry.h"

namespace korvane::console {

void registerRestore(Names& names, keep::RestoreRun& run) {
    using Arguments = std::span<const Json>;
    using Answer = std::optional<Json>;
    names.addObject("restore", run, "text");
    names.addProcedure("restore.goOn", "", [&run](Arguments) -> Answer { return Json(run.goOn()); });
    names.addProcedure("restore.goBack", "", [&run](Arguments) -> Answer { return Json(run.goBack()); });
    names.addProcedure("restore.stop", "", [&run](Arguments) -> Answer {
        run.stop();
        return {};
    });
    names.addProcedure("restore.forget", "", [&run](Arguments) -> Answer {
        run.forget();
        return {};
    });
}

}  // namespace korvane::console
