// Paints a 3D map: floor and walls with their lines, the map itself coloured by height, the texts around it.
#pragma once

#include <QColor>
#include <QFont>
#include <QPainter>
#include <QPalette>
#include <QString>

#include <optional>
#include <vector>

#include "views/widgets/charts/AxisLabels.h"
#include "views/widgets/charts/Surface.h"

namespace korvane::views {

// What is painted.
struct ChartScene {
    Heights heights;
    HeightScale scale;
    std::vector<QString> rowLabels, columnLabels;
    std::vector<Face> faces;
    std::optional<int> marked;  // the cell under the mouse
};

// From blue at the floor (0) to red at the top (1).
[[nodiscard]] QColor colorOfHeight(double height);

class ChartPainter {
public:
    ChartPainter(QPainter& painter, const ChartScene& scene, const Projection& projection, const QPalette& palette)
        : painter_(painter), scene_(scene), projection_(projection), palette_(palette) {}

    // With the painter's font.
    void paint();

    // The size of the largest of the texts.
    [[nodiscard]] static QSizeF largestOf(const std::vector<QString>& texts, const QFont& font);

private:
    [[nodiscard]] QColor ink(double share) const;
    void paintBox();
    void paintFloorLines();
    void paintHeightLines();
    void paintFaces();
    void paintFace(const Face& face);
    void paintLabels(Axis axis, const std::vector<QString>& texts);
    void paintHeightAxis();
    void line(Place from, Place to);

    QPainter& painter_;
    const ChartScene& scene_;
    const Projection& projection_;
    const QPalette& palette_;
};

}  // namespace korvane::views
