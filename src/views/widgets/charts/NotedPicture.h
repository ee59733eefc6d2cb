// A picture whose tool-tip has a line that is asked for when it opens, so that it costs nothing while the picture
// changes.
#pragma once

#include <functional>

#include "views/widgets/charts/PictureView.h"

namespace korvane::views {

class NotedPicture : public PictureView {
public:
    // The note comes behind the picture's own tool-tip.
    NotedPicture(std::function<QString()> note, QWidget* parent);

protected:
    bool event(QEvent* event) override;

private:
    std::function<QString()> note_;
};

}  // namespace korvane::views
