#include "maps/transfer/MiscTransfer.h"

#include <algorithm>
#include <array>

#include "core/Bytes.h"
#include "core/Numbers.h"
#include "link/Commands.h"
#include "maps/panes/MiscPane.h"
#include "maps/transfer/MapVerification.h"
#include "maps/transfer/MiscBlock.h"
#include "platform/RuntimeError.h"

namespace korvane::maps {

namespace {

constexpr int kPause = 100;  // ms, around the send and behind the display

constexpr int kIgnitionZero = 128;  // the offset's byte at 0 degrees
constexpr double kIgnitionSteps = 10.0;

using A = core::ParameterAddresses;
constexpr std::array kMiscCells{&A::RPM_LIMIT_LOW_OFF, &A::RPM_LIMIT_HI_OFF, &A::RPM_SHIFT_LOW_OFF,
                                &A::RPM_SHIFT_HI_OFF,  &A::MISC_LOW_OFF,     &A::MISC_HI_OFF,
                                &A::INJ_karkea_OFF,    &A::IGN_karkea_OFF,   &A::INJ_jakaja_OFF};

}  // namespace

void MiscReply::take(bool skipTimer, const std::function<void()>& show) const {
    if (!skipTimer) {
        timeOutCounter = 0;
        line.show(receiving);
        line.stopPoll();
    }
    show();
    line.show("Misc datan haku onnistui");
    timeOut.Enabled = false;
    timeOutCounter = 0;
    line.block(kPause);
    line.startPoll();
}

MiscTransfer::MiscTransfer(MiscPane& pane, PaneWindow& window, const char* receiving)
    : pane_(pane), window_(window), line_(window.line()), context_(window.context()), receiving_(receiving) {}

void MiscTransfer::save() {
    Sent sent;
    if (!window_.verifySwitch().On) {
        return saveTrapped(sent);
    }
    MapVerification verification(window_, "Misc", {link::kAskMiscBlock}, [this] { save(); });
    saveTrapped(sent);
    verification.misc(sent);
}

void MiscTransfer::saveTrapped(Sent& sent) {
    line_.trapped([&] {
        context_.eeprom.announceStore("misc block", {core::Overwritten::Part::Misc});
        const TransferWatch::Sending sending(line_.watch(), link::kSendMiscBlock, 0);
        // With the poll off nobody could tell any more.
        const bool heard = context_.connection.linkState.isHeard();
        line_.stopPoll();
        line_.wait(kPause);
        sendBlock(sent);
        note(sent, heard);
        line_.wait(kPause);
        line_.startPoll();
    });
}

void MiscTransfer::sendBlock(Sent& sent) {
    line_.send({link::kSendMiscBlock});
    eachValue([&](std::span<const std::uint8_t> bytes) {
        line_.send(bytes);
        sent.insert(sent.end(), bytes.begin(), bytes.end());
    });
    line_.send({link::complement(link::kSendMiscBlock), link::kStoreMiscBlock});
}

void MiscTransfer::eachValue(const std::function<void(std::span<const std::uint8_t>)>& take) const {
    const auto word = [&](std::int32_t value) { take(std::array{core::lowByte(value), core::highByte(value)}); };
    const auto byte = [&](std::uint8_t value) { take(std::array{value}); };
    word(core::toInt16(core::val(pane_.txtMisc(kRpmLimit).Text.get())));
    word(core::toInt16(core::val(pane_.txtMisc(kRpmShift).Text.get())));
    word(enableWord());
    byte(core::toByte(core::val(pane_.txtMisc(kInjectionOffset).Text.get())));
    byte(core::toByte(core::val(pane_.txtMisc(kIgnitionOffset).ToolTipText.get())));
    byte(pane_.optINJMaxOpen(0).Value ? kOpen4ms4 : kOpen2ms2);
}

std::optional<link::MiscBytes> MiscTransfer::shown() const {
    link::MiscBytes block{};
    try {
        auto place = block.begin();
        eachValue([&](std::span<const std::uint8_t> bytes) { place = std::ranges::copy(bytes, place).out; });
    } catch (const platform::RuntimeError&) {
        return {};
    }
    return block;
}

// The ECU keeps the block in the cells that are named for its values, in the same order. One that is not heard may have
// taken it.
void MiscTransfer::note(const Sent& sent, bool heard) {
    link::MiscBytes block{};
    if (!line_.isOpen() || sent.size() != block.size()) {
        return;
    }
    std::copy(sent.begin(), sent.end(), block.begin());
    if (heard) {
        context_.connection.ecuMisc.has(block);
    }
    for (std::size_t i = 0; i < block.size(); ++i) {
        context_.connection.ecuEeprom.sent(context_.tables.addresses.*kMiscCells.at(i), block.at(i));
    }
}

std::int32_t MiscTransfer::enableWord() const {
    std::int32_t word = 0;
    for (int bit = 0; bit < pane_.CheckMisc.count(); ++bit) {
        const bool ticked = pane_.CheckMisc(bit).Value == 1;
        if (ticked != (bit >= kFirstInvertedBit)) {
            word |= 1 << bit;
        }
    }
    return word;
}

void MiscTransfer::LoadMisc(bool skipTimer) {
    MiscReply{line_, pane_.TimeOutTimer, pane_.timeOutCounter, receiving_}.take(skipTimer, [this] { showBlock(); });
}

void MiscTransfer::showMiscOfFile() {
    showBlock();
    line_.show("Misc data received.. ");
}

void MiscTransfer::showBlock() {
    const auto& block = context_.tables.MiscBlock;
    const auto word = [&](std::size_t low) { return block.at(low) + 256 * block.at(low + 1); };
    pane_.txtMisc(kRpmLimit).Text = core::numberText(static_cast<std::int16_t>(word(1))).view();
    pane_.txtMisc(kRpmShift).Text = core::numberText(static_cast<std::int16_t>(word(3))).view();
    showEnableWord(word(5));
    pane_.txtMisc(kInjectionOffset).Text = core::numberText(block[7]).view();
    pane_.txtMisc(kIgnitionOffset).Text = core::numberText((block[8] - kIgnitionZero) / kIgnitionSteps).view();
    pane_.txtMisc(kIgnitionOffset).ToolTipText = core::numberText(block[8]).view();
    pane_.optINJMaxOpen(0).Value = block[9] == kOpen4ms4;
    pane_.optINJMaxOpen(1).Value = block[9] == kOpen2ms2;
    pane_.miscMarks().filled();
}

void MiscTransfer::showEnableWord(std::int32_t word) {
    for (int bit = 0; bit < pane_.CheckMisc.count(); ++bit) {
        pane_.CheckMisc(bit).Value = isTicked(word, bit) ? 1 : 0;
    }
}

}  // namespace korvane::maps
