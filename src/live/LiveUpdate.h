// Brings the live channels to everything that shows or uses them.
#pragma once

#include <cstdint>
#include <span>

#include "core/tables/FirmwareIdentity.h"
#include "core/tables/LiveTable.h"
#include "link/Windows.h"
#include "live/ChannelTable.h"
#include "live/FrmSarn2.h"
#include "logs/RowWriter.h"

namespace korvane::live {

// Takes samples for the two plots of the main window.
class TrendSink {
public:
    virtual ~TrendSink() = default;

    // Trend 2 is picTrend2; any other number is picTrend. Series 0 to 5.
    virtual void pushTrendSample(double value, int series, int trend) = 0;
    virtual void drawTrends() = 0;
};

// Gathers lambda for each map cell.
class InjectionAnalyser {
public:
    virtual ~InjectionAnalyser() = default;

    virtual void addValues(float lambda, float cell, float rpm, float load) = 0;
};

// Works with the frames of the ECU, as long as they come.
class FrameTaker {
public:
    virtual ~FrameTaker() = default;

    // A live frame has come, and the channels have its values. Not called for a replay.
    virtual void liveFrame() = 0;
};

using logs::RowWriter;

class LiveUpdate : public link::LiveDecoder {
public:
    LiveUpdate(FrmSarn2& window, const core::FirmwareIdentity& firmware, core::LiveTable& tables,
               link::Windows& windows, TrendSink& trends);

    // Others that take each frame; may be null.
    void setAnalyser(InjectionAnalyser* analyser) { analyser_ = analyser; }
    void setRowWriter(RowWriter* writer) { rowWriter_ = writer; }
    void setFrameTaker(FrameTaker* taker) { frameTaker_ = taker; }

    // Decodes an 'R' payload (decodeLive) and shows the channels. A payload too short ends with RuntimeError 9, and
    // nothing is shown.
    void decodeLivePacket(std::span<std::uint8_t> payload) override;

    // Shows the channels everywhere, wherever their values come from. Never stops: a step that fails is skipped.
    void updateData_new();

    [[nodiscard]] int frameCounter() const { return frameCounter_; }

private:
    void showValues();
    void showWords();
    void showDials();  // and pushes the first sample, between two dials
    void pushSample(const TrendPlace& place);
    void pushSamples();
    void lightLamps();
    void drawTrends(int second);
    void countPacket(int second);
    void feedAnalyser();
    void showText(controls::Label& label, LiveChannel channel);
    [[nodiscard]] double value(LiveChannel channel) const { return tables_.liveValues[core::indexOf(channel)].value; }
    // The word of the idle or the boost regulator.
    [[nodiscard]] std::int32_t& regulatorWord(LiveChannel channel) const;
    // What a trend shows of the channel. RuntimeError 6 for a value that it can't hold.
    [[nodiscard]] double sampleOf(LiveChannel channel) const;

    FrmSarn2& window_;
    const core::FirmwareIdentity& firmware_;
    core::LiveTable& tables_;
    link::Windows& windows_;
    TrendSink& trends_;
    InjectionAnalyser* analyser_ = nullptr;
    RowWriter* rowWriter_ = nullptr;
    FrameTaker* frameTaker_ = nullptr;
    int trendCounter_ = 0;
    int packetCount_ = 0;
    int packetSecond_ = 0;
    int frameCounter_ = 0;
};

}  // namespace korvane::live
