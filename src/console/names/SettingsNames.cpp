// The names of the settings window that are no controls; declared in Registry.h.
#include "console/names/Register.h"
#include "console/names/Registry.h"
#include "console/text/Convert.h"

namespace korvane::console {

void registerSettings(Names& names, settings::FrmMisc& window) {
    addVariable(names, "frmMisc.TimeOutCount", window.TimeOutCount);
    addVariable(names, "frmMisc.LambdaType", window.LambdaType);
    names.addProcedure("frmMisc.UpdateReadEE", "VALUE ADDR [IS16]",
                       [&window](std::span<const Json> arguments) -> std::optional<Json> {
                           const bool is16 = arguments.size() > 2 && truth(arguments[2]);
                           window.UpdateReadEE(wholeOf<std::int32_t>(arguments[0]), wholeOf<int>(arguments[1]), is16);
                           return {};
                       });
}

}  // namespace korvane::console
