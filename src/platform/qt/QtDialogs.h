// Message boxes and file dialogs on the display.
#pragma once

#include <QString>
#include <QStringList>

#include "platform/Dialogs.h"
#include "platform/qt/QtPump.h"

namespace korvane::platform {

// "All Files (*.txt)|*.txt" in the toolkit's form: one text for each pair, "All Files (*.txt)".
[[nodiscard]] QStringList nameFilters(std::string_view filter);

// Needs a QApplication. Dialogs are shown in front of the active window.
class QtDialogs : public Dialogs {
public:
    // A user whose hands are on a script is asked no questions.
    enum class Questions { Asked, LeftOut };

    explicit QtDialogs(QtPump& pump, Questions questions = Questions::Asked) : pump_(pump), questions_(questions) {}

    void show(const MessageBox& box) override;
    // Starts in the folder of the last choice. Handlers run meanwhile: polling and logging go on. A name to save to
    // that lacks an ending gets that of the filter.
    [[nodiscard]] std::string choose(const FileDialog& dialog) override;

    [[nodiscard]] Answer ask(const Question& question) override;

private:
    QtPump& pump_;
    Questions questions_;
    QString folder_;
};

}  // namespace korvane::platform
