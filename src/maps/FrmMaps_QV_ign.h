// The map window of the boxes that only ignite.
#pragma once

#include "maps/boxes/IgnitionBoxControls.h"
#include "maps/boxes/ParameterGroup.h"
#include "maps/panes/EnginePlacePane.h"
#include "maps/panes/FilePane.h"
#include "maps/panes/IgnitionPane.h"
#include "maps/panes/MiscPane.h"
#include "maps/panes/ToolPane.h"

namespace korvane::maps {

// The ignition map, the misc block, and three groups of single parameters. While it is loaded, ignWindowOpen lets the
// dispatcher hand it map replies and EEPROM replies of both widths; the unload of either of the windows that know the
// flag clears it.
class FrmMaps_QV_ign : public PaneWindow,  // NOLINT(readability-identifier-naming)
                       public MiscPane,
                       public IgnitionPane,
                       public FilePane,
                       public EnginePlacePane,
                       public ToolPane,
                       public IgnitionBoxControls {
public:
    FrmMaps_QV_ign(platform::Machine& machine, const MapContext& context);

    controls::CheckBox chkFocusOnIGN;
    controls::Label lblIdleAdv;  // the speeds of txtIdleAdv
    controls::ControlArray<controls::TextBox> txtIdleAdv;
    controls::TextBox txtchargetime;

    void UpdateReadEE(std::int32_t value, int addr, bool is16) override;

private:
    fields::Fields fields_;

    [[nodiscard]] std::vector<fields::Field> rows();
    [[nodiscard]] fields::Own sensorType();
    [[nodiscard]] fields::Context fieldsContext();

public:
    ParameterGroup idleIgnition;   // btnReadIdleAdv, btnSaveIdleAdv
    ParameterGroup launchControl;  // btnReadLaunch, btnSaveLaunch
    ParameterGroup ignitionSetup;  // btnreadign_2, btnsaveign_2

protected:
    void Form_Load() override;
    // The first reads, at once.
    void Form_Shown() override;
    bool Form_Unload() override;
    void arrangePanes() override;
    void followEngine() override;
};

}  // namespace korvane::maps
