// Preferences in one text file.
//
//     ; lines that begin with ; or # are comments
//     [Software\KorvaneTuner\Settings]
//     Port=2
//     [Ports]
//     COM3=/dev/ttyUSB0
//
// The key is in brackets, with one `name=text` line under it for each value. Upper and lower case of keys and names
// count as the same. Blanks around a name and a text are left out, unless the text is in double quotes.
#pragma once

#include <filesystem>
#include <vector>

#include "platform/PreferencesStore.h"

namespace korvane::platform {

class FilePreferences : public PreferencesStore {
public:
    enum class Writes { IntoTheFile, ForThisRun };

    // Reads the file. With Writes::ForThisRun it stays as it is, whatever is written. One that is missing, can't be
    // read, holds other than text or more than 1 MiB counts as empty.
    explicit FilePreferences(const std::filesystem::path& path, Writes writes = Writes::IntoTheFile);

    [[nodiscard]] std::optional<std::string> read(std::string_view key, std::string_view name) const override;

    // Also puts the value into the file at once, and makes the folder if there is none. The file is read again first:
    // what a user wrote into it meanwhile, comments and unknown lines stay. A file that can't be understood is kept
    // beside the new one, with ".damaged" behind its name and more if that is taken. If the file can't be replaced it
    // stays as it was. A text ends at its first control character but tab; a name holds no "=".
    void write(std::string_view key, std::string_view name, std::string_view text) override;

private:
    enum class FileState { Missing, Text, Damaged };
    struct Entry {
        std::string key;
        std::string name;
        std::string text;
    };

    FileState reload();
    void remember(std::string_view key, std::string_view name, std::string_view text);
    [[nodiscard]] bool keepDamagedFile() const;
    void save(FileState found) const;

    std::filesystem::path path_;
    Writes writes_;
    std::vector<std::string> lines_;  // the file's, with what this run has written
    std::vector<Entry> written_;
};

}  // namespace korvane::platform
