// Continues Json: the reader of JSON text, which is as long as all the rest.
#include <algorithm>
#include <charconv>

#include "console/text/Json.h"
#include "core/TextEncoding.h"

namespace korvane::console {

namespace {

constexpr bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

constexpr bool isBlank(char character) {
    return character == ' ' || character == '\t' || character == '\r' || character == '\n';
}

class Reader {
public:
    explicit Reader(std::string_view text) : text_(text) {}

    Json value(int depth) {
        if (depth > kJsonDepth) {
            throw JsonError("the JSON value is nested too deep");
        }
        skipBlanks();
        switch (peek()) {
            case '{':
                return object(depth);
            case '[':
                return array(depth);
            case '"':
                return string();
            case 't':
                return literal("true", true);
            case 'f':
                return literal("false", false);
            case 'n':
                return literal("null", {});
            default:
                return number();
        }
    }

    [[nodiscard]] std::size_t position() const { return position_; }

private:
    // The next character, or NUL at the end.
    [[nodiscard]] char peek() const { return position_ < text_.size() ? text_[position_] : '\0'; }

    void skipBlanks() {
        while (position_ < text_.size() && isBlank(text_[position_])) {
            ++position_;
        }
    }

    bool take(char character) {
        if (position_ >= text_.size() || text_[position_] != character) {
            return false;
        }
        ++position_;
        return true;
    }

    void expect(char character) {
        skipBlanks();
        if (!take(character)) {
            throw JsonError(std::string("the JSON value lacks a ") + character);
        }
    }

    Json literal(std::string_view word, Json meaning) {
        if (text_.substr(position_, word.size()) != word) {
            throw JsonError("the value is no JSON");
        }
        position_ += word.size();
        return meaning;
    }

    // The items between the brackets, separated by commas; `item` reads one.
    template <class Item>
    void list(char open, char close, Item item) {
        expect(open);
        skipBlanks();
        if (take(close)) {
            return;
        }
        do {
            item();
            skipBlanks();
        } while (take(','));
        expect(close);
    }

    Json array(int depth) {
        Json::Array items;
        list('[', ']', [&] { items.push_back(value(depth + 1)); });
        return items;
    }

    Json object(int depth) {
        Json::Object members;
        list('{', '}', [&] {
            skipBlanks();
            std::string name = string();
            expect(':');
            members.push_back({std::move(name), value(depth + 1)});
        });
        return members;
    }

    std::string string() {
        expect('"');
        std::string out;
        while (!take('"')) {
            if (take('\\')) {
                escape(out);
            } else if (const auto plain = plainLength(text_, position_); plain > 0) {
                out += text_.substr(position_, plain);
                position_ += plain;
            } else {
                character(out);
            }
        }
        return out;
    }

    void character(std::string& out) {
        const auto length = core::characterSize(text_.substr(position_));
        if (length == 0 || static_cast<unsigned char>(text_[position_]) < 0x20) {
            throw JsonError(position_ < text_.size() ? "the JSON text holds a character that must be escaped"
                                                     : "the JSON text lacks its closing quote");
        }
        out += text_.substr(position_, length);
        position_ += length;
    }

    void escape(std::string& out) {
        constexpr std::string_view kLetters = "\"\\/bfnrt";
        constexpr std::string_view kMeanings = "\"\\/\b\f\n\r\t";
        if (take('u')) {
            core::appendCodePoint(out, escapedCodePoint());
            return;
        }
        const auto which = peek() == '\0' ? std::string_view::npos : kLetters.find(peek());
        if (which == std::string_view::npos) {
            throw JsonError("the JSON text holds an unknown escape");
        }
        ++position_;
        out += kMeanings[which];
    }

    // Characters beyond U+FFFF are written as two halves.
    char32_t escapedCodePoint() {
        const char32_t first = fourHexDigits();
        if (first < 0xD800 || first > 0xDFFF) {
            return first;
        }
        if (first < 0xDC00 && take('\\') && take('u')) {
            if (const char32_t second = fourHexDigits(); second >= 0xDC00 && second <= 0xDFFF) {
                return 0x10000 + ((first - 0xD800) << 10U) + (second - 0xDC00);
            }
        }
        throw JsonError("the JSON text holds half a character");
    }

    char32_t fourHexDigits() {
        unsigned value = 0;
        const auto digits = text_.substr(std::min(position_, text_.size()), 4);
        const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
        if (digits.size() < 4 || result.ptr != digits.data() + digits.size()) {
            throw JsonError("the JSON text holds an unknown escape");
        }
        position_ += digits.size();
        return value;
    }

    void takeDigits() {
        if (!isDigit(peek())) {
            throw JsonError("the value is no JSON");
        }
        while (isDigit(peek())) {
            ++position_;
        }
    }

    Json number() {
        const auto begin = position_;
        take('-');
        if (!take('0')) {
            takeDigits();
        }
        bool whole = true;
        if (take('.')) {
            whole = false;
            takeDigits();
        }
        if (take('e') || take('E')) {
            whole = false;
            if (!take('-')) {
                take('+');
            }
            takeDigits();
        }
        return numberFrom(text_.substr(begin, position_ - begin), whole);
    }

    static Json numberFrom(std::string_view digits, bool whole) {
        const auto* const end = digits.data() + digits.size();
        std::int64_t integer = 0;
        if (whole && std::from_chars(digits.data(), end, integer).ec == std::errc()) {
            return integer;
        }
        double real = 0;
        if (std::from_chars(digits.data(), end, real).ec != std::errc()) {
            throw JsonError("the number is out of range");
        }
        return real;
    }

    std::string_view text_;
    std::size_t position_ = 0;
};

}  // namespace

JsonRead readJson(std::string_view text) {
    Reader reader(text);
    Json value = reader.value(1);
    return {std::move(value), reader.position()};
}

}  // namespace korvane::console
