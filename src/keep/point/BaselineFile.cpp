#include "keep/point/BaselineFile.h"

#include <algorithm>
#include <sstream>
#include <system_error>
#include <utility>

#include "analysis/steady/Grid.h"
#include "core/TimeText.h"
#include "keep/restore/RestoreJournal.h"
#include "platform/Files.h"

namespace korvane::keep {

namespace {

namespace fs = std::filesystem;
using maps::BaselineOwner;
using maps::FoundBaseline;
using maps::FuelBaseline;

constexpr std::string_view kTitle = "Korvane steady agent baseline 1\n";
constexpr std::size_t kLargest = 4096;  // bytes; one with all cells is smaller
constexpr std::size_t kOnALine = 16;
constexpr auto kDamaged = "it is damaged";

std::string bodyOf(const FuelBaseline& baseline) {
    std::ostringstream text;
    text << kTitle << "ecu " << baseline.owner.type << ' ' << baseline.owner.version << '\n'
         << "map " << baseline.owner.columns << ' ' << baseline.owner.rows << '\n'
         << "time " << core::dateText(baseline.time) << ' ' << core::timeText(baseline.time) << '\n'
         << "cells " << baseline.cells.size() << '\n';
    for (std::size_t cell = 0; cell < baseline.cells.size(); ++cell) {
        const bool last = cell % kOnALine == kOnALine - 1 || cell + 1 == baseline.cells.size();
        text << int{baseline.cells[cell]} << (last ? '\n' : ' ');
    }
    return text.str();
}

// Whatever the text is: who calls compares what comes of it with the text.
FuelBaseline readLoosely(const std::string& body) {
    std::istringstream text(body.substr(std::min(kTitle.size(), body.size())));
    FuelBaseline baseline;
    std::string word;
    char mark = ' ';
    auto& time = baseline.time;
    std::size_t count = 0;
    text >> word >> baseline.owner.type >> baseline.owner.version;
    text >> word >> baseline.owner.columns >> baseline.owner.rows;
    text >> word >> time.year >> mark >> time.month >> mark >> time.day >> time.hour >> mark >> time.minute >> mark >>
        time.second;
    text >> word >> count;
    for (int byte = 0; baseline.cells.size() < std::min(count, steady::kMostCells) && text >> byte;) {
        baseline.cells.push_back(static_cast<std::uint8_t>(byte));
    }
    return baseline;
}

}  // namespace

std::string encodeBaseline(const FuelBaseline& baseline) {
    return sealedJournal(bodyOf(baseline));
}

FoundBaseline decodeBaseline(std::string_view bytes) {
    const auto end = bytes.rfind("end ");
    if (bytes.size() > kLargest || end == std::string_view::npos) {
        return {{}, kDamaged};
    }
    const std::string body(bytes.substr(0, end));
    if (bytes != sealedJournal(body)) {
        return {{}, kDamaged};
    }
    if (!body.starts_with(kTitle)) {
        return {{}, "it is of a later version of the program"};
    }
    auto baseline = readLoosely(body);
    return bodyOf(baseline) == body ? FoundBaseline{std::move(baseline), {}} : FoundBaseline{{}, kDamaged};
}

fs::path BaselineFile::path(const BaselineOwner& owner) const {
    return folder_ / ("steady-" + std::to_string(owner.type) + '-' + std::to_string(owner.version) + ".baseline");
}

FoundBaseline BaselineFile::load(const BaselineOwner& owner) const {
    std::error_code error;
    if (!fs::exists(fs::symlink_status(path(owner), error))) {
        return {};
    }
    const auto bytes = platform::readFile(path(owner), kLargest);
    if (!bytes) {
        return {{}, "it can't be read"};
    }
    auto found = decodeBaseline(*bytes);
    if (found.baseline && found.baseline->owner != owner) {
        return {{}, "it is of another map"};
    }
    return found;
}

std::string BaselineFile::save(const FuelBaseline& baseline) const {
    const auto error = platform::replaceFile(path(baseline.owner), encodeBaseline(baseline), toDisk_);
    return error ? error.message() : std::string();
}

}  // namespace korvane::keep
