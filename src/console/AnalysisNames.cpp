#include "console/Convert.h"
#include "console/Register.h"
#include "console/Registry.h"
#include "maps/Frm3Dmap.h"
#include "maps/MapConversions.h"

namespace korvane::console {

namespace {

using Arguments = std::span<const Json>;
using Answer = std::optional<Json>;
using analysis::CellStatistics;
using analysis::clsInjAnalyser;

// A procedure of the analyser, by its bare name and as a member of the analyser.
void addMember(Names& names, const std::string& name, std::string_view arguments, const Names::Procedure& procedure) {
    names.addProcedure(name, arguments, procedure);
    names.addProcedure("clsInjAnalyser." + name, arguments, procedure);
}

void addProcedures(Names& names, clsInjAnalyser& analyser) {
    addMember(names, "addValues", "LAMBDA CELL RPM LOAD", [&analyser](Arguments arguments) -> Answer {
        analyser.addValues(singleNumber(arguments[0]), singleNumber(arguments[1]), singleNumber(arguments[2]),
                           singleNumber(arguments[3]));
        return {};
    });
    addMember(names, "ClearTables", "", [&analyser](Arguments) -> Answer {
        analyser.ClearTables();
        return {};
    });
    addMember(names, "setMapSize", "SIZE", [&analyser](Arguments arguments) -> Answer {
        analyser.setMapSize(wholeOf<std::int16_t>(arguments[0]));
        return {};
    });
}

}  // namespace

void registerAnalyser(Names& names, clsInjAnalyser& analyser) {
    addProcedures(names, analyser);
}

void registerMapTools(Names& names, maps::Frm3Dmap& view, core::SharedTables& tables) {
    names.addProcedure("frm3Dmap.Update3D", "MAPNUMBER", [&view](Arguments arguments) -> Answer {
        view.Update3D(wholeOf<std::int32_t>(arguments[0]));
        return {};
    });
    names.addProcedure("frm3Dmap.setMapSizes", "COLUMNS ROWS", [&view](Arguments arguments) -> Answer {
        view.setMapSizes(wholeOf<std::int16_t>(arguments[0]), wholeOf<std::int16_t>(arguments[1]));
        return {};
    });
    names.addProcedure("CalcPower", "PULSE AVAILABLE", [&tables](Arguments arguments) -> Answer {
        const auto power = maps::CalcPower(realNumber(arguments[0]), realNumber(arguments[1]), tables.NewInjectorSize);
        return power ? Json(*power) : Json();
    });
}

}  // namespace korvane::console
