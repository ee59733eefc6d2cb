// From an 'R' payload to the live channels, and from the channels to everything that shows or uses them.
#pragma once

#include <cstdint>
#include <span>

#include "core/SharedTables.h"
#include "link/Windows.h"
#include "live/FrmSarn2.h"

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

// Writes one row of the datalog for each frame.
class RowWriter {
public:
    virtual ~RowWriter() = default;

    virtual void writeLiveRow() = 0;
};

class LiveUpdate : public link::LiveDecoder {
public:
    LiveUpdate(FrmSarn2& window, core::SharedTables& tables, link::Windows& windows, TrendSink& trends);

    // Who else takes each frame; null for nobody.
    void setAnalyser(InjectionAnalyser* analyser) { analyser_ = analyser; }
    void setRowWriter(RowWriter* writer) { rowWriter_ = writer; }

    // Payload of 19 bytes, or fewer from older firmware; the channels that it has not got keep their values. A payload
    // too short for a channel that is due ends the decode there with RuntimeError 9, and nothing is shown. Byte 6
    // becomes the throttle in percent.
    void decodeLivePacket(std::span<std::uint8_t> payload) override;

    // Shows the channels everywhere. Never stops: a step that fails is skipped.
    void updateData_new();

    [[nodiscard]] int frameCounter() const { return frameCounter_; }

private:
    void decodeThrottle(std::span<std::uint8_t> payload);
    void decodeFixedPart(std::span<const std::uint8_t> payload);
    void decodeNewerPart(std::span<const std::uint8_t> payload);
    void setStandard(std::size_t channel, double raw);

    void showValues();
    void showWords();
    void showMeters();
    void pushSamples();
    void lightLamps();
    void drawTrends(int second);
    void countPacket(int second);
    void feedAnalyser();
    void showText(controls::Label& label, std::size_t channel);
    [[nodiscard]] double value(std::size_t channel) const { return tables_.liveValues[channel].value; }

    FrmSarn2& window_;
    core::SharedTables& tables_;
    link::Windows& windows_;
    TrendSink& trends_;
    InjectionAnalyser* analyser_ = nullptr;
    RowWriter* rowWriter_ = nullptr;
    int trendCounter_ = 0;
    int packetCount_ = 0;
    int packetSecond_ = 0;
    int frameCounter_ = 0;
};

}  // namespace korvane::live
