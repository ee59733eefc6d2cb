// The window of the ignition limiter: an RPM limit, a launch limit, and three inputs with a voltage limit each.
#pragma once

#include "fields/Fields.h"
#include "fields/Reader.h"
#include "fields/Saver.h"
#include "fields/VerifyReport.h"
#include "link/Windows.h"
#include "maps/boxes/IgnitionBoxControls.h"
#include "maps/boxes/ParameterGroup.h"
#include "maps/transfer/MapContext.h"
#include "maps/transfer/MapLine.h"

namespace korvane::maps {

// The box has no maps: all its settings are single parameters. EEPROM replies reach the window as words alone, so what
// is read byte by byte (sensor type, launch control) is kept with the shared tables and never shown here.
class FrmMaps_ign_limiter : public controls::Window,  // NOLINT(readability-identifier-naming)
                            public link::MapWindow,
                            public link::MiscPart,
                            public link::EepromPart,
                            public IgnitionBoxControls {
public:
    static constexpr int kInputs = 3;
    static constexpr int kLimits = 4;

    FrmMaps_ign_limiter(platform::Machine& machine, const MapContext& context);

    controls::CommandButton btnReadData{*this, "btnReadData", "Read data"};
    controls::CommandButton btnSendSettings{*this, "btnSendSettings", "Send settings"};
    controls::CommandButton btnHelp{*this, "btnHelp", "Ohje"};

    controls::Frame FrameRpmSensor{*this, "FrameRpmSensor", "RPM sensor settings"};
    controls::TextBox txtSigPerRev{*this, "txtSigPerRev"};
    controls::TextBox txtCylCount{*this, "txtCylCount"};

    controls::Frame FrameRpmLimit{*this, "FrameRpmLimit", "RPM limit settings"};
    controls::TextBox txtrpmlimitLOW{*this, "txtrpmlimitLOW"};
    controls::TextBox txtrpmlimitLOWpre{*this, "txtrpmlimitLOWpre"};
    controls::TextBox txtrpmlimitHIGH{*this, "txtrpmlimitHIGH"};
    controls::TextBox txtrpmlimitHIGHpre{*this, "txtrpmlimitHIGHpre"};

    controls::ControlArray<controls::Frame> FrameInput{*this, "FrameInput", kInputs};
    controls::ControlArray<controls::ComboBox> ComboInputCompare{*this, "ComboInputCompare", kInputs};
    controls::ControlArray<controls::TextBox> txtInputvolt{*this, "txtInputvolt", kInputs};
    // The functions of the inputs, and behind them those of the limits, which have no high byte.
    controls::ControlArray<controls::ComboBox> ComboInputFuncLow{*this, "ComboInputFuncLow", kInputs + kLimits};
    controls::ControlArray<controls::ComboBox> comboInputFuncHi{*this, "comboInputFuncHi", kInputs};
    controls::ControlArray<controls::TextBox> txtInputFuncVal{*this, "txtInputFuncVal", kInputs};
    controls::Label lblInput1{*this, "lblInput1"};  // the voltage at the input now
    controls::Label lblInput2{*this, "lblInput2"};
    controls::Label lblInput3{*this, "lblInput3"};

    controls::Timer TimerinitialRead{*this, "TimerinitialRead", false, 100};
    controls::Timer Timer1{*this, "Timer1", true, 333};
    controls::Timer TimeOutTimer{*this, "TimeOutTimer", true, 1000};
    std::int16_t timeOutCounter = 0;

    void setCaption(std::string_view caption) override { Caption = caption; }
    void LoadMisc(bool skipTimer) override;
    void UpdateReadEE(std::int32_t value, int addr, bool is16) override;

    // Whether sends are read back, and what came of it.
    [[nodiscard]] link::VerifySwitch& verifySwitch() { return context_.connection.verify; }
    [[nodiscard]] const link::VerifySwitch& verifySwitch() const { return context_.connection.verify; }
    [[nodiscard]] fields::VerifyReport& verifyReport() { return verifyReport_; }
    [[nodiscard]] const fields::VerifyReport& verifyReport() const { return verifyReport_; }

    [[nodiscard]] std::vector<std::span<const controls::PropertyInfo>> propertyTables() const override;

private:
    const MapContext& context_;
    fields::VerifyReport verifyReport_;
    link::PortOpening opening_;
    fields::Fields fields_;

    [[nodiscard]] std::vector<fields::Field> rows();
    [[nodiscard]] fields::Context fieldsContext();

public:
    ParameterGroup launchControl;  // btnReadLaunch, btnSaveLaunch

protected:
    void Form_Load() override;
    bool Form_Unload() override;

private:
    void fillLists();
    void labelBoxes();
    // Which way an input is compared is kept on this machine: the box has no parameter for it.
    void rememberComparisons();
    void place();
    void btnReadData_Click();
    void btnSendSettings_Click();
    void showInputs();

    MapLine line_;
    fields::Reader reader_;
    fields::Saver saver_;
};

}  // namespace korvane::maps
