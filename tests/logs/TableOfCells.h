// The table of cells as the rules describe it: 31 columns, as many rows as a test needs, filled character by character.
#pragma once

#include <algorithm>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace korvane::logs {

class TableOfCells {
public:
    using Cell = std::variant<double, std::string>;

    explicit TableOfCells(char decimal) : decimal_(decimal) {}

    void load(const std::string& bytes) {
        table_.assign(1, std::vector<Cell>(31));
        table_[0][0] = std::string("Time");
        count = 0;
        rows = 0;
        for (std::size_t at = 0; at < bytes.size();) {
            const std::size_t end = std::min(bytes.find_first_of("\r\n", at), bytes.size());
            table_.emplace_back(31, Cell(0.0));
            if (!store(bytes.substr(at, end - at))) {
                return;
            }
            ++rows;
            at = end + (bytes.compare(end, 2, "\r\n") == 0 ? 2 : 1);
        }
    }

    [[nodiscard]] const Cell& at(int column, int row) const {
        static const Cell zero = 0.0;
        const auto index = static_cast<std::size_t>(row);
        return index < table_.size() ? table_[index][static_cast<std::size_t>(column)] : zero;
    }

    // What a cell is as a number; nothing if it is none.
    [[nodiscard]] std::optional<double> number(const Cell& cell) const {
        if (const auto* const value = std::get_if<double>(&cell)) {
            return *value;
        }
        std::string text = std::get<std::string>(cell);
        if (text.find_first_not_of(std::string("0123456789+-Ee") + decimal_) != std::string::npos) {
            return {};
        }
        std::replace(text.begin(), text.end(), decimal_, '.');
        try {
            std::size_t used = 0;
            const double value = std::stod(text, &used);
            return used == text.size() ? std::optional(value) : std::nullopt;
        } catch (const std::exception&) {
            return {};
        }
    }

    int rows = 0;
    double count = 0;
    double speed = 0;

private:
    bool store(std::string rest) {
        auto& row = table_.back();
        std::size_t column = 0;
        while (!rest.empty()) {
            const std::size_t blank = rest.find(' ');
            if (blank == 0) {
                rest.erase(0, 1);
                continue;
            }
            if (column > 30) {
                return false;
            }
            row[column++] = rest.substr(0, blank);
            rest = blank == std::string::npos ? std::string() : rest.substr(blank + 1);
        }
        rate(row);
        return scale(row[1], [](double value) { return value / 10; }) &&
               scale(row[5], [](double value) { return value * 100; });
    }

    void rate(std::vector<Cell>& row) {
        if (row[0] == table_[table_.size() - 2][0]) {
            count = count + 1;
        } else {
            if (count == 0) {
                count = 15;
            }
            speed = count;
            count = 0;
        }
        row[24] = count > speed ? count : speed;
    }

    template <class Rule>
    bool scale(Cell& cell, Rule rule) {
        const auto value = number(cell);
        if (value) {
            cell = rule(*value);
        }
        return value.has_value();
    }

    char decimal_;
    std::vector<std::vector<Cell>> table_;
};

}  // namespace korvane::logs
