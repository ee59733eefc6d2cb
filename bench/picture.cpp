// A plot of many rows on the screen: taking over its drawing and painting it, five series at 1920 by 1080.
#include <QApplication>
#include <QImage>

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <random>

#include "views/widgets/charts/PictureView.h"

namespace {

using namespace korvane;  // NOLINT

constexpr int kWidth = 28800;  // twips: 1920 pixels
constexpr int kHeight = 16200;
constexpr int kSeries = 5;

// With `restless` each row has another value; else each row is near the one before.
controls::Drawing drawingOf(int rows, bool restless) {
    controls::Drawing drawing;
    std::mt19937 random(5);
    for (int series = 0; series < kSeries; ++series) {
        const auto points = drawing.polyline(static_cast<std::size_t>(rows), 0xFF << series);
        int y = kHeight * (series + 1) / (kSeries + 1);
        for (int row = 0; row < rows; ++row) {
            y = restless ? static_cast<int>(random() % kHeight)
                         : std::clamp(y + static_cast<int>(random() % 101) - 50, 0, kHeight);
            const double x = kWidth - static_cast<double>(row) * kWidth / rows;
            points[static_cast<std::size_t>(row)] = {static_cast<std::int16_t>(x), static_cast<std::int16_t>(y)};
        }
    }
    return drawing;
}

void Picture(benchmark::State& state) {
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    int count = 0;
    const QApplication application(count, nullptr);
    const controls::Drawing drawing = drawingOf(static_cast<int>(state.range(0)), state.range(1) != 0);
    views::PictureView picture(nullptr);
    picture.resize(1920, 1080);
    QImage image(picture.size(), QImage::Format_RGB32);
    for (auto _ : state) {
        picture.setDrawing(drawing, kWidth, Qt::black);
        picture.render(&image);
    }
}

BENCHMARK(Picture)
    ->ArgNames({"rows", "restless"})
    ->Args({350, 0})
    ->Args({10000, 0})
    ->Args({50000, 0})
    ->Args({10000, 1})
    ->Args({50000, 1})
    ->Unit(benchmark::kMillisecond);

}  // namespace
