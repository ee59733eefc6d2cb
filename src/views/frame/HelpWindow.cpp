#include "views/frame/HelpWindow.h"

#include <QFontInfo>
#include <QScreen>
#include <QShortcut>
#include <QTextBrowser>
#include <QVBoxLayout>

#include "views/widgets/Child.h"

namespace korvane::views {

namespace {

constexpr int kWidth = 40;  // text sizes
constexpr double kScreenShare = 0.85;
constexpr int kKeyGap = 18;

QString html(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())).toHtmlEscaped();
}

// As high as its text, and no higher than the screen.
QSize sizeFor(QTextBrowser& text, const QWidget& window) {
    const int width = QFontInfo(window.font()).pixelSize() * kWidth;
    text.document()->setTextWidth(width);
    const int frame = 2 * text.frameWidth();
    const QSize needed(width + frame, static_cast<int>(text.document()->size().height()) + frame);
    return needed.boundedTo(window.screen()->availableSize() * kScreenShare);
}

}  // namespace

HelpWindow::HelpWindow(const WindowGuide& guide, QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("help"));
    QDialog* const self = this;
    auto& rows = child<QVBoxLayout>(self);
    rows.setContentsMargins(0, 0, 0, 0);
    auto& text = child<QTextBrowser>(self);
    text.setFrameShape(QFrame::NoFrame);
    text.setAccessibleName(QStringLiteral("Help"));
    text.document()->setDocumentMargin(kKeyGap);
    text.setHtml(helpText(guide));
    rows.addWidget(&text);
    resize(sizeFor(text, *this));
    for (const auto key : {Qt::Key_Q, Qt::Key_W}) {
        connect(&child<QShortcut>(self, QKeySequence(Qt::CTRL | key)), &QShortcut::activated, this, &QDialog::close);
    }
}

QString helpText(const WindowGuide& guide) {
    QString text = QStringLiteral("<p>%1</p><table cellspacing=0>").arg(html(guide.purpose));
    for (const auto& key : keysOf(guide)) {
        text += QStringLiteral(
                    "<tr><td style='padding: 3px %1px 3px 0; white-space: nowrap'><b>%2</b></td>"
                    "<td style='padding: 3px 0'>%3</td></tr>")
                    .arg(kKeyGap)
                    .arg(html(key.keys), html(key.what));
    }
    return text + QStringLiteral("</table>");
}

}  // namespace korvane::views
