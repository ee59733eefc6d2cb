#include "views/widgets/PlainTip.h"

#include <QTextDocument>

namespace korvane::views {

QString plainTip(const QString& text) {
    if (!Qt::mightBeRichText(text)) {
        return text;
    }
    return QStringLiteral("<qt>") + text.toHtmlEscaped().replace(u'\n', QStringLiteral("<br>"));
}

}  // namespace korvane::views
