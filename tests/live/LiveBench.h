// The live update on a main window of its own; everything that it calls notes the call in one journal.
#pragma once

#include <cstdint>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <vector>

#include "core/tables/Module1.h"
#include "core/tables/SharedTables.h"
#include "live/LiveUpdate.h"
#include "support/MachineBench.h"

namespace korvane::live {

using support::Bytes;
using Journal = std::vector<std::string>;

struct Sample {
    int trend;
    int series;
    double value;
    bool operator==(const Sample&) const = default;
};

inline std::ostream& operator<<(std::ostream& out, const Sample& sample) {
    return out << sample.trend << "/" << sample.series << "=" << sample.value;
}

class NotingTrends : public TrendSink {
public:
    void pushTrendSample(double value, int series, int trend) override { samples.push_back({trend, series, value}); }
    void drawTrends() override { ++draws; }

    std::vector<Sample> samples;
    int draws = 0;
};

class NotingAnalyser : public InjectionAnalyser {
public:
    void addValues(float lambda, float cell, float rpm, float load) override {
        samples.push_back({lambda, cell, rpm, load});
        if (fails) {
            throw platform::RuntimeError(platform::kErrorOverflow, "Overflow");
        }
    }

    std::vector<std::vector<float>> samples;
    bool fails = false;
};

class NotingRows : public RowWriter {
public:
    void writeLiveRow() override {
        ++rows;
        if (fails) {
            throw std::runtime_error("disk full");
        }
    }

    int rows = 0;
    bool fails = false;
};

class NotingMap : public link::MapWindow, public link::EnginePlacePart {
public:
    void setCaption(std::string_view) override {}
    void updateMapPlace() override { ++places; }

    int places = 0;
};

class NotingMisc : public link::SettingsWindow {
public:
    void LoadMisc2(std::span<const std::uint8_t>, bool&) override {}
    void UpdateReadEE(std::int32_t, int, bool) override {}
    void setTextArvo(std::string_view) override {}
    void setLambdaSetpoint(int, std::uint8_t) override {}
    void setLambdaAuthority(int, std::uint8_t) override {}
    void MarkAccelCell(int index) override {
        marked.push_back(index);
        if (fails) {
            throw platform::RuntimeError(platform::kErrorSubscript, "Subscript out of range");
        }
    }

    std::vector<int> marked;
    bool fails = false;
};

class LiveBench : public support::MachineBench {
protected:
    LiveBench() { core::InitModule(tables_, preferences_); }

    [[nodiscard]] core::LiveValue& channel(std::size_t number) { return tables_.liveValues.at(number); }
    [[nodiscard]] double value(std::size_t number) const { return tables_.liveValues.at(number).value; }
    [[nodiscard]] double raw(std::size_t number) const { return tables_.liveValues.at(number).raw; }
    void scaleAll(double gain, double offset) {
        for (auto& row : tables_.liveValues) {
            row.gain = gain;
            row.offset = offset;
        }
    }
    [[nodiscard]] std::string label(int index) { return window_.lblValue(index).Caption.get(); }
    void decode(Bytes payload) { live_.decodeLivePacket(payload); }
    void update() { live_.updateData_new(); }
    void updates(int count) {
        for (int i = 0; i < count; ++i) {
            update();
        }
    }

    core::SharedTables tables_;
    link::Windows windows_;
    FrmSarn2 window_{virtual_.machine};
    NotingTrends trends_;
    LiveUpdate live_{window_, tables_, tables_, windows_, trends_};
    NotingAnalyser analyser_;
    NotingRows rows_;
    NotingMap map_;
    NotingMisc misc_;
};

}  // namespace korvane::live
