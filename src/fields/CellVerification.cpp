#include "fields/CellVerification.h"

#include <algorithm>
#include <map>
#include <utility>

#include "fields/VerifyReport.h"
#include "link/ReadBack.h"
#include "platform/Machine.h"

namespace korvane::fields {

namespace {

using Cells = std::map<int, std::uint8_t>;

// The cells that belong to a value, with what they should have.
struct Expected {
    std::vector<SentValue> values;
    Cells cells;
};

Expected expectedOf(const std::vector<SavedValue>& values) {
    Expected expected;
    for (const auto& value : values) {
        expected.values.push_back({value, {}});
        for (int i = 0; i < value.bytes; ++i) {
            expected.cells[value.address + i] = expected.values.back().byte(static_cast<std::size_t>(i));
        }
    }
    return expected;
}

// A byte that a later value has taken over is none of an earlier one's.
bool differs(const SentValue& sent, const Cells& expected, const Cells& back) {
    bool is = false;
    for (int i = 0; i < sent.value.bytes; ++i) {
        const int address = sent.value.address + i;
        const bool own = expected.at(address) == sent.byte(static_cast<std::size_t>(i));
        is = is || (own && back.at(address) != expected.at(address));
    }
    return is;
}

// What the line has told nothing of does not disagree.
bool agrees(const link::EcuEeprom& ecu, const Cells& cells) {
    return std::none_of(cells.begin(), cells.end(), [&ecu](const auto& cell) {
        const auto at = static_cast<std::size_t>(cell.first);
        return at < ecu.cells().size() && ecu.cells()[at].known != link::Known::No &&
               ecu.cells()[at].byte != cell.second;
    });
}

std::string nameOf(const SavedValue& value) {
    return value.label.empty() ? "address " + std::to_string(value.address) : value.label;
}

std::string compared(Expected& expected, const Cells& back, const core::SharedTables& tables, BoxMarks* marks) {
    Differences differences;
    for (auto& sent : expected.values) {
        for (int i = 0; i < sent.value.bytes; ++i) {
            sent.back.at(static_cast<std::size_t>(i)) = back.at(sent.value.address + i);
        }
        if (differs(sent, expected.cells, back)) {
            differences.add(nameOf(sent.value), sent.shown(sent.told(), tables), sent.shown(sent.value.value, tables));
        } else if (marks != nullptr && sent.value.box != nullptr) {
            marks->confirmed(*sent.value.box);
        }
    }
    return differences.words();
}

}  // namespace

bool CellVerification::isOn() const {
    return context_.connection != nullptr && context_.verifyReport != nullptr && context_.connection->verify.On;
}

void CellVerification::verify(const std::string& group, const std::vector<SavedValue>& values, const Fields* fields,
                              std::function<void()> again) {
    const int number = context_.verifyReport->begin(group, std::move(again));
    const auto words = readBack(values, fields);
    context_.verifyReport->end(number, words, words != Differences::kNone);
    if (words == Differences::kNone) {
        auto& ecu = context_.connection->ecuEeprom;
        context_.verifyReport->holdsWhile(number, ecu,
                                          [&ecu, cells = expectedOf(values).cells] { return agrees(ecu, cells); });
    }
}

std::string CellVerification::readBack(const std::vector<SavedValue>& values, const Fields* fields) {
    const link::QuietLine quiet(*context_.connection);
    link::ReadBack line(context_.window.machine().pump, *context_.connection);
    if (const auto end = line.interruption()) {
        return notVerified(*end);
    }
    auto expected = expectedOf(values);
    auto back = expected.cells;
    for (auto& [address, byte] : back) {
        const auto sent = byte;
        if (const auto end = line.cell(context_.eeprom, address, sent, byte); end != link::ReadEnd::Answered) {
            return notVerified(end);
        }
        if (fields != nullptr && fields->report() != nullptr) {
            fields->report()->heard(address, byte, false);
        }
    }
    return compared(expected, back, context_.tables, fields != nullptr ? fields->marks() : nullptr);
}

}  // namespace korvane::fields
