// The base of the windows that are made of panes: what all map windows have.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "controls/Controls.h"
#include "controls/Timer.h"
#include "controls/Window.h"
#include "fields/VerifyReport.h"
#include "link/PortOpening.h"
#include "link/Windows.h"
#include "maps/grid/GridLook.h"
#include "maps/grid/MapGeometry.h"
#include "maps/grid/MapGrid.h"
#include "maps/notes/LiveStrip.h"
#include "maps/notes/SizeNote.h"
#include "maps/panes/MapPane.h"
#include "maps/transfer/MapContext.h"
#include "maps/transfer/MapLine.h"

namespace korvane::maps {

// Bits of the feature word.
inline constexpr std::int32_t kInjectionBit = 1 << 3;
inline constexpr std::int32_t kIgnitionBit = 1 << 5;
inline constexpr std::int32_t kShiftLightBit = 1 << 14;
inline constexpr std::int32_t kRpmLimitBit = 1 << 15;

class PaneWindow : public controls::Window, public link::MapWindow, private controls::Observer {
public:
    struct Title {
        std::string_view name;  // a literal
        std::string_view caption;
    };
    PaneWindow(platform::Machine& machine, const MapContext& context, const Title& title, MapGeometry shape);
    ~PaneWindow() override;

    controls::ProgressBar prgTransfer{*this, "prgTransfer"};         // of a map on its way to the ECU
    controls::CheckBox chkOnlineChanges{*this, "chkOnlineChanges"};  // edits go to the running engine at once
    controls::Timer Timer1{*this, "Timer1", true, 333};              // focus and panes

    GridLook look;
    // What came of the last undo, redo or revert, until something else changes or the focus moves.
    controls::Property<std::string> HistoryNote{*this};

    bool isFormLoaded = false;  // the load event has ended
    const MapGeometry geometry;

    // Whether sends are read back, and what came of it.
    [[nodiscard]] link::VerifySwitch& verifySwitch() { return context_.connection.verify; }
    [[nodiscard]] const link::VerifySwitch& verifySwitch() const { return context_.connection.verify; }
    [[nodiscard]] fields::VerifyReport& verifyReport() { return verifyReport_; }
    [[nodiscard]] const fields::VerifyReport& verifyReport() const { return verifyReport_; }

    LiveStrip liveStrip;
    SizeNote sizeNote;
    // Brings both up to date.
    void showNotes();

    void setCaption(std::string_view caption) override { Caption = caption; }
    // What the panes read when the window has opened, in their order; nothing with the port closed.
    void initialReads();

    // For the panes. ground() is passed to the constructor of each.
    [[nodiscard]] PaneWindow& ground() { return *this; }
    void addPane(MapPane& pane) { panes_.push_back(&pane); }
    [[nodiscard]] const std::vector<MapPane*>& panes() const { return panes_; }
    // The pane whose grid has the focus; null without one.
    [[nodiscard]] MapPane* paneWithFocus() const;
    [[nodiscard]] std::optional<MapPane::Target> revertTarget() const;
    [[nodiscard]] const MapContext& context() const { return context_; }
    [[nodiscard]] MapLine& line() { return line_; }
    [[nodiscard]] const MapLine& line() const { return line_; }
    void tell(const std::string& text);
    // Runs a step; a failure is shown as `text`.
    void toldAs(const char* text, const std::function<void()>& step);

    // Beside those of all windows, how the grids look, what the status line says, HistoryNote, TransferResult, the text
    // of line().watch(), and the verification of sends.
    [[nodiscard]] std::vector<std::span<const controls::PropertyInfo>> propertyTables() const override;

protected:
    void Form_Load() override;
    bool Form_Unload() override;
    [[nodiscard]] bool takesKey(int keyCode, int shift) override;
    void afterChange(const void* property) override;

    // Places the panes, after their load.
    virtual void arrangePanes() {}
    // Moves the focus to the cell that the ECU runs in, where the window's boxes ask for it.
    virtual void followEngine() {}
    void focusOn(MapGrid& grid);
    // Pulse and target of a cell, which must exist; nothing without a fuel map.
    [[nodiscard]] virtual LiveStrip::Cell fuelOf(int cell) {
        static_cast<void>(cell);
        return {};
    }

private:
    // Small cells on a small screen, bold ones on a wide one.
    void sizeFonts(int screenWidth);
    void propertyChanged(controls::Object& object, const void* property) override;
    void showNewMaps(const core::MapHistory& history);

    const MapContext& context_;
    MapLine line_;
    fields::VerifyReport verifyReport_;
    link::PortOpening opening_;
    std::vector<MapPane*> panes_;
};

}  // namespace korvane::maps
