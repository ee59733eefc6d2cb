#include "trend/cTrendline.h"

#include "core/Numbers.h"
#include "platform/RuntimeError.h"
#include "trend/TableDraw.h"

namespace korvane::trend {

void cTrendline::DrawTrend(const TrendTable& table, bool rightScale) {
    try {
        draw(table, rightScale);
    } catch (const platform::RuntimeError&) {  // NOLINT(bugprone-empty-catch): the next draw tries again
    }
    if (PicBox != nullptr) {
        PicBox->drawn();
    }
}

void cTrendline::draw(const TrendTable& table, bool rightScale) {
    if (PicBox == nullptr) {
        platform::raiseObjectNotSet();
    }
    if (AutoScale) {
        scaleTo(table);
    }
    maxY = maxY == 0 ? kUsualMaxY : maxY;
    Resolution = Resolution == 0 ? kUsualResolution : Resolution;
    maxX = maxX == 0 ? kUsualMaxX : maxX;
    plot_.begin(*PicBox, {maxY, minY, Resolution, maxX, ShowLimits}, rightScale);
    drawTable(plot_, table, maxX, {}, rightScale);
}

void cTrendline::scaleTo(const TrendTable& table) {
    maxY = core::toInt16(scaleFor(core::toInt16(peakOfTable(table, maxX)), maxY));
}

}  // namespace korvane::trend
