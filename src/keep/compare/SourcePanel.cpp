#include "keep/compare/SourcePanel.h"

#include <algorithm>

#include "core/Bytes.h"
#include "core/Checked.h"
#include "core/TimeText.h"
#include "keep/compare/FileSides.h"
#include "platform/Dialogs.h"
#include "platform/Machine.h"
#include "platform/RuntimeError.h"

namespace korvane::keep {

namespace {

constexpr const char* kFilter = "All Files (*.txt)|*.txt";

}  // namespace

SourcePanel::SourcePanel(controls::Window& window, const Names& names, const CompareContext& context)
    : list(window, names.list),
      file(window, names.file, "Other file..."),
      points(window, names.points),
      words(window, names.words),
      window_(window),
      context_(context) {
    fillList();
    list.Click = [this] { listChosen(); };
    file.Click = [this] { askForFile(); };
    points.Click = [this] { pointChosen(); };
}

// The proposal is the last of the kinds, and there only once there is one.
void SourcePanel::fillList() {
    const int kinds = context_.proposal && context_.proposal() ? kSourceKinds : kSourceKinds - 1;
    for (int kind = list.ListCount(); kind < kinds; ++kind) {
        list.AddItem(std::string(nameOf(static_cast<Source::Kind>(kind))));
    }
}

void SourcePanel::open(const Source& source) {
    fillList();
    if (source.isPoint()) {
        fillPoints();
    }
    take(source);
}

void SourcePanel::fillPoints() {
    selecting_ = true;
    names_ = context_.points ? context_.points() : std::vector<PointName>();
    points.Clear();
    for (const auto& point : names_) {
        points.AddItem(point.words);
    }
    selecting_ = false;
}

void SourcePanel::take(const Source& source) {
    source_ = source;
    select();
    load();
}

// Shows the source in the lists.
void SourcePanel::select() {
    selecting_ = true;
    list.ListIndex = static_cast<int>(source_.kind);
    file.Visible = source_.isFile();
    points.Visible = source_.isPoint();
    const auto found = std::find_if(names_.begin(), names_.end(),
                                    [this](const PointName& point) { return point.name == source_.what; });
    points.ListIndex = source_.isPoint() && found != names_.end() ? static_cast<int>(found - names_.begin()) : -1;
    selecting_ = false;
}

void SourcePanel::listChosen() {
    const Source chosen{static_cast<Source::Kind>(list.ListIndex.get()), {}};
    if (selecting_ || chosen.kind == source_.kind) {
        return;
    }
    if (chosen.isFile()) {
        askForFile();
        return;
    }
    Source source = chosen;
    if (source.isPoint()) {
        fillPoints();
        source.what = source_.isPoint() ? source_.what : names_.empty() ? "" : names_.front().name;
    }
    take(source);
    changed();
}

// A dialog without an answer leaves everything as it was.
void SourcePanel::askForFile() {
    const auto kind = static_cast<Source::Kind>(list.ListIndex.get());
    const std::string title = kind == Source::Kind::Tune ? "Compare with tune" : "Compare with EEPROM image";
    const std::string path = window_.machine().dialogs.choose({platform::FileDialog::Kind::Open, title, kFilter});
    if (path.empty()) {
        select();
        return;
    }
    take({kind, path});
    changed();
}

void SourcePanel::pointChosen() {
    if (!selecting_ && points.ListIndex >= 0) {
        take({source_.kind, core::checked(names_, points.ListIndex.get()).name});
        changed();
    }
}

void SourcePanel::load() {
    failure_.clear();
    side_.reset();
    try {
        side_ = read(context_.now());
    } catch (const std::exception& failure) {
        failure_ = failure.what();
    }
    tell();
}

Side SourcePanel::read(const Snapshot& now) const {
    switch (source_.kind) {
        case Source::Kind::Tune:
            return readTune(source_.what);
        case Source::Kind::Image:
            return readImage(source_.what, context_.tables.addresses);
        case Source::Kind::PointEcu:
        case Source::Kind::PointDesk:
            return readPoint();
        case Source::Kind::Proposal:
            return readProposal();
        case Source::Kind::Desk: {
            Side side = sideOfDesk(now);
            addBoxes(side);
            return side;
        }
        default:
            return sideOfEcu(now, context_.before());
    }
}

Side SourcePanel::readProposal() const {
    const auto proposal = context_.proposal ? context_.proposal() : std::nullopt;
    if (!proposal) {
        throw platform::RuntimeError(platform::kErrorSubscript, "The steady agent has proposed nothing yet.");
    }
    return *proposal;
}

Side SourcePanel::readPoint() const {
    if (source_.what.empty() || !context_.point) {
        throw platform::RuntimeError(platform::kErrorSubscript, "There is no restore point yet.");
    }
    const Snapshot snapshot = context_.point(source_.what);
    Side side = source_.kind == Source::Kind::PointEcu ? sideOfEcu(snapshot) : sideOfDesk(snapshot);
    side.name =
        "restore point " + core::dateText(snapshot.time) + ' ' + core::timeText(snapshot.time) + ", " + side.name;
    return side;
}

// What the settings window and the map window would send.
void SourcePanel::addBoxes(Side& side) const {
    side.misc = context_.miscOfBoxes ? context_.miscOfBoxes() : std::nullopt;
    for (const auto& [address, value, isWord] : context_.frmMisc.settings().held()) {
        const auto put = [&](std::int64_t at, std::uint8_t byte) {
            if (at >= 0 && at < static_cast<std::int64_t>(side.eeprom.size())) {
                side.eeprom.at(static_cast<std::size_t>(at)) = byte;
            }
        };
        put(address, core::lowByte(value));
        if (isWord) {
            put(std::int64_t{address} + 1, core::highByte(value));
        }
    }
}

void SourcePanel::refresh(const Snapshot& now) {
    if (source_.isLive() && side_) {
        side_ = read(now);
        tell();
    }
}

void SourcePanel::tell() {
    words.Caption = !side_ ? failure_ : side_->note;
    words.Visible = !words.Caption.get().empty();
}

}  // namespace korvane::keep
