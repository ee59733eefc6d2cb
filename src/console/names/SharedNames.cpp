// The names of the shared tables and values, as their lists of members have them; declared in Registry.h.
#include <array>
#include <functional>
#include <string>
#include <tuple>
#include <type_traits>

#include "console/ConsoleError.h"
#include "console/names/Register.h"
#include "console/names/Registry.h"

namespace korvane::console {

namespace {

// A row holds what a read of its width stores: a byte, or 32 bits where it is marked as 16 bits wide.
void assignParameter(core::EEParam& row, const Json& value) {
    if (value.isNull()) {
        row.value = std::monostate();
    } else if (value.asDouble() != nullptr) {
        row.value = singleNumber(value);
    } else if (row.is16bit) {
        row.value = wholeOf<std::int32_t>(value);
    } else {
        row.value = wholeOf<std::uint8_t>(value);
    }
}

// Calls `take` with each member of `Table`.
template <class Table, class Take>
void forEachMember(Take take) {
    std::apply([&take](const auto&... member) { (take(member), ...); }, core::kMembers<Table>);
}

template <class Rows, class Row, class Value>
void addColumn(Names& names, const std::string& form, Rows& rows, const core::Member<Row, Value>& column) {
    if constexpr (std::is_same_v<Value, core::ParameterValue>) {
        names.add(
            form, {{0, static_cast<int>(rows.size()) - 1}},
            [&rows](Names::Indices at) { return toJson(rows[static_cast<std::size_t>(at.front())].value); },
            [&rows](Names::Indices at, const Json& value) {
                assignParameter(rows[static_cast<std::size_t>(at.front())], value);
            });
    } else {
        addElements(names, form, rows, column.place, column.access);
    }
}

void addTable(Names& names, const std::string&, core::ParameterAddresses& addresses, Access) {
    for (const auto& variable : core::parameterVariables()) {
        addVariable(names, std::string(variable.name), addresses.*variable.member);
    }
}

void addTable(Names& names, const std::string& name, core::LogTable& table, Access) {
    names.add(
        name + "()", {{0, core::LogTable::kColumns - 1}, {0, core::LogTable::kRows - 1}},
        [&table](Names::Indices at) { return Json(table.cell(at[0], at[1])); },
        [&table](Names::Indices at, const Json& value) { table.set(at[0], at[1], text(value)); });
}

template <class Element, std::size_t Size>
void addTable(Names& names, const std::string& name, std::array<Element, Size>& table, Access access) {
    if constexpr (std::tuple_size_v<decltype(core::kMembers<Element>)> == 0) {
        addElements(names, name + "()", table, std::identity(), access);
    } else {
        forEachMember<Element>(
            [&](const auto& column) { addColumn(names, name + "()." + std::string(column.name), table, column); });
    }
}

template <class Value>
void addTable(Names& names, const std::string& name, Value& variable, Access access) {
    addVariable(names, name, variable, access);
}

template <class Part>
void addPart(Names& names, Part& part) {
    forEachMember<Part>(
        [&](const auto& member) { addTable(names, std::string(member.name), part.*member.place, member.access); });
}

template <class... Parts>
void addParts(Names& names, core::TablesOf<Parts...>& tables) {
    (addPart<Parts>(names, tables), ...);
}

}  // namespace

void registerSharedTables(Names& names, core::SharedTables& tables) {
    addParts(names, tables);
}

}  // namespace korvane::console
