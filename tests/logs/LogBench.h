// Logs written out in the tests, ways to damage them, and a plain table of cells to compare the reader with.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "logs/LogGrammar.h"
#include "logs/clsTXTdata.h"
#include "support/TempFolder.h"

namespace korvane::logs {

// The text of a log file. A cell is named by its row, from 1, and its column.
class LogText {
public:
    static constexpr std::size_t kLine = 272;

    // A whole line as the writer makes it: time, RPM, MAP, 16 in column 24, all others 1, and twenty NULs.
    LogText& row(std::string_view time = "12:00:00", std::string_view rpm = "1000", std::string_view pressure = "1.5") {
        std::string line;
        for (int column = 0; column <= 24; ++column) {
            line += padded(column == 0 ? time : column == 1 ? rpm : column == 5 ? pressure : column == 24 ? "16" : "1");
        }
        bytes += line + std::string(20, '\0') + "\r\n";
        return *this;
    }
    LogText& rows(int count) {
        for (int i = 0; i < count; ++i) {
            row();
        }
        return *this;
    }
    LogText& line(std::string_view text) {
        (bytes += text) += "\r\n";
        return *this;
    }
    // Of whole lines only.
    LogText& set(int row, int column, std::string_view text) { return overwrite(row, column, padded(text)); }
    LogText& nuls(int row, int column, std::size_t count) { return overwrite(row, column, std::string(count, '\0')); }
    LogText& cutTail(std::size_t count) {
        bytes.resize(bytes.size() - count);
        return *this;
    }
    LogText& endLinesWith(std::string_view end) {
        std::string other;
        for (std::size_t at = 0; at < bytes.size();) {
            const std::size_t next = bytes.find("\r\n", at);
            other.append(bytes, at, next - at).append(end);
            at = next == std::string::npos ? bytes.size() : next + 2;
        }
        bytes = other;
        return *this;
    }

    std::string bytes;

private:
    static std::string padded(std::string_view text) {
        std::string cell(text.substr(0, 10));
        cell.resize(10, ' ');
        return cell;
    }
    LogText& overwrite(int row, int column, const std::string& text) {
        bytes.replace(kLine * static_cast<std::size_t>(row - 1) + 10 * static_cast<std::size_t>(column), text.size(),
                      text);
        return *this;
    }
};

class ReaderBench : public testing::Test {
protected:
    void load(const LogText& text) { load(text.bytes); }
    void load(std::string_view bytes) { EXPECT_FALSE(log_.LoadFromFile(folder_.write("log.txt", bytes))); }

    [[nodiscard]] std::vector<std::string> cells(int row, int first, int last) const {
        std::vector<std::string> texts;
        for (int column = first; column <= last; ++column) {
            texts.push_back(log_.TData(column, row));
        }
        return texts;
    }
    [[nodiscard]] double channel(std::size_t number) const { return live_.liveValues.at(number).value; }

    support::TempFolder folder_;
    core::LiveTable live_;
    clsTXTdata log_{live_, '.'};
};

}  // namespace korvane::logs
