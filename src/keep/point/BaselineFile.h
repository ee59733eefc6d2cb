// The fuel map from which the steady agent's authority counts: a small text file, one for each kind of ECU.
// docs/file-formats.md has the format.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "keep/restore/RestoreJournal.h"
#include "platform/DiskFlush.h"
#include "platform/WallTime.h"

namespace korvane::keep {

struct BaselineKey {
    EcuKind ecu;
    int columns = 0;
    int rows = 0;

    friend bool operator==(const BaselineKey&, const BaselineKey&) = default;
};

struct Baseline {
    BaselineKey key;
    platform::WallTime time;
    std::vector<std::uint8_t> cells;  // row by row; may end before the map does

    friend bool operator==(const Baseline&, const Baseline&) = default;
};

[[nodiscard]] std::string encodeBaseline(const Baseline& baseline);

// Either the baseline, or in plain words what is wrong; both empty where there is no file. Bytes that were cut or
// changed anywhere are never taken for whole.
struct FoundBaseline {
    std::optional<Baseline> baseline;
    std::string damage;
};
[[nodiscard]] FoundBaseline decodeBaseline(std::string_view bytes);

// In the program's folder. A write replaces the file in one step, and outlasts a loss of power where `toDisk` does.
class BaselineFile {
public:
    explicit BaselineFile(std::filesystem::path folder, platform::DiskFlush toDisk = {})
        : folder_(std::move(folder)), toDisk_(std::move(toDisk)) {}

    [[nodiscard]] FoundBaseline load(const BaselineKey& key) const;
    // In plain words why it was not written; empty if it was.
    [[nodiscard]] std::string save(const Baseline& baseline) const;
    [[nodiscard]] std::filesystem::path path(const BaselineKey& key) const;

private:
    std::filesystem::path folder_;
    platform::DiskFlush toDisk_;
};

}  // namespace korvane::keep
