// The tables and examples of the line protocol hold for the bytes that both ends of the line really send.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <optional>
#include <set>
#include <sstream>

#include "app/Process.h"
#include "documents/Markdown.h"
#include "link/Frames.h"
#include "maps/grid/MapConversions.h"
#include "maps/grid/MapGeometry.h"
#include "support/TempFolder.h"
#include "support/VirtualProgram.h"

namespace korvane::documents {
namespace {

using Bytes = std::vector<int>;
using testing::HasSubstr;

const Document& protocol() {
    static const Document document = documents::document("docs/protocol.md");
    return document;
}

// `'y'` is the letter's code, `247` the number itself.
int codeOf(const std::string& cell) {
    const auto text = plain(cell);
    return text.starts_with('\'') ? static_cast<unsigned char>(text.at(1)) : std::stoi(text);
}

int complementOf(int code) {
    return 255 - code;
}

// What a command is made of, behind its first byte.
struct Form {
    bool counted = false;
    bool shortToo = false;  // also as its first byte alone
    int body = 0;
    bool complement = true;
};

// "fixed: cell, cell, value, value" and "fixed: 160 bytes".
int bodyOf(const std::string& text) {
    if (const auto bytes = found(text, R"((\d+) bytes?)"); !bytes.empty()) {
        return std::stoi(bytes.front());
    }
    return text.starts_with("fixed: ") ? static_cast<int>(std::ranges::count(text, ',')) + 1 : 0;
}

Form formOf(const std::string& text) {
    Form form;
    form.counted = text.starts_with("counted");
    form.shortToo = text.find("or single") != std::string::npos;
    form.complement = !text.starts_with("single");
    form.body = form.counted ? std::stoi(text.substr(text.find(", ") + 2)) : bodyOf(text);
    return form;
}

std::map<int, Form> commands() {
    std::map<int, Form> forms;
    for (const auto& row : protocol().tables) {
        if (row.header.at(0) == "command" && row.header.at(1) == "form, body") {
            for (const auto& command : row.rows) {
                forms[codeOf(command.at(0))] = formOf(command.at(1));
            }
        }
    }
    return forms;
}

std::set<int> replies() {
    std::set<int> codes;
    for (const auto& row : tableIn(protocol(), "All replies").rows) {
        codes.insert(codeOf(row.at(0)));
        std::ostringstream hex;
        hex << std::uppercase << std::hex << codeOf(row.at(0));
        EXPECT_EQ(row.at(1), hex.str());
    }
    return codes;
}

// Where the first thing ends that does not follow the tables; the length if all do.
std::size_t wellFormedFrames(const Bytes& bytes) {
    static const auto codes = replies();
    std::size_t at = 0;
    while (at + 1 < bytes.size() && codes.contains(bytes[at])) {
        const std::size_t end = at + 2 + static_cast<std::size_t>(bytes[at + 1]);
        if (end >= bytes.size() || bytes[end] != complementOf(bytes[at])) {
            return at;
        }
        at = end + 1;
    }
    return at;
}

std::optional<std::size_t> endOfCommand(const Bytes& bytes, std::size_t at) {
    static const auto forms = commands();
    const auto form = forms.find(bytes[at]);
    if (form == forms.end()) {
        return std::nullopt;
    }
    const auto& [counted, shortToo, body, complement] = form->second;
    const std::size_t last = at + (counted ? 1 : 0) + static_cast<std::size_t>(body) + (complement ? 1 : 0);
    const bool lengthFits = !counted || (at + 1 < bytes.size() && bytes[at + 1] == body);
    const bool whole = last < bytes.size() && lengthFits && (!complement || bytes[last] == complementOf(bytes[at]));
    return whole ? std::optional(last + 1) : (shortToo ? std::optional(at + 1) : std::nullopt);
}

std::size_t wellFormedCommands(const Bytes& bytes) {
    std::size_t at = 0;
    while (at < bytes.size()) {
        const auto end = endOfCommand(bytes, at);
        if (!end) {
            return at;
        }
        at = *end;
    }
    return at;
}

// A line of an example: "1000 <  79 05 FF  what it is", the time only in some.
struct Shown {
    std::optional<int> time;
    char direction;
    Bytes bytes;
    bool cut = false;  // ".." stands for bytes that are left out
};

Bytes bytesIn(const std::string& text) {
    Bytes bytes;
    for (const auto& byte : found(text, R"((?:^|\s)([0-9A-F]{2})(?=\s|$))")) {
        bytes.push_back(std::stoi(byte, nullptr, 16));
    }
    return bytes;
}

// Bytes end at three blanks, or with the line.
std::optional<Shown> shownIn(const std::string& line) {
    const auto parts = found(line, R"(^(\s*\d*\s*[<>]  ))");
    if (parts.empty()) {
        return std::nullopt;
    }
    const std::string bytes = line.substr(parts.front().size());
    Shown shown{{},
                parts.front().at(parts.front().find_first_of("<>")),
                bytesIn(bytes.substr(0, bytes.find("   "))),
                line.find("..") != std::string::npos};
    if (const auto time = found(parts.front(), R"((\d+))"); !time.empty()) {
        shown.time = std::stoi(time.front());
    }
    return shown;
}

std::vector<Shown> allShown() {
    std::vector<Shown> all;
    for (const auto& block : protocol().blocks) {
        for (const auto& line : block.lines) {
            if (const auto shown = shownIn(line)) {
                all.push_back(*shown);
            }
        }
    }
    return all;
}

TEST(ProtocolExamples, AreWellFormed) {
    const auto all = allShown();
    EXPECT_GT(all.size(), 30U);
    for (const auto& shown : all) {
        if (!shown.cut) {
            const auto good = shown.direction == '<' ? wellFormedFrames(shown.bytes) : wellFormedCommands(shown.bytes);
            EXPECT_EQ(good, shown.bytes.size()) << shown.direction << testing::PrintToString(shown.bytes);
        }
    }
}

TEST(ProtocolTables, HaveTheRepliesOfTheProgram) {
    std::set<int> codes;
    for (const auto& frame : link::kEcuFrames) {
        codes.insert(frame.code);
    }
    EXPECT_EQ(replies(), codes);
    EXPECT_THAT(contentOf(projectFolder() / "docs/protocol.md"),
                HasSubstr("one of the " + std::to_string(codes.size()) + " below"));
}

std::set<int> codesWithComplement() {
    std::set<int> codes = replies();
    for (const auto& [code, form] : commands()) {
        if (form.complement) {
            codes.insert(code);
        }
    }
    return codes;
}

TEST(ProtocolTables, HaveTheComplementOfEachCodeThatEndsWithOne) {
    std::set<int> documented;
    for (const auto& pair : found(protocol().prose, "([0-9A-F]{2} → [0-9A-F]{2})")) {
        const int code = std::stoi(pair, nullptr, 16);
        EXPECT_EQ(std::stoi(pair.substr(pair.size() - 2), nullptr, 16), complementOf(code)) << pair;
        documented.insert(code);
    }
    EXPECT_EQ(documented, codesWithComplement());
}

// Bytes of one direction, and the time of each.
struct Stream {
    Bytes bytes;
    std::vector<int> times;
};

std::map<char, Stream> readTrace(const std::string& text) {
    std::map<char, Stream> streams;
    std::istringstream stream(text);
    int time = 0;
    char direction = 0;
    std::string byte;
    while (stream >> time >> direction >> byte) {
        streams[direction].bytes.push_back(std::stoi(byte, nullptr, 16));
        streams[direction].times.push_back(time);
    }
    return streams;
}

std::map<char, Stream> trace(const std::string& ecu, const std::string& commands) {
    const support::TempFolder folder;
    const auto outcome = app::runProgram("korvane-tuner",
                                         {"--headless", "--virtual-time", "--ecu", ecu, "--folder",
                                          folder.path().string(), "--trace", (folder / "trace").string()},
                                         commands);
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_THAT(outcome.output, testing::Not(HasSubstr("error"))) << outcome.output;
    return readTrace(folder.read("trace"));
}

// What the buttons of most windows send. The live poll and the identity run beside all of it.
constexpr const char* kSession =
    "click frmSarn2.btnConnect\nwait 500\n"
    "click frmSarn2.btnKartat\nwait 3000\n"
    "click frmSarn2.Command3\nwait 2000\nclick frmSarn2.Command4\nwait 500\n"
    "click frmSarn2.btnAsetukset\nwait 100\nclick frmMisc.btnSaveMotorbrake\n"
    "choose frmMisc.tbsOptions 2\nclick frmMisc.btnInjMode\n"
    "choose frmMisc.tbsOptions 5\nclick frmMisc.btn0thr\nclick frmMisc.btn100thr\n"
    "click frmSarn2.Command2\nwait 2000\n"
    "click frmSarn2.Command5\nclick frmIGNDebug.Command1\nwait 300\n"
    "set frmIGNDebug.txtSparks.Text \"3\"\nclick frmIGNDebug.btnCleanSparkPlugs\nwait 100\n"
    "click frmIGNDebug.Command2\nwait 100\n";

void expectAllWellFormed(const std::string& ecu, const std::string& commands) {
    auto streams = trace(ecu, commands);
    EXPECT_GT(streams['<'].bytes.size(), 500U);
    EXPECT_EQ(wellFormedFrames(streams['<'].bytes), streams['<'].bytes.size());
    EXPECT_GT(streams['>'].bytes.size(), 500U);
    EXPECT_EQ(wellFormedCommands(streams['>'].bytes), streams['>'].bytes.size());
}

TEST(ProtocolTables, HoldForASessionWithOrdinaryMaps) {
    expectAllWellFormed("type=11,drive=idle",
                        std::string(kSession) +
                            "click frmMaps.chkOnlineChanges\nkey frmMaps.txtFuel(5) 187\nkey frmMaps.txtIgn(5) 189\n"
                            "click frmMaps.btnWriteFuel\nclick frmMaps.btnWriteIgn\nclick frmMaps.btnSaveMisc\n"
                            "click frmMaps.chkShowPwm\nclick frmMaps.btnSavePWM\nwait 1000\n");
}

TEST(ProtocolTables, HoldForASessionWithLargeMaps) {
    expectAllWellFormed("type=14,drive=idle",
                        std::string(kSession) + "click frmMaps_Large.btnWriteFuel\nclick frmMaps_Large.btnWriteIgn\n");
}

TEST(ProtocolExamples, ShowTheFirstBytesOfAConnection) {
    auto streams =
        trace("type=11,drive=idle", "choose frmSarn2.ComboRefresh 4\nclick frmSarn2.btnConnect\nwait 1300\n");
    std::map<char, std::size_t> at;
    int lines = 0;
    for (const auto& shown : allShown()) {
        if (!shown.time) {
            continue;
        }
        const auto& [bytes, times] = streams[shown.direction];
        auto& next = at[shown.direction];
        ASSERT_LE(next + shown.bytes.size(), bytes.size());
        EXPECT_EQ(times[next], *shown.time);
        EXPECT_EQ(Bytes(bytes.begin() + static_cast<std::ptrdiff_t>(next),
                        bytes.begin() + static_cast<std::ptrdiff_t>(next + shown.bytes.size())),
                  shown.bytes)
            << "at " << *shown.time;
        next += shown.bytes.size();
        ++lines;
    }
    EXPECT_GT(lines, 10);
}

// The values in the document's reading of its live frame, with which frmSarn2 shows that frame.
TEST(ProtocolExamples, ShowALiveFrameAndItsValues) {
    const auto text = contentOf(projectFolder() / "docs/protocol.md");
    const auto frame = found(text, R"(<  (52 0D  [0-9A-F ]+))");
    ASSERT_EQ(frame.size(), 1U);
    std::string hex = frame.front();
    std::erase(hex, ' ');
    const support::TempFolder folder;
    std::string commands = "click frmSarn2.btnConnect\nreceive " + hex + "\n";
    for (const int label : {0, 1, 2, 3, 4, 6, 7}) {
        commands += "get frmSarn2.lblValue(" + std::to_string(label) + ").Caption\n";
    }
    const auto outcome = app::runProgram(
        "korvane-tuner", {"--headless", "--virtual-time", "--ecu", "none", "--folder", folder.path().string()},
        commands);
    const auto values = found(outcome.output, "ok \"([^\"]*)\"");
    EXPECT_EQ(values.size(), 7U);
    const auto reading = text.substr(text.find("at the top of this page, read"));
    for (const auto& value : values) {
        EXPECT_THAT(reading.substr(0, reading.find("###")), HasSubstr(value));
    }
}

std::set<int> numbersIn(const std::string& text) {
    std::set<int> numbers;
    for (const auto& number : found(text, R"((\d+))")) {
        numbers.insert(std::stoi(number));
    }
    return numbers;
}

TEST(ProtocolTables, HaveTheTypesOfTheFirmware) {
    const support::VirtualProgram program;
    std::set<int> documented;
    for (const auto& table : protocol().tables) {
        if (table.header == std::vector<std::string>{"type", "firmware"}) {
            for (const auto& row : table.rows) {
                documented.merge(numbersIn(row.front()));
            }
        }
    }
    std::set<int> known;
    for (int type = 0; type < 256; ++type) {
        if (program.tables.SWTypeNames.at(static_cast<std::size_t>(type)) != "-") {
            known.insert(type);
        }
    }
    EXPECT_EQ(documented, known);
}

TEST(ProtocolTables, HaveTheShapesOfTheMaps) {
    const auto table = tableIn(protocol(), "Maps");
    const std::map<int, maps::MapGeometry> shapes{{1, maps::kOrdinaryMaps}, {2, maps::kLargeMaps}};
    for (const auto& [column, shape] : shapes) {
        const auto cell = [&table, at = static_cast<std::size_t>(column)](std::size_t row) {
            return table.rows.at(row).at(at);
        };
        EXPECT_THAT(cell(0), testing::StartsWith(std::to_string(shape.cells())));
        EXPECT_EQ(cell(1), std::to_string(shape.rows) + " by " + std::to_string(shape.columns));
        EXPECT_EQ(cell(2), "row * " + std::to_string(shape.columns) + " + column");
        EXPECT_THAT(cell(3), HasSubstr(std::to_string(shape.rpmOf(0)) + " to " +
                                       std::to_string(shape.rpmOf(shape.columns - 1))));
        EXPECT_THAT(cell(4), HasSubstr("up to " + std::to_string(10 * shape.rows)));
    }
}

double fraction(const std::string& text) {
    const auto slash = text.find('/');
    return std::stod(text.substr(0, slash)) / std::stod(text.substr(slash + 1));
}

// A number that has no row of its own stands for any other.
std::uint8_t multiplierOf(const std::string& text) {
    return static_cast<std::uint8_t>(text.starts_with("any") ? 9 : std::stoi(text));
}

TEST(ProtocolTables, HaveTheScalesOfTheFuelMap) {
    support::VirtualProgram program;
    auto& tables = program.tables;
    const auto setParameter = [&tables](int address, std::uint8_t value) {
        tables.EEParams.at(static_cast<std::size_t>(address)).value = value;
    };
    const auto rows = tableIn(protocol(), "Fuel").rows;
    EXPECT_EQ(rows.size(), 11U);
    for (const auto& row : rows) {
        setParameter(tables.addresses.INJ_MODE_OFFSET, static_cast<std::uint8_t>(std::stoi(row.at(0))));
        setParameter(tables.addresses.INJ_MULTIPLIER_OFF, multiplierOf(row.at(1)));
        EXPECT_NEAR(maps::ordinaryInjectionScale(tables), fraction(row.at(2)), 1e-12) << row.at(0) << row.at(1);
        EXPECT_NEAR(maps::largeInjectionScale(tables), fraction(row.at(3)), 1e-12) << row.at(0) << row.at(1);
    }
}

TEST(ProtocolTables, HaveTheScalesOfTheOtherMaps) {
    const support::VirtualProgram program;
    std::map<std::string, std::string> largest;
    for (const auto& row : tableIn(protocol(), "Ignition and PWM").rows) {
        largest[row.at(0)] = row.at(2);
    }
    EXPECT_EQ(std::stod(largest.at("ignition")), maps::ignitionDegrees(255));
    EXPECT_EQ(std::stod(largest.at("PWM")), maps::pwmTime(255, program.tables.TickD));
}

}  // namespace
}  // namespace korvane::documents
