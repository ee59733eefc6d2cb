#include "views/widgets/charts/NotedPicture.h"

#include <QHelpEvent>
#include <QToolTip>

#include <utility>

namespace korvane::views {

NotedPicture::NotedPicture(std::function<QString()> note, QWidget* parent)
    : PictureView(parent), note_(std::move(note)) {}

bool NotedPicture::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip) {
        QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), toolTip() + u'\n' + note_(), this);
        return true;
    }
    return PictureView::event(event);
}

}  // namespace korvane::views
