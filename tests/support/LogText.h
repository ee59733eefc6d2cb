// A log as text, row by row: cells of ten characters, as the program writes them.
#pragma once

#include <array>
#include <cstddef>
#include <cstdio>
#include <initializer_list>
#include <string>
#include <string_view>

namespace korvane::support {

class LogText {
public:
    struct Cell {
        int column;
        std::string_view text;
    };

    // A row at this second of the day with 0 in every cell that is not given.
    LogText& row(int second, std::initializer_list<Cell> cells = {}) {
        constexpr int kColumns = 25;
        constexpr std::size_t kWidth = 10;
        std::array<std::string, kColumns> texts;
        texts.fill("0");
        std::array<char, 16> time{};
        static_cast<void>(std::snprintf(time.data(), time.size(), "%02d:%02d:%02d", second / 3600 % 24,
                                        second / 60 % 60, second % 60));
        texts[0] = time.data();
        for (const auto& cell : cells) {
            texts.at(static_cast<std::size_t>(cell.column)) = cell.text;
        }
        for (auto& text : texts) {
            text.resize(kWidth, ' ');
            text_ += text;
        }
        text_ += "\r\n";
        return *this;
    }
    LogText& line(std::string_view text) {
        text_.append(text).append("\r\n");
        return *this;
    }
    [[nodiscard]] const std::string& text() const { return text_; }

private:
    std::string text_;
};

// `count` rows, ten a second, in which Twater holds the row's number and RPM ten times that.
inline std::string numberedLog(int count) {
    LogText log;
    for (int n = 1; n <= count; ++n) {
        const auto number = std::to_string(n);
        log.row(n / 10, {{1, number + '0'}, {2, number}});
    }
    return log.text();
}

}  // namespace korvane::support
