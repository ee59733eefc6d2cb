#include "maps/transfer/MapWriter.h"

#include "link/Commands.h"
#include "link/EcuMap.h"
#include "maps/grid/MapImages.h"
#include "maps/panes/PaneWindow.h"

namespace korvane::maps {

namespace {

constexpr std::size_t kHalf = link::EcuMap::kHalf;
constexpr int kBytePause = 1;      // ms; the ECU can't take the bytes of a map any faster
constexpr int kCommitPause = 100;  // ms, before and behind the commit letter
constexpr int kAckPause = 5;       // ms
constexpr int kFirstAckTurns = 100;
constexpr int kSecondAckTurns = 200;
constexpr int kFirstAck = 1;
constexpr int kBothAcks = 11;

}  // namespace

struct MapWriter::Kind {
    const MapImages& images;
    std::int16_t core::SharedTables::*acks;
    const link::MapCommands& commands;
    bool pollsBeforeCommit;  // the poll is switched on and off again; nothing runs in between
    const char* stored;
    core::Overwritten::Part part;
    const char* subject;  // of its verification
    const char* sending;
    const char* done;
};

const MapWriter::Kind MapWriter::kFuel{
    .images = kFuelImages,
    .acks = &core::SharedTables::FuelSendAcks,
    .commands = link::kFuelMap,
    .pollsBeforeCommit = false,
    .stored = "fuel map",
    .part = core::Overwritten::Part::Fuel,
    .subject = "Fuel",
    .sending = "Sending  fuel data",
    .done = "Fuel kartta lähetetty ja talletettu autoon",
};
const MapWriter::Kind MapWriter::kIgnition{
    .images = kIgnitionImages,
    .acks = &core::SharedTables::IgnSendAcks,
    .commands = link::kIgnitionMap,
    .pollsBeforeCommit = true,
    .stored = "ignition map",
    .part = core::Overwritten::Part::Ignition,
    .subject = "Ignition",
    .sending = "Sending  Ignition data",
    .done = "Ignition kartta lähetetty ja talletettu autoon",
};

MapWriter::MapWriter(PaneWindow& window, const Kind& kind, Halves halves)
    : window_(window), tables_(window.context().tables), line_(window.line()), kind_(kind), halves_(halves) {}

// What is read back is compared with the bytes that went out: edits go on meanwhile.
void MapWriter::write() {
    Sent sent;
    if (!window_.verifySwitch().On) {
        return writeTrapped(sent);
    }
    MapVerification verification(window_, kind_.subject, {kind_.commands.ask, kind_.commands.askSecondHalf},
                                 [this] { write(); });
    writeTrapped(sent);
    verification.map(kind_.commands, sent.cells, sent.stored);
}

void MapWriter::writeTrapped(Sent& sent) {
    sent.cells.resize(halves_ == Halves::Two ? 2 * kHalf : kHalf);
    const core::MapHistory::Hold hold(window_.context().history);
    line_.trapped([&] {
        window_.context().eeprom.announceStore(kind_.stored, {kind_.part});
        const TransferWatch::Sending sending(line_.watch(), kind_.commands.send, halves_ == Halves::Two ? 2 : 1);
        if (halves_ == Halves::Two) {
            writeHalves(sent);
        } else {
            writeWhole(sent);
        }
    });
}

void MapWriter::writeWhole(Sent& sent) {
    fields::Progress progress(window_.prgTransfer, kHalf);
    line_.stopPoll();
    line_.show(kind_.sending);
    sendHalf(kind_.commands.send, 0, progress, sent);
    if (kind_.pollsBeforeCommit) {
        line_.startPoll();
        line_.stopPoll();
    }
    line_.wait(kCommitPause);
    store(sent);
    line_.wait(kCommitPause);
    line_.startPoll();
    line_.show(kind_.done);
}

// The second half is sent also when the first was not acknowledged; only the commit depends on both.
void MapWriter::writeHalves(Sent& sent) {
    fields::Progress progress(window_.prgTransfer, 2 * kHalf);
    line_.stopPoll();
    line_.show(kind_.sending);
    tables_.*kind_.acks = 0;
    sendHalf(kind_.commands.send, 0, progress, sent);
    static_cast<void>(acknowledged(kFirstAck, kFirstAckTurns));
    sendHalf(kind_.commands.sendSecondHalf, kHalf, progress, sent);
    if (acknowledged(kBothAcks, kSecondAckTurns)) {
        line_.stopPoll();
        line_.wait(kCommitPause);
        store(sent);
        line_.show(kind_.done);
    }
    line_.wait(kCommitPause);
    line_.startPoll();
}

void MapWriter::sendHalf(std::uint8_t command, std::size_t first, fields::Progress& progress, Sent& sent) {
    const auto others = line_.bytesOfOthers();
    line_.send({command});
    for (std::size_t cell = first; cell < first + kHalf;) {
        line_.pump();
        if (!line_.isDrained()) {
            line_.wait(kBytePause);
            continue;
        }
        const std::uint8_t byte = (tables_.*kind_.images.edited)[cell];
        line_.wait(kBytePause);
        line_.send({byte});
        inEcu().sending(cell, byte);
        sent.cells[cell++] = byte;
        progress.step();
    }
    line_.send({link::complement(command)});
    if (line_.bytesOfOthers() != others) {
        line_.watch().mixedInto(kind_.commands.send);
    }
}

void MapWriter::store(Sent& sent) {
    line_.send({kind_.commands.store});
    sent.stored = true;
    inEcu().stored();
}

link::EcuMap& MapWriter::inEcu() {
    return window_.context().connection.ecuMaps.*kind_.images.inEcu;
}

bool MapWriter::acknowledged(int count, int turns) {
    for (int turn = 0; turn < turns; ++turn) {
        line_.pump();
        line_.wait(kAckPause);
        if (tables_.*kind_.acks == count) {
            return true;
        }
    }
    return false;
}

}  // namespace korvane::maps
