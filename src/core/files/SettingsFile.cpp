#include "core/files/SettingsFile.h"

#include <algorithm>
#include <initializer_list>
#include <span>
#include <string_view>
#include <vector>

#include "core/Checked.h"
#include "core/Numbers.h"
#include "core/files/TextFile.h"
#include "platform/Texts.h"

namespace korvane::core {

namespace {

namespace fs = std::filesystem;
using platform::RuntimeError;

constexpr int kErrorPastEnd = 62;
constexpr int kFewestParameterLines = 10;  // the header's among them
constexpr std::size_t kSmallMap = 160;
constexpr std::string_view kLargeMark = "_320";

constexpr std::string_view kLineEnds = "\r\n";
constexpr std::string_view kTokenEnds = " ,\r\n";
constexpr std::string_view kDigits = "0123456789";

// A text read from its front, by words or by lines.
class Reader {
public:
    explicit Reader(std::string_view text) : rest_(text) {}

    [[nodiscard]] bool atEnd() const { return rest_.empty(); }

    // The next word. The blanks behind it are taken with it, and so are the comma or line end behind those: after the
    // last word of a line the next line is the one that follows. Raises RuntimeError 62 if there is none.
    std::string_view token() {
        take(rest_.find_first_not_of(kTokenEnds));
        if (atEnd()) {
            throw RuntimeError(kErrorPastEnd, "Input past end of file");
        }
        const std::string_view word = take(rest_.find_first_of(kTokenEnds));
        take(rest_.find_first_not_of(' '));
        if (rest_.starts_with(',')) {
            take(1);
        } else {
            takeLineEnd();
        }
        return word;
    }

    // The rest of the line.
    std::string_view line() {
        const std::string_view text = take(rest_.find_first_of(kLineEnds));
        takeLineEnd();
        return text;
    }

private:
    std::string_view take(std::size_t size) {
        const std::string_view front = rest_.substr(0, size);
        rest_.remove_prefix(front.size());
        return front;
    }

    void takeLineEnd() {
        if (rest_.starts_with(kLineEnd)) {
            take(kLineEnd.size());
        } else if (rest_.starts_with('\r') || rest_.starts_with('\n')) {
            take(1);
        }
    }

    std::string_view rest_;
};

std::uint8_t byteOf(std::string_view token) {
    if (token.find_first_not_of(kDigits) != std::string_view::npos) {
        platform::raiseTypeMismatch();
    }
    return toByte(val(token));
}

// Reads the tables phase by phase. A fault ends the reading, and the status is the phase in which it occurred.
class TableReader {
public:
    TableReader(Reader& reader, MapImages& tables, SettingsSizes& sizes)
        : reader_(reader), tables_(tables), sizes_(sizes) {}

    int run() {
        try {
            readMap({kSettingsEmpty, kSettingsNoFuelHeader, kSettingsBadFuel}, "Injection", tables_.FuelMapIn,
                    sizes_.fuel);
            readMap({kSettingsNoIgnition, kSettingsWrongIgnition, kSettingsBadIgnition}, "Ignition", tables_.IgnMapIn,
                    sizes_.ignition);
            readTable({kSettingsNoMisc, kSettingsWrongMisc, kSettingsBadMisc}, "Misc",
                      std::span(tables_.MiscBlock).subspan(1));
            readTable({kSettingsOldType, kSettingsNoPwm, kSettingsBadPwm}, "PWM",
                      std::span(tables_.PwmMapIn).first(kSmallMap));
            sizes_.pwm = kSmallMap;
            return kSettingsRead;
        } catch (const RuntimeError&) {
            return step_;
        }
    }

private:
    // The phases of a section: its header, the check of the header, its numbers.
    struct Steps {
        int header;
        int wrongHeader;
        int numbers;
    };

    // A header says by itself how many cells follow.
    void readMap(const Steps& steps, const std::string& name, MapImage& map, std::size_t& size) {
        const bool large = header(steps, {name, name + std::string(kLargeMark)}).ends_with(kLargeMark);
        const std::size_t cells = large ? map.size() : kSmallMap;
        readNumbers(steps, std::span(map).first(cells));
        size = cells;
    }

    void readTable(const Steps& steps, const std::string& name, std::span<std::uint8_t> cells) {
        header(steps, {name});
        readNumbers(steps, cells);
    }

    std::string_view header(const Steps& steps, std::initializer_list<std::string> allowed) {
        step_ = steps.header;
        const std::string_view word = reader_.token();
        step_ = steps.wrongHeader;
        if (std::find(allowed.begin(), allowed.end(), word) == allowed.end()) {
            platform::raiseTypeMismatch();
        }
        return word;
    }

    void readNumbers(const Steps& steps, std::span<std::uint8_t> cells) {
        step_ = steps.numbers;
        for (std::uint8_t& cell : cells) {
            cell = byteOf(reader_.token());
        }
    }

    Reader& reader_;
    MapImages& tables_;
    SettingsSizes& sizes_;
    int step_ = kSettingsEmpty;
};

std::vector<std::string_view> fieldsOf(std::string_view line) {
    std::vector<std::string_view> fields;
    std::size_t end = 0;
    do {
        end = line.find('#');
        fields.push_back(line.substr(0, end));
        line.remove_prefix(std::min(fields.back().size() + 1, line.size()));
    } while (end != std::string_view::npos);
    return fields;
}

void applyParameter(std::string_view line, const UpdateReadEE& updateReadEE) {
    const auto fields = fieldsOf(platform::trimmed(line));
    const std::string_view value = checked(fields, 2);
    if (!value.empty()) {
        updateReadEE(toInt32(val(value)), toInt32(val(fields.front())), false);
    }
}

void readParameters(Reader& reader, const UpdateReadEE& updateReadEE, platform::Dialogs& dialogs) {
    try {
        int count = 0;
        while (!reader.atEnd()) {
            const std::string_view line = reader.line();
            // The first is what the tables have left: the rest of their last line, or the header.
            if (++count > 1) {
                applyParameter(line, updateReadEE);
            }
        }
        if (count < kFewestParameterLines) {
            dialogs.show({"", "error: parameter data not valid"});
        }
    } catch (const RuntimeError&) {
        dialogs.show({"", " Error while reading parameter data"});
    }
}

std::string textOfFile(const fs::path& path) {
    std::string text;
    for (const std::string& line : readLines(path)) {
        text += line;
        text += '\n';
    }
    return text;
}

}  // namespace

int LoadSettingsFile(const fs::path& path, MapImages& tables, const UpdateReadEE& updateReadEE,
                     platform::Dialogs& dialogs) {
    SettingsSizes sizes;
    return LoadSettingsFile(path, tables, updateReadEE, dialogs, sizes);
}

int LoadSettingsFile(const fs::path& path, MapImages& tables, const UpdateReadEE& updateReadEE,
                     platform::Dialogs& dialogs, SettingsSizes& sizes) {
    const std::string text = textOfFile(path);
    Reader reader(text);
    const int status = TableReader(reader, tables, sizes).run();
    if (status == kSettingsRead && updateReadEE) {
        readParameters(reader, updateReadEE, dialogs);
    }
    return status;
}

std::string settingsStatusText(int status) {
    switch (status) {
        case kSettingsRead:
            return {};
        case kSettingsEmpty:
            return "Empty file";
        case kSettingsNoFuelHeader:
        case kSettingsBadFuel:
            return "Not valid settings file";
        case kSettingsOldType:
            return " Opened old type setting file, Inj & Ign tables loaded";
        case kSettingsNoPwm:
            return " No PWM table, Inj & Ign tables loaded";
        default:
            return textOf(status);
    }
}

}  // namespace korvane::core
