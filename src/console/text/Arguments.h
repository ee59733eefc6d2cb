// The words of a command line.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "console/text/Json.h"

namespace korvane::console {

// A word that begins with ", [ or { is a JSON value and runs to its end, blanks included; others end at the next blank.
struct Word {
    std::string_view written;
    std::optional<Json> json;
    std::size_t begin = 0;  // in the line
};

// Raises ConsoleError for a JSON value that is broken or runs into the next word.
[[nodiscard]] std::vector<Word> splitWords(std::string_view line);

// The words behind a command's name, taken one after the other. Each raises ConsoleError when the word is of another
// kind or missing.
class Arguments {
public:
    Arguments(std::string_view line, std::vector<Word> words) : line_(line), words_(std::move(words)) {}

    [[nodiscard]] bool empty() const { return next_ == words_.size(); }
    [[nodiscard]] std::size_t left() const { return words_.size() - next_; }

    // A name or a text: the word as it stands, or the content of a JSON text.
    [[nodiscard]] std::string text();
    // Any JSON value, also a bare number, true, false or null.
    [[nodiscard]] Json value();
    [[nodiscard]] int number(int least, int most);
    // The same, or `absent` when no word is left.
    [[nodiscard]] int numberOr(int absent, int least, int most);
    // The rest of the line, as it stands.
    [[nodiscard]] std::string rest();
    // Whether the next word is `keyword`, bare; takes it then.
    [[nodiscard]] bool takeKeyword(std::string_view keyword);

private:
    const Word& next();

    std::string_view line_;
    std::vector<Word> words_;
    std::size_t next_ = 0;
};

}  // namespace korvane::console
