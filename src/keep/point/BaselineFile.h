// The fuel map from which the steady agent's authority counts: a small text file, one for each kind of ECU.
// docs/file-formats.md has the format.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "maps/steady/FuelBaseline.h"
#include "platform/DiskFlush.h"

namespace korvane::keep {

[[nodiscard]] std::string encodeBaseline(const maps::FuelBaseline& baseline);

// Bytes that were cut or changed anywhere are never taken for whole.
[[nodiscard]] maps::FoundBaseline decodeBaseline(std::string_view bytes);

// In the program's folder. A write replaces the file in one step, and outlasts a loss of power where `toDisk` does.
class BaselineFile {
public:
    explicit BaselineFile(std::filesystem::path folder, platform::DiskFlush toDisk = {})
        : folder_(std::move(folder)), toDisk_(std::move(toDisk)) {}

    [[nodiscard]] maps::FoundBaseline load(const maps::BaselineOwner& owner) const;
    // In plain words why it was not written; empty if it was.
    [[nodiscard]] std::string save(const maps::FuelBaseline& baseline) const;
    [[nodiscard]] std::filesystem::path path(const maps::BaselineOwner& owner) const;

private:
    std::filesystem::path folder_;
    platform::DiskFlush toDisk_;
};

}  // namespace korvane::keep
