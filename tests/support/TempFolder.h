// A folder on the real disk that is deleted with the object, and functions for the files in it.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Files.h"

namespace korvane::support {

class TempFolder {
public:
    TempFolder() : path_(platform::unusedName(std::filesystem::temp_directory_path(), "korvane-test.")) {
        std::filesystem::create_directory(path_);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
    ~TempFolder() {
        std::error_code error;
        std::filesystem::remove_all(path_, error);
    }

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }
    [[nodiscard]] std::filesystem::path operator/(std::string_view name) const { return path_ / name; }

    // A path that can neither be read nor made: its folder is not there.
    [[nodiscard]] std::filesystem::path nowhere() const { return path_ / "missing" / "file"; }

    std::filesystem::path write(std::string_view name, std::string_view content) const {
        const auto file = path_ / name;
        std::ofstream(file, std::ios::binary) << content;
        return file;
    }

    // The bytes of a file; a missing one is a failure.
    [[nodiscard]] std::string read(std::string_view name) const {
        std::ifstream file(path_ / name, std::ios::binary);
        if (!file.is_open()) {
            throw std::runtime_error("there is no file " + std::string(name));
        }
        return {std::istreambuf_iterator<char>(file), {}};
    }

    [[nodiscard]] bool has(std::string_view name) const { return std::filesystem::exists(path_ / name); }

    [[nodiscard]] std::vector<std::string> names() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(path_)) {
            names.push_back(entry.path().filename().string());
        }
        return names;
    }

private:
    std::filesystem::path path_;
};

}  // namespace korvane::support
