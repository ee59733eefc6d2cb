// Files that hold an EEPROM, one number a line: any bytes are uploaded up to the first line that is no number from 0 to
// 255, and the virtual ECU takes them or says in one sentence why not.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Support.h"
#include "core/files/TextFile.h"
#include "ecu/memory/EepromFile.h"

namespace {

using namespace korvane;
using fuzz::require;

constexpr std::size_t kAddresses = 1011;  // of an upload, from 0 on

// Keeps what the PC sends, and answers nothing.
class Listener : public platform::LineDevice {
public:
    void setBaud(int) override {}
    void receive(std::uint8_t byte, platform::Micros) override { bytes.push_back(byte); }
    [[nodiscard]] std::optional<platform::Micros> nextDue() const override { return {}; }
    void take(platform::Micros, std::vector<std::uint8_t>&) override {}

    std::vector<std::uint8_t> bytes;
};

// The byte that a line contains, -1 for any other text.
int byteOf(std::string_view line) {
    constexpr std::string_view kBlanks = " \t";
    const auto begin = std::min(line.find_first_not_of(kBlanks), line.size());
    line = line.substr(begin, line.find_last_not_of(kBlanks) + 1 - begin);
    int value = line.empty() ? -1 : 0;
    for (const char digit : line) {
        value = digit < '0' || digit > '9' || value > 255 ? 256 : 10 * value + digit - '0';
    }
    return value > 255 ? -1 : value;
}

// How many addresses go out before the first line that is no byte.
std::size_t goodLines(const std::vector<std::string>& lines) {
    const auto checked = std::span(lines).first(std::min(lines.size(), kAddresses));
    const auto bad = std::find_if(checked.begin(), checked.end(), [](const auto& line) { return byteOf(line) < 0; });
    return static_cast<std::size_t>(bad - checked.begin());
}

void checkMessages(const std::vector<platform::MessageBox>& messages, std::size_t good) {
    const auto expected = "Line " + std::to_string(good + 1) + " of the EEPROM file is not a number from 0 to 255.";
    require(messages.size() == (good < kAddresses ? 1U : 0U));
    require(messages.empty() || messages.front().text.starts_with(expected));
}

// What the EEPROM holds behind the frames: 'W', address low and high, the value twice, and the complement of 'W'.
std::map<int, int> memoryBehind(std::span<const std::uint8_t> sent) {
    std::map<int, int> memory;
    while (!sent.empty()) {
        if (sent[0] != 'W') {
            sent = sent.subspan(1);  // a poll
            continue;
        }
        require(sent.size() >= 6 && sent[3] == sent[4] && sent[5] == 0xFF - 'W');
        memory[sent[1] + 256 * sent[2]] = sent[3];
        sent = sent.subspan(6);
    }
    return memory;
}

// The high byte of a word goes to the address behind it, and the line of that address follows.
void checkMemory(const std::map<int, int>& memory, const std::vector<std::string>& lines, std::size_t good) {
    for (std::size_t address = 0; address < good; ++address) {
        const auto found = memory.find(static_cast<int>(address));
        require(found != memory.end() && found->second == byteOf(lines[address]));
    }
    require(memory.size() <= good + 1);
}

void upload(fuzz::Bytes content) {
    Listener listener;
    fuzz::ProgramRun run(&listener);
    run.program.connectTo(1);
    run.pump.wait(1000);
    listener.bytes.clear();
    const auto file = run.folder.write("eeprom.txt", fuzz::textOf(content));
    const auto lines = core::readLines(file);

    run.dialogs.answerFile(file.string());
    run.program.frmSarn2().btnUploadEEPROM.press();
    run.pump.wait(1000);
    const auto good = goodLines(lines);
    checkMessages(run.dialogs.takeMessages(), good);
    checkMemory(memoryBehind(listener.bytes), lines, good);
    run.program.quit();
    require(run.program.ended());
}

void takeByTheEcu(fuzz::Bytes content) {
    const support::TempFolder folder;
    const auto file = folder.write("eeprom.txt", fuzz::textOf(content));
    std::vector<std::uint8_t> cells{1, 2, 3};
    if (const auto error = ecu::readEepromFile(file, cells); !error.empty()) {
        require(cells == std::vector<std::uint8_t>{1, 2, 3});
        return;
    }
    require(!cells.empty() && cells.size() <= ecu::kEepromCells);
    std::vector<std::uint8_t> again;
    require(ecu::writeEepromFile(folder / "again.txt", cells).empty());
    require(ecu::readEepromFile(folder / "again.txt", again).empty() && again == cells);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    upload({data, size});
    takeByTheEcu({data, size});
    return 0;
}
