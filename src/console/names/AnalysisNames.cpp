// The names of the analyser, the 3D view and the power estimate; declared in Registry.h.
#include "console/names/Register.h"
#include "console/names/Registry.h"
#include "console/text/Convert.h"
#include "maps/Frm3Dmap.h"
#include "maps/grid/MapConversions.h"

namespace korvane::console {

namespace {

using Arguments = std::span<const Json>;
using Answer = std::optional<Json>;
using analysis::CellStatistics;
using analysis::clsInjAnalyser;
using analysis::kAnalysedCells;

constexpr int kLastCell = static_cast<int>(kAnalysedCells) - 1;

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

void addCellNames(Names& names, clsInjAnalyser& analyser) {
    const std::string object = "clsInjAnalyser.";
    addElements(names, object + "CellStats().LambdaAvg", analyser.CellStats, &CellStatistics::LambdaAvg);
    addElements(names, object + "CellStats().RpmOffsetAvg", analyser.CellStats, &CellStatistics::RpmOffsetAvg);
    addElements(names, object + "CellStats().LoadOffsetAvg", analyser.CellStats, &CellStatistics::LoadOffsetAvg);
    addElements(names, object + "CellStats().LambdaBase", analyser.CellStats, &CellStatistics::LambdaBase);
    addElements(names, object + "SampleCount()", analyser.SampleCount, std::identity());
    addElements(names, object + "SquareSum()", analyser.SquareSum, std::identity());
    const auto computed = [&](const char* form, float (clsInjAnalyser::*member)(std::int32_t) const) {
        names.add(object + form, {{0, kLastCell}},
                  [&analyser, member](Names::Indices at) { return Json((analyser.*member)(at.front())); });
    };
    computed("LambdaAvg()", &clsInjAnalyser::LambdaAvg);
    computed("Proposal()", &clsInjAnalyser::Proposal);
    computed("Hajonta()", &clsInjAnalyser::Hajonta);
    computed("Setpointget()", &clsInjAnalyser::Setpointget);
    names.add(
        object + "Setpoint()", {{0, kLastCell}},
        [&analyser](Names::Indices at) { return Json(analyser.Setpointget(at.front())); },
        [&analyser](Names::Indices at, const Json& value) { analyser.Setpoint(singleNumber(value), at.front()); });
}

void addMapSize(Names& names, clsInjAnalyser& analyser) {
    addVariable(names, "clsInjAnalyser.mapSize", analyser.mapSize, Access::ReadOnly);
    addVariable(names, "clsInjAnalyser.columns", analyser.columns, Access::ReadOnly);
    addVariable(names, "clsInjAnalyser.rows", analyser.rows, Access::ReadOnly);
}

void addSwitches(Names& names, clsInjAnalyser& analyser) {
    const auto add = [&](const std::string& name, bool (clsInjAnalyser::*get)() const,
                         void (clsInjAnalyser::*set)(bool)) {
        names.add(
            "clsInjAnalyser." + name, {}, [&analyser, get](Names::Indices) { return Json((analyser.*get)()); },
            [&analyser, set](Names::Indices, const Json& value) { (analyser.*set)(truth(value)); });
    };
    add("simpleMode", &clsInjAnalyser::simpleMode, &clsInjAnalyser::setSimpleMode);
    add("LogData", &clsInjAnalyser::LogData, &clsInjAnalyser::setLogData);
    add("AgentEnable", &clsInjAnalyser::AgentEnable, &clsInjAnalyser::setAgentEnable);
    addVariable(names, "clsInjAnalyser.LambdaScale", analyser.LambdaScale);
    addVariable(names, "clsInjAnalyser.timerAgent.Interval", analyser.timerAgent.Interval, Access::ReadOnly);
}

}  // namespace

void registerAnalyser(Names& names, clsInjAnalyser& analyser) {
    addProcedures(names, analyser);
    addMapSize(names, analyser);
    addCellNames(names, analyser);
    addSwitches(names, analyser);
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
        const auto power = maps::CalcPower(tables.NewInjectorSize, realNumber(arguments[0]), realNumber(arguments[1]));
        return power ? Json(*power) : Json();
    });
}

}  // namespace korvane::console
