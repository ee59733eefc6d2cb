#include "settings/ParameterTools.h"

#include "core/Bytes.h"
#include "core/Checked.h"
#include "core/Numbers.h"
#include "core/files/ChannelFile.h"
#include "core/tables/ModuleReg.h"
#include "fields/Fields.h"
#include "platform/Dialogs.h"
#include "platform/Machine.h"
#include "platform/RuntimeError.h"
#include "settings/ColumnSort.h"

namespace korvane::settings {

namespace {

constexpr int kAddressColumn = 2;
constexpr std::size_t kAddressDigits = 4;

constexpr const char* kRawWrite = "EEPROM";
constexpr const char* kAddressRange = "an address from 0 to 3000";
constexpr const char* kNoSuchAddress = "The EEPROM has no such address: it must be from 0 to 3000.";

std::string addressText(std::size_t address) {
    const std::string digits = std::to_string(address);
    return std::string(kAddressDigits - digits.size(), '0') + digits;
}

// The number that `box` begins with, as `convert` makes it.
template <class Number>
Number numberOf(const controls::TextBox& box, Number (*convert)(double), const std::string& range) {
    try {
        return convert(core::val(box.Text.get()));
    } catch (const platform::RuntimeError&) {
        throw platform::RuntimeError(
            platform::kErrorOverflow,
            fields::calledName(box) + " holds a value that does not fit: it must be " + range + '.');
    }
}

std::int16_t wholeAddress(double number) {
    return core::toInt16(core::toInt(number));
}

std::int16_t addressBehind(double number) {
    return core::toInt16(core::toInt(number) + 1);
}

}  // namespace

ParameterTools::ParameterTools(MiscControls& window, core::SharedTables& tables, core::EepromAccess& eeprom,
                               fields::CellVerification* verification)
    : window_(window), tables_(tables), eeprom_(eeprom), verification_(verification) {
    window.ListView1.addColumn("Parameter name", "ParName");
    window.ListView1.addColumn("address", "Address");
    window.ListView1.ItemClick = [this](int row) { ListView1_ItemClick(row); };
    window.ListView1.ColumnClick = [this](int column) { sortByColumn(window_.ListView1, column); };
    window.Command2.Click = [this] { read(&core::EepromAccess::ReadEE); };
    window.btnEEread16bit.Click = [this] { read(&core::EepromAccess::ReadEE16); };
    window.Command1.Click = [this] { Command1_Click(); };
    window.btnWriteEE16bit.Click = [this] { btnWriteEE16bit_Click(); };
    window.Combo1.Click = [this] { Combo1_Click(); };
    window.btnSaveParam.Click = [this] { btnSaveParam_Click(); };
    window.Command3.Click = [this] { Command3_Click(); };
}

void ParameterTools::fill() {
    window_.ListView1.clearRows();
    for (std::size_t i = 0; i < tables_.EEParams.size(); ++i) {
        if (const std::string& name = tables_.EEParams[i].name; !name.empty()) {
            window_.ListView1.addRow({name, addressText(i)});
        }
    }
    window_.Combo1.Clear();
    for (const core::LiveValue& channel : tables_.liveValues) {
        window_.Combo1.AddItem(channel.name);
    }
    window_.Combo1.ListIndex = 0;
}

void ParameterTools::ListView1_ItemClick(int row) {
    window_.TextOs.Text = core::textOf(core::val(window_.ListView1.Cell(row, kAddressColumn)));
}

std::int16_t ParameterTools::address() const {
    return numberOf(window_.TextOs, wholeAddress, kAddressRange);
}

template <class Tool>
void ParameterTools::trapped(Tool&& tool) {
    try {
        tool();
    } catch (const platform::RuntimeError& failure) {
        const std::string text = failure.number() == platform::kErrorSubscript ? kNoSuchAddress : failure.what();
        window_.machine().dialogs.show({"Korvane Tuner", text, platform::MessageIcon::Exclamation});
    }
}

void ParameterTools::read(void (core::EepromAccess::*ask)(std::int16_t, std::int32_t, bool)) {
    trapped([&] { (eeprom_.*ask)(address(), 0, false); });
}

void ParameterTools::Command1_Click() {
    trapped([this] {
        const auto value = numberOf(window_.TextArvo, core::toInt32, "from -2147483648 to 2147483647");
        const auto target = address();
        announce(target, target + sentTo(target, value).bytes - 1);
        eeprom_.WriteEE(target, value);
        if (verifies()) {
            verification_->verify(kRawWrite, {sentTo(target, value)}, nullptr, [this] { Command1_Click(); });
        }
    });
}

fields::SavedValue ParameterTools::sentTo(int address, std::int32_t value) const {
    const bool word = core::checked(tables_.EEParams, address).is16bit;
    return {.label = {},
            .address = address,
            .bytes = word ? 2 : 1,
            .value = core::lowByte(value) + (word ? fields::kByteValues * core::highByte(value) : 0),
            .codec = word ? fields::kUnsignedWord : fields::kByte};
}

bool ParameterTools::verifies() const {
    return verification_ != nullptr && verification_->isOn() && eeprom_.isOpen();
}

void ParameterTools::announce(int address, int last) const {
    eeprom_.announceStore("EEPROM address " + std::to_string(address),
                          {core::Overwritten::Part::Settings, {address, last}});
}

// All boxes are read before the first write: the write of a row marked as 16 bits lets events run, and a reply may
// change the boxes.
void ParameterTools::btnWriteEE16bit_Click() {
    trapped([this] {
        const auto value = numberOf(window_.TextArvo, core::toInt16, "from -32768 to 32767");
        const auto low = address();
        const auto high = numberOf(window_.TextOs, addressBehind, kAddressRange);
        announce(low, high);
        eeprom_.WriteEE(low, core::lowByte(value));
        eeprom_.WriteEE(high, core::highByte(value));
        if (verifies()) {
            verification_->verify(kRawWrite, {sentTo(low, core::lowByte(value)), sentTo(high, core::highByte(value))},
                                  nullptr, [this] { btnWriteEE16bit_Click(); });
        }
    });
}

void ParameterTools::Combo1_Click() {
    if (window_.Combo1.ListIndex < 0) {
        return;
    }
    const core::LiveValue& channel = core::checked(tables_.liveValues, window_.Combo1.ListIndex.get());
    window_.txtParName.Text = channel.name;
    window_.txtParDesc.Text = channel.description;
    window_.txtParOffset.Text = core::textOf(channel.offset);
    window_.txtParScale.Text = core::textOf(channel.gain);
    window_.txtParWarning.Text = core::textOf(channel.limit);
}

void ParameterTools::btnSaveParam_Click() {
    const int row = window_.Combo1.ListIndex;
    if (row < 0) {
        return;
    }
    core::LiveValue& channel = core::checked(tables_.liveValues, row);
    channel.name = window_.txtParName.Text;
    channel.description = window_.txtParDesc.Text;
    channel.offset = core::val(window_.txtParOffset.Text.get());
    channel.gain = core::val(window_.txtParScale.Text.get());
    channel.limit = core::val(window_.txtParWarning.Text.get());
    if (channelRenamed) {
        channelRenamed();
    }
    core::SaveParDef(tables_, window_.machine().folder, row);
}

void ParameterTools::Command3_Click() {
    tables_.InjOff_type = window_.opt_injofftype(0).Value ? 1 : 0;
    core::RegWriteString(window_.machine().preferences, core::kSettingsKey, "InjOff_type",
                         core::textOf(tables_.InjOff_type));
}

}  // namespace korvane::settings
