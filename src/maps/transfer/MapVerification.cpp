#include "maps/transfer/MapVerification.h"

#include <algorithm>
#include <array>
#include <utility>

#include "fields/VerifyReport.h"
#include "maps/panes/PaneWindow.h"
#include "platform/Machine.h"

namespace korvane::maps {

namespace {

constexpr auto kNotStored = "verified, but not told to store it";
constexpr auto kReplaced = "not verified: a read came in between, see the history (Ctrl+H)";

// Numbers of the misc block: one or two bytes, low byte first.
struct MiscNumber {
    const char* name;
    std::size_t first;
    std::size_t bytes;
};
constexpr std::array kMiscNumbers{
    MiscNumber{"RPM limit", 0, 2},  MiscNumber{"RPM shift", 2, 2},  MiscNumber{"enable bits", 4, 2},
    MiscNumber{"Inj offset", 6, 1}, MiscNumber{"Ign offset", 7, 1}, MiscNumber{"injector opening", 8, 1},
};

// Cells count from 1, as the caption of a map window and the history name them.
std::string differencesOf(const SentCells& sent, const link::ReadBack::Bytes& back) {
    fields::Differences differences;
    for (std::size_t cell = 0; cell < std::min(sent.size(), back.size()); ++cell) {
        if (sent[cell] && sent[cell] != back[cell]) {
            differences.add("cell " + std::to_string(cell + 1), std::to_string(back[cell].value_or(0)),
                            std::to_string(*sent[cell]));
        }
    }
    return differences.words();
}

// What the line has told nothing of does not disagree.
bool agrees(const link::EcuMap& map, const SentCells& sent) {
    bool same = true;
    for (std::size_t cell = 0; cell < sent.size(); ++cell) {
        const auto now = map.working(cell);
        same = same && (!sent[cell] || !now || now == sent[cell]);
    }
    return same;
}

template <class Bytes>
std::string numberIn(const Bytes& bytes, const MiscNumber& number) {
    int value = 0;
    for (std::size_t i = number.bytes; i > 0; --i) {
        value = 256 * value + int{bytes[number.first + i - 1]};
    }
    return std::to_string(value);
}

// An answer has no checksum: where one differs, the words are those of a second one.
template <class Read>
std::string wordsOf(const Read& read) {
    auto words = read();
    return words == fields::Differences::kNone || words.starts_with("not verified") ? words : read();
}

}  // namespace

MapVerification::MapVerification(PaneWindow& window, std::string subject, std::vector<std::uint8_t> answers,
                                 std::function<void()> again)
    : window_(window),
      subject_(std::move(subject)),
      answers_(std::move(answers)),
      again_(std::move(again)),
      line_(window.machine().pump, window.context().connection) {
    window_.context().connection.witnesses.add(*this);
}

MapVerification::~MapVerification() {
    window_.context().connection.witnesses.remove(*this);
}

void MapVerification::frameHeard(std::uint8_t code, std::span<const std::uint8_t>) {
    replaced_ = replaced_ || (sending_ && std::ranges::find(answers_, code) != answers_.end());
}

template <class Read>
void MapVerification::run(Read&& read, controls::Object& of, std::function<bool()> holds) {
    auto& report = window_.verifyReport();
    const int number = report.begin(subject_, again_);
    const link::QuietLine quiet(window_.context().connection);
    sending_ = false;
    std::string words = read();
    if (replaced_ && words == fields::Differences::kNone) {
        words = kReplaced;
    }
    report.end(number, words, words != fields::Differences::kNone);
    if (words == fields::Differences::kNone || words == kNotStored) {
        report.holdsWhile(number, of, std::move(holds));
    }
}

template <class Read>
void MapVerification::runMap(Read&& read, link::EcuMap& map, const SentCells& sent) {
    run(std::forward<Read>(read), map, [&map, sent] { return agrees(map, sent); });
}

void MapVerification::map(const link::MapCommands& commands, const SentCells& sent, bool stored) {
    auto& maps = window_.context().connection.ecuMaps;
    auto& map = commands.ask == link::kFuelMap.ask ? maps.fuel : maps.ignition;
    runMap([&] { return mapWords(commands, sent, stored); }, map, sent);
}

std::string MapVerification::mapWords(const link::MapCommands& commands, const SentCells& sent, bool stored) {
    auto words = wordsOf([&] {
        link::ReadBack::Bytes back;
        const auto end = line_.map(commands, sent.size(), back);
        return end == link::ReadEnd::Answered ? differencesOf(sent, back) : fields::notVerified(end);
    });
    return words == fields::Differences::kNone && !stored ? kNotStored : words;
}

void MapVerification::pwm(const SentCells& sent) {
    runMap([&] { return pwmWords(sent); }, window_.context().connection.ecuMaps.pwm, sent);
}

std::string MapVerification::pwmWords(const SentCells& sent) {
    if (const auto end = line_.restart(); end != link::ReadEnd::Answered) {
        return end == link::ReadEnd::Silent ? "not verified: the ECU has not restarted" : fields::notVerified(end);
    }
    return wordsOf([&] {
        link::ReadBack::Bytes back;
        const auto end = line_.pwmTable(back);
        return end == link::ReadEnd::Answered ? differencesOf(sent, back) : fields::notVerified(end);
    });
}

void MapVerification::misc(std::span<const std::uint8_t> sent) {
    auto& misc = window_.context().connection.ecuMisc;
    run([&] { return wordsOf([&] { return miscWords(sent); }); }, misc,
        [&misc, block = std::vector(sent.begin(), sent.end())] {
            return !misc.bytes() || std::equal(misc.bytes()->begin(), misc.bytes()->end(), block.begin(), block.end());
        });
}

std::string MapVerification::miscWords(std::span<const std::uint8_t> sent) {
    link::ReadBack::Bytes back;
    if (const auto end = line_.miscBlock(back); end != link::ReadEnd::Answered) {
        return fields::notVerified(end);
    }
    if (sent.size() < back.size()) {
        return "not verified: not all of it was sent";
    }
    std::vector<std::uint8_t> heard(back.size());
    std::transform(back.begin(), back.end(), heard.begin(), [](const auto& byte) { return byte.value_or(0); });
    fields::Differences differences;
    for (const auto& number : kMiscNumbers) {
        const auto is = numberIn(heard, number);
        const auto was = numberIn(sent, number);
        if (is != was) {
            differences.add(number.name, is, was);
        }
    }
    return differences.words();
}

}  // namespace korvane::maps
