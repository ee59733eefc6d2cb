// Reads and assigns the property that a Finder has found; declared in Finder.h.
#include <array>

#include "console/ConsoleError.h"
#include "console/names/Finder.h"
#include "console/text/Convert.h"
#include "controls/PictureBox.h"

namespace korvane::console {

namespace {

using controls::Drawing;
using controls::PropertyInfo;

std::string colorText(controls::Color color) {
    constexpr std::string_view kHex = "0123456789ABCDEF";
    std::string out = "#";
    for (const unsigned shift : {4U, 0U, 12U, 8U, 20U, 16U}) {  // red is the lowest byte, blue the highest
        out += kHex[(color >> shift) & 0xFU];
    }
    return out;
}

Json shapeJson(const char* kind, controls::Point from, controls::Point to, const std::string& color) {
    return Json::Array{kind, from.x, from.y, to.x, to.y, color};
}

void appendShape(Json::Array& out, const Drawing& drawing, const Drawing::Shape& shape) {
    const auto color = colorText(shape.color);
    if (shape.kind == Drawing::Kind::Text) {
        const auto& text = drawing.textOf(shape);
        out.emplace_back(Json::Array{"text", text.at.x, text.at.y, text.words, color});
        return;
    }
    const auto points = drawing.pointsOf(shape);
    const char* const kind = shape.kind == Drawing::Kind::Box ? "box" : "line";
    for (std::size_t i = 1; i < points.size(); ++i) {
        out.push_back(shapeJson(kind, points[i - 1], points[i], color));
    }
}

Json drawingJson(const Drawing& drawing) {
    Json::Array out;
    for (const auto& shape : drawing.shapes()) {
        appendShape(out, drawing, shape);
    }
    return out;
}

std::string pathOf(const Target& target) {
    return target.owner + '.' + written(std::span(&target.property, 1));
}

[[noreturn]] void noSuchProperty(const Target& target) {
    std::string text = target.owner + " has no property " + shown(written(std::span(&target.property, 1)));
    if (target.control != nullptr) {
        text += " (" + withArticle(target.control->kind());
        const auto main = target.control->mainProperty();
        text += main.empty() ? ")" : " has " + std::string(main) + ")";
    }
    throw ConsoleError(text);
}

std::optional<Json> specialProperty(const Target& target) {
    if (target.control == nullptr || target.property.instance) {
        return {};
    }
    if (target.property.indexed) {
        const auto value = target.control->indexedProperty(target.property.name, target.property.indices);
        return value ? std::optional(toJson(*value)) : std::nullopt;
    }
    const auto* picture = dynamic_cast<const controls::PictureBox*>(target.control);
    if (picture != nullptr && target.property.name == "Drawing") {
        return drawingJson(picture->drawing());
    }
    return {};
}

template <class Action>
auto named(const Target& target, Action&& action) {
    try {
        return action();
    } catch (const std::exception& error) {
        throw ConsoleError(pathOf(target) + ": " + error.what());
    }
}

}  // namespace

Json readProperty(const Target& target) {
    if (auto special = named(target, [&] { return specialProperty(target); })) {
        return std::move(*special);
    }
    const PropertyInfo* const info =
        target.property.isPlain() ? target.object->findProperty(target.property.name) : nullptr;
    if (info == nullptr) {
        noSuchProperty(target);
    }
    return named(target, [&] { return toJson(info->get(*target.object)); });
}

void assignProperty(const Target& target, const Json& value) {
    const PropertyInfo* const info =
        target.property.isPlain() ? target.object->findProperty(target.property.name) : nullptr;
    if (info == nullptr || info->set == nullptr) {
        static_cast<void>(readProperty(target));
        throw ConsoleError(pathOf(target) + " can only be read");
    }
    named(target, [&] { info->set(*target.object, toValue(value)); });
}

}  // namespace korvane::console
