#include "views/frame/StatusLine.h"

#include "views/widgets/Child.h"

namespace korvane::views {

Readout& makeStatusLine(WindowView& view, const controls::Window& window, const QString& longest, QWidget* parent) {
    auto& status = child<Readout>(parent, Readout::Look{.bold = true});
    status.setObjectName(QStringLiteral("status"));
    status.setText(QString::fromStdString(window.Caption));
    status.setReserve(longest);
    view.onCaption([&status](const QString& caption) { status.setText(caption); });
    return status;
}

}  // namespace korvane::views
