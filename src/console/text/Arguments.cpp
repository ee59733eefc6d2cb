#include "console/text/Arguments.h"

#include "console/ConsoleError.h"

namespace korvane::console {

namespace {

constexpr std::string_view kBlanks = " \t";
constexpr std::string_view kJsonStarts = "\"[{";

JsonRead readValue(std::string_view text) {
    try {
        return readJson(text);
    } catch (const JsonError& error) {
        throw ConsoleError(shown(text) + ": " + error.what());
    }
}

Word wordAt(std::string_view line, std::size_t begin) {
    if (kJsonStarts.find(line[begin]) == std::string_view::npos) {
        return {line.substr(begin, line.find_first_of(kBlanks, begin) - begin), {}, begin};
    }
    auto read = readValue(line.substr(begin));
    const auto end = begin + read.end;
    if (end < line.size() && kBlanks.find(line[end]) == std::string_view::npos) {
        throw ConsoleError("a blank must follow " + shown(line.substr(begin, read.end)));
    }
    return {line.substr(begin, read.end), std::move(read.value), begin};
}

}  // namespace

std::vector<Word> splitWords(std::string_view line) {
    std::vector<Word> words;
    std::size_t position = line.find_first_not_of(kBlanks);
    while (position != std::string_view::npos) {
        words.push_back(wordAt(line, position));
        position = line.find_first_not_of(kBlanks, position + words.back().written.size());
    }
    return words;
}

const Word& Arguments::next() {
    if (empty()) {
        throw ConsoleError("a word is missing");
    }
    return words_[next_++];
}

std::string Arguments::text() {
    const Word& word = next();
    if (!word.json) {
        return std::string(word.written);
    }
    if (const auto* content = word.json->asText()) {
        return *content;
    }
    throw ConsoleError(shown(word.written) + " is no text");
}

Json Arguments::value() {
    const Word& word = next();
    if (word.json) {
        return *word.json;
    }
    try {
        auto read = readJson(word.written);
        if (read.end == word.written.size()) {
            return std::move(read.value);
        }
    } catch (const JsonError&) {  // NOLINT(bugprone-empty-catch): the error below names the word
    }
    throw ConsoleError(shown(word.written) + " is no JSON value (a text stands in double quotes)");
}

int Arguments::number(int least, int most) {
    const Word& word = next();
    const auto range = " is no whole number from " + std::to_string(least) + " to " + std::to_string(most);
    try {
        const auto read = readJson(word.written);
        const auto* whole = read.value.asWhole();
        if (whole != nullptr && read.end == word.written.size() && *whole >= least && *whole <= most) {
            return static_cast<int>(*whole);
        }
    } catch (const JsonError&) {  // NOLINT(bugprone-empty-catch): as above
    }
    throw ConsoleError(shown(word.written) + range);
}

int Arguments::numberOr(int absent, int least, int most) {
    return empty() ? absent : number(least, most);
}

std::string Arguments::rest() {
    const Word& first = next();
    next_ = words_.size();
    return std::string(line_.substr(first.begin));
}

bool Arguments::takeKeyword(std::string_view keyword) {
    if (empty() || words_[next_].json || words_[next_].written != keyword) {
        return false;
    }
    ++next_;
    return true;
}

}  // namespace korvane::console
