// Continues Differences: the list of all settings, and what they are called.
#include <unordered_map>

#include "core/Checked.h"
#include "keep/compare/Differences.h"
#include "link/EcuMap.h"

namespace korvane::keep {

namespace {

constexpr int kLastCell = static_cast<int>(core::kEepromSize) - 3;  // of the ECU

using CalledAt = std::unordered_map<int, fields::Fields::Called>;

struct MiscRow {
    int first;
    bool isWord;
    const char* label;
};
constexpr MiscRow kMisc[] = {
    {1, true, "RPM limit"},         {3, true, "Shift light"},      {5, true, "Enable bits"},
    {7, false, "Injection offset"}, {8, false, "Ignition offset"}, {9, false, "Injector code"},
};

// What is shown in a unit or has a label comes before what is only stored.
CalledAt byAddress(const fields::Fields& fields) {
    CalledAt all;
    for (auto& called : fields.called()) {
        all.try_emplace(called.address, called);
    }
    return all;
}

std::string labelOf(const fields::Fields::Called& called) {
    return called.title.empty() || called.label.empty() ? called.label : called.title + ": " + called.label;
}

std::string nameOf(const core::SharedTables& tables, const fields::Fields::Called* called, int address) {
    const auto& own = core::checked(tables.EEParams, address).name;
    if (!own.empty()) {
        return own;
    }
    if (called == nullptr || called->first < 0) {
        return "cell " + std::to_string(address);
    }
    const int distance = address - called->first;
    return core::checked(tables.EEParams, called->first).name + '+' + std::to_string(distance);
}

bool isWord(const core::SharedTables& tables, const fields::Fields::Called* called, int address) {
    return core::checked(tables.EEParams, address).is16bit ||
           (called != nullptr && called->codec.width != fields::Width::Byte);
}

Setting settingAt(const core::SharedTables& tables, const CalledAt& names, int address) {
    const auto found = names.find(address);
    const auto* const called = found != names.end() ? &found->second : nullptr;
    Setting setting{.address = address,
                    .isMisc = false,
                    .isWord = address < kLastCell && isWord(tables, called, address),
                    .codec = {},
                    .name = nameOf(tables, called, address),
                    .label = {}};
    if (called != nullptr) {
        setting.codec = called->codec;
        setting.label = labelOf(*called);
    }
    return setting;
}

}  // namespace

std::vector<Setting> settingsOf(const core::SharedTables& tables, const fields::Fields& fields) {
    std::vector<Setting> all;
    for (const auto& [first, word, label] : kMisc) {
        all.push_back({first, true, word, {}, "Misc block", label});
    }
    const auto names = byAddress(fields);
    for (int address = 0; address <= kLastCell; ++address) {
        if (!link::mapCellAt(tables.addresses, address)) {
            all.push_back(settingAt(tables, names, address));
            address += all.back().isWord ? 1 : 0;
        }
    }
    return all;
}

}  // namespace korvane::keep
