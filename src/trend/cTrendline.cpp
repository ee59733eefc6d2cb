#include "trend/cTrendline.h"

#include "core/Numbers.h"
#include "platform/RuntimeError.h"
#include "trend/TableDraw.h"

namespace korvane::trend {

namespace {

template <class Draw>
void skippingFailure(Draw draw) {
    try {
        draw();
    } catch (const platform::RuntimeError&) {  // NOLINT(bugprone-empty-catch): the next draw tries again
    }
}

}  // namespace

void cTrendline::DrawTrend(const TrendTable& table, bool rightScale) {
    DrawTrendLater(table, rightScale);
    if (PicBox != nullptr) {
        PicBox->settle();
    }
}

void cTrendline::DrawTrendLater(const TrendTable& table, bool rightScale) {
    skippingFailure([&] {
        place(table, rightScale);
        PicBox->drawLater([this, picture = PicBox] { skippingFailure([&] { drawPlaced(*picture); }); });
    });
    if (PicBox != nullptr) {
        PicBox->drawn();
    }
}

void cTrendline::place(const TrendTable& table, bool rightScale) {
    if (PicBox == nullptr) {
        platform::raiseObjectNotSet();
    }
    if (AutoScale) {
        scaleTo(table);
    }
    maxY = maxY == 0 ? kUsualMaxY : maxY;
    Resolution = Resolution == 0 ? kUsualResolution : Resolution;
    maxX = maxX == 0 ? kUsualMaxX : maxX;
    plot_.place(*PicBox, {maxY, minY, Resolution, maxX, ShowLimits}, rightScale);
    placed_ = {table.seen(), maxX, rightScale};
}

void cTrendline::drawPlaced(controls::PictureBox& picture) {
    plot_.begin(picture);
    drawTable(plot_, placed_.table, placed_.maxX, {}, placed_.rightScale);
}

void cTrendline::scaleTo(const TrendTable& table) {
    maxY = core::toInt16(scaleFor(core::toInt16(peakOfTable(table, maxX)), maxY));
}

}  // namespace korvane::trend
