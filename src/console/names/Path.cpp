#include "console/names/Path.h"

#include <algorithm>
#include <charconv>

#include "console/ConsoleError.h"

namespace korvane::console {

namespace {

constexpr std::size_t kMostIndices = 3;

class PathReader {
public:
    explicit PathReader(std::string_view text) : text_(text) {}

    Path path() {
        Path path{std::string(text_), {segment()}};
        while (take('.')) {
            path.segments.push_back(segment());
        }
        if (position_ < text_.size()) {
            fail();
        }
        return path;
    }

private:
    Segment segment() {
        Segment segment;
        const auto end = std::min(text_.find_first_of(".()#,", position_), text_.size());
        segment.name = text_.substr(position_, end - position_);
        position_ = end;
        if (segment.name.empty()) {
            fail();
        }
        if (take('#')) {
            segment.instance = number();
        }
        if (take('(')) {
            segment.indexed = true;
            indices(segment.indices);
        }
        return segment;
    }

    void indices(std::vector<int>& into) {
        do {
            into.push_back(number());
        } while (into.size() < kMostIndices && take(','));
        if (!take(')')) {
            fail();
        }
    }

    int number() {
        int value = 0;
        const auto* const begin = text_.data() + position_;
        const auto result = std::from_chars(begin, text_.data() + text_.size(), value);
        if (result.ec != std::errc()) {
            fail();
        }
        position_ += static_cast<std::size_t>(result.ptr - begin);
        return value;
    }

    bool take(char character) {
        if (position_ >= text_.size() || text_[position_] != character) {
            return false;
        }
        ++position_;
        return true;
    }

    [[noreturn]] void fail() const { throw ConsoleError(shown(text_) + " is no name"); }

    std::string_view text_;
    std::size_t position_ = 0;
};

}  // namespace

Path parsePath(std::string_view text) {
    return PathReader(text).path();
}

std::string written(std::span<const Segment> segments) {
    std::string out;
    for (const auto& segment : segments) {
        out += out.empty() ? "" : ".";
        out += segment.name;
        if (segment.instance) {
            out += '#' + std::to_string(*segment.instance);
        }
        for (std::size_t i = 0; i < segment.indices.size(); ++i) {
            out += (i == 0 ? "(" : ",") + std::to_string(segment.indices[i]);
        }
        out += segment.indexed ? ")" : "";
    }
    return out;
}

}  // namespace korvane::console
