#include "views/widgets/Palette.h"

#include <QApplication>
#include <QWidget>

#include <algorithm>
#include <cmath>

namespace korvane::views {

namespace {

constexpr int kByte = 0xFF;
constexpr double kBorderShare = 0.18;
constexpr double kEdgeContrast = 3;
constexpr double kEdgeStep = 0.02;
constexpr double kMutedShare = 0.32;
constexpr double kTileShareLight = 0.045;
constexpr double kTileShareDark = 0.28;
constexpr double kFaceShareDark = 0.68;
constexpr int kSurfaceLight = 104;  // percent
constexpr int kSurfaceDark = 128;

struct Roles {
    QColor window, text, base, alternate, button, highlight, faint;
};

QPalette paletteOf(const Roles& roles) {
    QPalette palette(roles.text, roles.button, mixed(roles.button, Qt::white, 0.3), mixed(roles.button, Qt::black, 0.5),
                     mixed(roles.button, Qt::black, 0.25), roles.text, Qt::white, roles.base, roles.window);
    palette.setColor(QPalette::AlternateBase, roles.alternate);
    palette.setColor(QPalette::ToolTipBase, roles.alternate);
    palette.setColor(QPalette::ToolTipText, roles.text);
    palette.setColor(QPalette::Highlight, roles.highlight);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, roles.highlight);
    palette.setColor(QPalette::PlaceholderText, roles.faint);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, roles.faint);
    }
    return palette;
}

}  // namespace

QColor colorOf(controls::Color color, const QPalette& palette) {
    switch (color) {
        case controls::kButtonFace:
            return palette.color(QPalette::Window);
        case controls::kButtonText:
            return palette.color(QPalette::WindowText);
        case controls::kWindowBackground:
            return palette.color(QPalette::Base);
        case controls::kWindowText:
            return palette.color(QPalette::Text);
        default:
            return {static_cast<int>(color & kByte), static_cast<int>(color >> 8 & kByte),
                    static_cast<int>(color >> 16 & kByte)};
    }
}

QColor mixed(const QColor& color, const QColor& other, double share) {
    const auto part = [share](int one, int two) { return qRound(one + (two - one) * share); };
    return {part(color.red(), other.red()), part(color.green(), other.green()), part(color.blue(), other.blue())};
}

// The ratio of their luminances as the web's accessibility guidelines define it.
double contrast(const QColor& one, const QColor& other) {
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    const auto luminance = [&](const QColor& color) {
        return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
    };
    const auto [dark, light] = std::minmax({luminance(one), luminance(other)});
    return (light + 0.05) / (dark + 0.05);
}

QColor visibleOn(const QColor& ground, const QColor& wanted, double least) {
    if (contrast(ground, wanted) >= least) {
        return wanted;
    }
    return contrast(ground, Qt::black) > contrast(ground, Qt::white) ? Qt::black : Qt::white;
}

void setOwnColor(QWidget& widget, QPalette::ColorRole role, const QColor& color) {
    QPalette palette;
    palette.setResolveMask(0);
    if (color.isValid()) {
        palette.setColor(role, color);
    }
    widget.setPalette(palette);
}

namespace shades {

// Decided by the ground and not by the text's colour, which the program may set for a single text.
bool isDark(const QPalette& palette) {
    const QColor ground = palette.color(QPalette::Window);
    return contrast(ground, Qt::white) > contrast(ground, Qt::black);
}

QColor surface(const QPalette& palette) {
    return palette.color(QPalette::Window).lighter(isDark(palette) ? kSurfaceDark : kSurfaceLight);
}

QColor tile(const QPalette& palette) {
    return mixed(surface(palette), Qt::black, isDark(palette) ? kTileShareDark : kTileShareLight);
}

QColor border(const QPalette& palette) {
    return mixed(surface(palette), palette.color(QPalette::WindowText), kBorderShare);
}

// With as little of the text's colour as will do.
QColor edge(const QPalette& palette) {
    const QColor text = palette.color(QPalette::WindowText);
    const auto stands = [&palette](const QColor& color) {
        return contrast(color, palette.color(QPalette::Window)) >= kEdgeContrast &&
               contrast(color, surface(palette)) >= kEdgeContrast &&
               contrast(color, palette.color(QPalette::Base)) >= kEdgeContrast;
    };
    for (double share = kBorderShare; share < 1; share += kEdgeStep) {
        if (const QColor color = mixed(surface(palette), text, share); stands(color)) {
            return color;
        }
    }
    return text;
}

QColor muted(const QPalette& palette) {
    return mixed(palette.color(QPalette::WindowText), surface(palette), kMutedShare);
}

QColor names(const QWidget& widget) {
    const QPalette& palette = widget.palette();
    const bool own =
        widget.testAttribute(Qt::WA_SetPalette) && palette.isBrushSet(QPalette::Active, QPalette::WindowText);
    return own ? palette.color(QPalette::WindowText) : muted(palette);
}

QColor face(const QPalette& palette) {
    const QColor base = palette.color(QPalette::Base);
    return isDark(palette) ? mixed(base, Qt::black, kFaceShareDark) : base;
}

}  // namespace shades

QPalette Palette::dark() {
    return paletteOf({.window = {24, 27, 32},
                      .text = {232, 234, 238},
                      .base = {50, 55, 64},
                      .alternate = {58, 63, 73},
                      .button = {52, 58, 67},
                      .highlight = {38, 112, 196},
                      .faint = {122, 128, 138}});
}

QPalette Palette::light() {
    return paletteOf({.window = {236, 238, 241},
                      .text = {24, 28, 33},
                      .base = {255, 255, 255},
                      .alternate = {245, 247, 249},
                      .button = {236, 238, 241},
                      .highlight = {28, 100, 188},
                      .faint = {140, 146, 154}});
}

void Palette::setDark(QApplication& application) {
    application.setPalette(dark());
}

void Palette::setLight(QApplication& application) {
    application.setPalette(light());
}

}  // namespace korvane::views
