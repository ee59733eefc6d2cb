// The settings of the ECU on nine pages.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "fields/Fields.h"
#include "fields/Saver.h"
#include "link/PortOpening.h"
#include "link/Windows.h"
#include "settings/FullRead.h"
#include "settings/MiscContext.h"
#include "settings/ParameterTools.h"
#include "settings/Replies.h"

namespace korvane::settings {

// There is one for the whole run: its close box hides it. It takes replies from its creation on, also before it is
// loaded; a full read begins 100 ms after its load.
class FrmMisc : public MiscControls, public link::SettingsWindow {
public:
    FrmMisc(platform::Machine& machine, core::SharedTables& tables, link::ConnectionPanel& connection,
            core::EepromAccess& eeprom);

    // For the dispatcher, the live update and settings files.
    void LoadMisc2(std::span<const std::uint8_t> payload, bool& handled) override;
    void UpdateReadEE(std::int32_t value, int addr, bool is16) override;
    void setTextArvo(std::string_view text) override { TextArvo.Text = text; }
    // RuntimeError 9 for a row that does not exist.
    void setLambdaSetpoint(int row, std::uint8_t value) override;
    void setLambdaAuthority(int row, std::uint8_t value) override;
    void MarkAccelCell(int index) override { replies_.MarkAccelCell(index); }

    // For the view: which boxes show what the ECU has, and what the last save has sent.
    [[nodiscard]] fields::BoxMarks& boxMarks() { return marks_; }
    [[nodiscard]] fields::SaveReport& saveReport() { return report_; }
    // For comparisons: what each control holds, and what it is called.
    [[nodiscard]] fields::Fields& settings() { return fields_; }
    // Whether saves are read back, and what came of it.
    [[nodiscard]] link::VerifySwitch& verifySwitch() { return context_.connection.verify; }
    [[nodiscard]] const link::VerifySwitch& verifySwitch() const { return context_.connection.verify; }
    [[nodiscard]] fields::VerifyReport& verifyReport() { return verifyReport_; }
    [[nodiscard]] const fields::VerifyReport& verifyReport() const { return verifyReport_; }

    [[nodiscard]] std::vector<std::span<const controls::PropertyInfo>> propertyTables() const override;

    // Not all twenty boxes of the lambda correction have been filled by the ECU.
    [[nodiscard]] bool awaitsLambda();

    // Called when the editor of the channels has saved one: the live display shows its name.
    void setRenameHandler(std::function<void()> handler) { parameterTools_.channelRenamed = std::move(handler); }

    // A read of all settings has come to its end, with all answers or without.
    controls::Event<> allRead;

    // Ctrl+Tab goes to the next tab, and from the last one to the first.
    void Form_KeyDown(int keyCode, int shift) override;

protected:
    void Form_Load() override;

private:
    void place();
    void tbsOptions_Click();
    void readAll();
    void applyFeatures();
    void enable(controls::ControlArray<controls::TextBox>& boxes, int bit);
    void btnReadFromFile_Click();
    void loadFile(const std::string& path);
    void showLambda(controls::TextBox& box, fields::Address first, int row, std::uint8_t value);
    void calibrateThrottle(std::uint8_t command);
    void btnLaunchHelp_Click();
    // Shows a failure of `handler` in a message box that begins with `text`.
    template <class Handler>
    void trapped(const std::string& text, Handler&& handler);

    fields::VerifyReport verifyReport_;
    MiscContext context_;
    fields::BoxMarks marks_;
    fields::SaveReport report_;
    link::PortOpening opening_;
    fields::Fields fields_;
    Replies replies_;
    FullRead fullRead_;
    fields::Saver saver_;
    fields::CellVerification rawVerification_;
    ParameterTools parameterTools_;
};

}  // namespace korvane::settings
