// The names of the steady agent; declared in Registry.h.
#include "console/ConsoleError.h"
#include "console/names/Register.h"
#include "console/names/Registry.h"
#include "console/text/Convert.h"
#include "core/Numbers.h"

namespace korvane::console {

namespace {

using Arguments = std::span<const Json>;
using Answer = std::optional<Json>;
using Indices = Names::Indices;
using analysis::clsSteadyAgent;
using steady::Verdict;

const std::string kObject = "clsSteadyAgent.";
constexpr int kLastZone = static_cast<int>(steady::kZones) - 1;
constexpr int kLastReason = static_cast<int>(steady::kVerdicts) - 2;  // all verdicts but the one that it is used
constexpr int kLastCell = static_cast<int>(steady::kMostCells) - 1;

template <class T>
Json orNull(const std::optional<T>& value) {
    return value ? Json(*value) : Json();
}

std::size_t placeOf(Indices at) {
    return static_cast<std::size_t>(at.front());
}

double numberTo(double most, const Json& value) {
    const double given = realNumber(value);
    if (!(given >= 0.0 && given <= most)) {
        throw ConsoleError("the value must be a number from 0 to " + core::textOf(most));
    }
    return given;
}

void addAuthority(Names& names, const std::string& name, controls::Property<double>& percent) {
    names.add(
        kObject + name, {}, [&percent](Indices) { return Json(percent.get()); },
        [&percent](Indices, const Json& value) { percent = numberTo(maps::SteadyChoices::kMostAuthority, value); });
}

void addChoices(Names& names, maps::SteadyChoices& choices) {
    addAuthority(names, "RichAuthority", choices.RichAuthority);
    addAuthority(names, "LeanAuthority", choices.LeanAuthority);
    names.add(
        kObject + "Carry", {}, [&choices](Indices) { return Json(choices.Carry.get()); },
        [&choices](Indices, const Json& value) { choices.Carry = truth(value); });
}

void addState(Names& names, const clsSteadyAgent& agent) {
    names.add(kObject + "State", {}, [&agent](Indices) { return Json(agent.state()); });
    names.add(kObject + "StopReason", {}, [&agent](Indices) { return Json(agent.whyStopped()); });
}

void addZones(Names& names, clsSteadyAgent& agent) {
    const auto add = [&](const char* form, Json (*part)(const steady::Zone&)) {
        names.add(kObject + form, {{0, kLastZone}},
                  [&agent, part](Indices at) { return part(agent.agent().zone(placeOf(at))); });
    };
    names.add(kObject + "ZoneCount", {}, [](Indices) { return Json(kLastZone + 1); });
    add("Zone().LoadFrom", [](const steady::Zone& zone) { return Json(zone.loadFrom); });
    add("Zone().LoadTo", [](const steady::Zone& zone) { return Json(zone.loadTo); });
    add("Zone().DelayMs", [](const steady::Zone& zone) { return orNull(zone.delayMs); });
    add("Zone().UncertaintyMs", [](const steady::Zone& zone) { return orNull(zone.uncertaintyMs); });
    names.add(
        kObject + "Zone().FixedMs", {{0, kLastZone}},
        [&agent](Indices at) { return Json(agent.choices().FixedDelayMs.at(placeOf(at)).get()); },
        [&agent](Indices at, const Json& value) {
            agent.choices().FixedDelayMs.at(placeOf(at)) = numberTo(maps::SteadyChoices::kLongestDelay, value);
        });
}

void addSamples(Names& names, const clsSteadyAgent& agent) {
    const auto verdictAt = [](Indices at) { return static_cast<Verdict>(at.front() + 1); };
    const auto counted = [&agent](Verdict verdict) {
        return Json(static_cast<std::int64_t>(agent.agent().counted(verdict)));
    };
    names.add(kObject + "Used", {}, [counted](Indices) { return counted(Verdict::Used); });
    names.add(kObject + "Rejected().Reason", {{0, kLastReason}},
              [verdictAt](Indices at) { return Json(std::string(steady::wordsOf(verdictAt(at)))); });
    names.add(kObject + "Rejected().Count", {{0, kLastReason}},
              [verdictAt, counted](Indices at) { return counted(verdictAt(at)); });
}

void addCells(Names& names, const clsSteadyAgent& agent) {
    const auto add = [&](const char* form, Json (*part)(const steady::CellReport&)) {
        names.add(kObject + form, {{0, kLastCell}},
                  [&agent, part](Indices at) { return part(agent.cell(placeOf(at))); });
    };
    using steady::CellReport;
    add("Cell().Weight", [](const CellReport& cell) { return Json(cell.weight); });
    add("Cell().ErrorPercent", [](const CellReport& cell) { return Json(cell.errorPercent); });
    add("Cell().Spread", [](const CellReport& cell) { return Json(cell.spread); });
    add("Cell().Confidence", [](const CellReport& cell) { return Json(cell.confidence); });
    add("Cell().Limited", [](const CellReport& cell) { return Json(cell.limited); });
    add("Cell().Held", [](const CellReport& cell) { return Json(std::string(steady::wordsOf(cell.held))); });
    names.add(kObject + "Cell().Baseline", {{0, kLastCell}}, [&agent](Indices at) {
        const auto byte = agent.baselineOf(placeOf(at));
        return byte ? Json(int{*byte}) : Json();
    });
}

}  // namespace

void registerSteadyAgent(Names& names, clsSteadyAgent& agent, const std::function<maps::MapGeometry()>& geometry) {
    addState(names, agent);
    addChoices(names, agent.choices());
    addZones(names, agent);
    addSamples(names, agent);
    addCells(names, agent);
    names.addProcedure("clsSteadyAgent.PutBack", "",
                       [&agent, geometry](Arguments) -> Answer { return Json(agent.putBack(geometry())); });
    names.addProcedure("clsSteadyAgent.Show", "", [&agent](Arguments) -> Answer {
        if (agent.openWindow) {
            agent.openWindow();
        }
        return {};
    });
    names.addProcedure("clsSteadyAgent.NewBaseline", "",
                       [&agent, geometry](Arguments) -> Answer { return Json(agent.newBaseline(geometry())); });
}

}  // namespace korvane::console
