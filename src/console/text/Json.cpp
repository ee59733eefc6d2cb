#include "console/text/Json.h"

#include <array>
#include <charconv>
#include <cmath>

#include "core/TextEncoding.h"

namespace korvane::console {

namespace {

template <class T>
std::string_view shortestText(std::array<char, 40>& buffer, T value) {
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
    return {buffer.data(), static_cast<std::size_t>(result.ptr - buffer.data())};
}

// The double with the float's own short text: 3.1, not 3.0999999046325684.
double widened(float value) {
    std::array<char, 40> buffer{};
    const auto text = shortestText(buffer, value);
    double wide = 0;
    std::from_chars(text.data(), text.data() + text.size(), wide);
    return wide;
}

void appendCharacter(std::string& out, unsigned char character) {
    constexpr std::string_view kHex = "0123456789abcdef";
    switch (character) {
        case '"':
        case '\\':
            out += '\\';
            out += static_cast<char>(character);
            return;
        case '\n':
            out += "\\n";
            return;
        case '\r':
            out += "\\r";
            return;
        case '\t':
            out += "\\t";
            return;
        default:
            out += "\\u00";
            out += kHex[character >> 4U];
            out += kHex[character & 0xFU];
    }
}

void appendText(std::string& out, std::string_view text) {
    out += '"';
    for (std::size_t i = 0; i < text.size();) {
        const auto plain = plainLength(text, i);
        if (plain > 0) {
            out += text.substr(i, plain);
            i += plain;
            continue;
        }
        const auto length = core::characterSize(text.substr(i));
        const auto first = static_cast<unsigned char>(text[i]);
        if (length == 0) {
            out += "\xEF\xBF\xBD";
        } else if (first < 0x20 || first == '"' || first == '\\') {
            appendCharacter(out, first);
        } else {
            out += text.substr(i, length);
        }
        i += length == 0 ? 1 : length;
    }
    out += '"';
}

void appendArray(std::string& out, const Json::Array& array) {
    out += '[';
    for (std::size_t i = 0; i < array.size(); ++i) {
        out += i == 0 ? "" : ",";
        appendJson(out, array[i]);
    }
    out += ']';
}

void appendObject(std::string& out, const Json::Object& object) {
    out += '{';
    for (std::size_t i = 0; i < object.size(); ++i) {
        out += i == 0 ? "" : ",";
        appendText(out, object[i].name);
        out += ':';
        appendJson(out, object[i].value);
    }
    out += '}';
}

}  // namespace

std::size_t plainLength(std::string_view text, std::size_t position) {
    std::size_t end = position;
    while (end < text.size() && text[end] >= ' ' && text[end] < '\x7F' && text[end] != '"' && text[end] != '\\') {
        ++end;
    }
    return end - position;
}

Json::Json(double value) {
    if (std::isfinite(value)) {
        value_ = value;
    }
}

Json::Json(float value) : Json(std::isfinite(value) ? widened(value) : std::nan("")) {}

void appendJson(std::string& out, const Json& value) {
    std::array<char, 40> buffer{};
    if (value.isNull()) {
        out += "null";
    } else if (const auto* flag = value.asBool()) {
        out += *flag ? "true" : "false";
    } else if (const auto* whole = value.asWhole()) {
        out += shortestText(buffer, *whole);
    } else if (const auto* real = value.asDouble()) {
        out += shortestText(buffer, *real);
    } else if (const auto* text = value.asText()) {
        appendText(out, *text);
    } else if (const auto* array = value.asArray()) {
        appendArray(out, *array);
    } else {
        appendObject(out, *value.asObject());
    }
}

std::string writeJson(const Json& value) {
    std::string out;
    appendJson(out, value);
    return out;
}

}  // namespace korvane::console
