// The reader keeps no table; for any file its answers are those of the table.
#include <gtest/gtest.h>
#include <random>

#include "logs/LogBench.h"
#include "logs/TableOfCells.h"
#include "platform/RuntimeError.h"

namespace korvane::logs {
namespace {

class Damage {
public:
    explicit Damage(unsigned seed) : random_(seed) {}

    std::string log() {
        LogText text;
        const int rows = below(12);
        for (int i = 0; i < rows; ++i) {
            if (below(4) == 0) {
                text.line(words());
            } else {
                text.row(time(), number(), number());
            }
        }
        for (int i = below(6); i > 0 && !text.bytes.empty(); --i) {
            strike(text.bytes);
        }
        return text.bytes;
    }

    int below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }

private:
    std::string pick(std::initializer_list<const char*> texts) {
        return *(texts.begin() + below(static_cast<int>(texts.size())));
    }
    std::string time() { return pick({"12:00:00", "12:00:00", "12:00:01", "Time", "0"}); }
    std::string number() { return pick({"1000", "1.5", "0", "-3", "12.3456789", "1,5", "7", "1E+3", "2"}); }
    std::string words() {
        std::string text;
        for (int i = below(36); i > 0; --i) {
            text += pick({"1", "22", "12:00:00", "abc", "1.5", "0"}) + pick({" ", " ", "  ", "       "});
        }
        return text;
    }
    void strike(std::string& bytes) {
        const auto at = static_cast<std::size_t>(below(static_cast<int>(bytes.size())));
        const auto size = static_cast<std::size_t>(below(3) == 0 ? below(300) : below(12));
        switch (below(6)) {
            case 0:
                bytes.replace(at, size, std::string(size, '\0'));
                break;
            case 1:
                bytes.erase(at, size);
                break;
            case 2:
                bytes.insert(at, pick({"\r", "\n", "\r\n", " ", "x", "9", "\x1A"}));
                break;
            case 3:
                bytes.resize(at);
                break;
            case 4:
                bytes[at] = ' ';
                break;
            default:
                bytes[at] = '9';
        }
    }

    std::mt19937 random_;
};

void expectSameNumber(const clsTXTdata& log, const TableOfCells& table, int column, int row) {
    const auto expected = table.number(table.at(column, row));
    try {
        ASSERT_EQ(log.number(column, row), expected);
    } catch (const platform::RuntimeError&) {
        ASSERT_FALSE(expected.has_value());
    }
}

void expectSameCells(const clsTXTdata& log, const TableOfCells& table) {
    ASSERT_EQ(log.ItemCount(), table.rows);
    for (int row = 1; row <= table.rows + 2; ++row) {
        for (int column = 0; column <= 30; ++column) {
            const LogCell cell = log.Data(column, row);
            const auto* const text = std::get_if<std::string_view>(&cell);
            ASSERT_EQ(text == nullptr ? TableOfCells::Cell(std::get<double>(cell)) : std::string(*text),
                      table.at(column, row))
                << "column " << column << ", row " << row;
            expectSameNumber(log, table, column, row);
        }
    }
}

TEST(DamagedLogs, AnswerAsTheTableOfTheirCellsWould) {
    const support::TempFolder folder;
    core::LiveTable live;
    int ended = 0;
    for (unsigned seed = 1; seed <= 600; ++seed) {
        const char decimal = seed % 4 == 0 ? ',' : '.';
        const std::string bytes = Damage(seed).log();
        TableOfCells table(decimal);
        table.load(bytes);
        clsTXTdata log(live, decimal);
        log.LoadFromFile(folder.write("log.txt", bytes));
        expectSameCells(log, table);
        ASSERT_FALSE(testing::Test::HasFailure()) << "seed " << seed;
        ended += log.lastLoad().failure != 0 ? 1 : 0;
    }
    EXPECT_GT(ended, 60);
    EXPECT_LT(ended, 540);
}

}  // namespace
}  // namespace korvane::logs
