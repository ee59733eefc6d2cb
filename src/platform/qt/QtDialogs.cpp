#include "platform/qt/QtDialogs.h"

#include <QApplication>
#include <QCheckBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>

#include <memory>

namespace korvane::platform {

namespace {

QMessageBox::Icon iconOf(MessageIcon icon) {
    switch (icon) {
        case MessageIcon::Information:
            return QMessageBox::Information;
        case MessageIcon::Exclamation:
            return QMessageBox::Warning;
        case MessageIcon::Critical:
            return QMessageBox::Critical;
        case MessageIcon::None:
            break;
    }
    return QMessageBox::NoIcon;
}

QString textOf(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

// "txt" of "All Files (*.txt)", empty when every name fits.
QString endingOf(const QString& nameFilter) {
    const QString ending = nameFilter.section("(*.", 1).section(')', 0, 0).section(' ', 0, 0);
    return ending == "*" ? QString() : ending;
}

// Whether the user accepted the dialog. If its window closes meanwhile, the dialog is deleted and `dialog` is null.
// Otherwise the caller deletes it at once: the next dialog could take it for the active window.
template <class Dialog>
bool execute(std::unique_ptr<Dialog>& dialog) {
    const QPointer<Dialog> alive(dialog.get());
    const bool accepted = dialog->exec() == QDialog::Accepted;
    if (!alive) {
        static_cast<void>(dialog.release());
    }
    return accepted && alive;
}

}  // namespace

QStringList nameFilters(std::string_view filter) {
    const QStringList parts = textOf(filter).split('|', Qt::SkipEmptyParts);
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        const QString description = parts[i].section('(', 0, 0).trimmed();
        const QString patterns = parts[i + 1].split(';').join(' ');
        filters.append(description + " (" + patterns + ")");
    }
    return filters;
}

void QtDialogs::show(const MessageBox& box) {
    const QtPump::Hold hold(pump_);
    const QString title = box.title.empty() ? QStringLiteral("Korvane Tuner") : textOf(box.title);
    auto shown = std::make_unique<QMessageBox>(iconOf(box.icon), title, QString(), QMessageBox::Ok,
                                               QApplication::activeWindow());
    shown->setTextFormat(Qt::PlainText);
    shown->setText(textOf(box.text));
    static_cast<void>(execute(shown));
}

// Escape and the close box are no. A question that goes with its window was not answered: that is no, too.
Answer QtDialogs::ask(const Question& question) {
    if (questions_ == Questions::LeftOut) {
        return {};
    }
    const QtPump::Hold hold(pump_);
    auto shown = std::make_unique<QMessageBox>(QMessageBox::Question, textOf(question.title), QString(),
                                               QMessageBox::NoButton, QApplication::activeWindow());
    shown->setTextFormat(Qt::PlainText);
    shown->setText(textOf(question.text));
    const auto* const yes = shown->addButton(textOf(question.yes), QMessageBox::AcceptRole);
    auto* const no = shown->addButton(textOf(question.no), QMessageBox::RejectRole);
    shown->setDefaultButton(no);
    shown->setEscapeButton(no);
    if (!question.stop.empty()) {
        shown->setCheckBox(std::make_unique<QCheckBox>(textOf(question.stop)).release());  // which owns it then
    }
    static_cast<void>(execute(shown));
    if (shown == nullptr) {
        return {false, false};
    }
    const auto* const stop = shown->checkBox();
    return {shown->clickedButton() == yes, stop != nullptr && stop->isChecked()};
}

std::string QtDialogs::choose(const FileDialog& dialog) {
    auto shown = std::make_unique<QFileDialog>(QApplication::activeWindow(), textOf(dialog.title), folder_);
    const bool saves = dialog.kind == FileDialog::Kind::Save;
    const QStringList filters = nameFilters(dialog.filter);
    shown->setAcceptMode(saves ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    shown->setFileMode(saves ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    shown->setNameFilters(filters);
    shown->setOption(QFileDialog::DontConfirmOverwrite, !dialog.confirmOverwrite);
    shown->setDefaultSuffix(saves && !filters.isEmpty() ? endingOf(filters.first()) : QString());
    const QStringList files = execute(shown) ? shown->selectedFiles() : QStringList();
    if (files.isEmpty()) {
        return {};
    }
    folder_ = QFileInfo(files.first()).absolutePath();
    return files.first().toStdString();
}

}  // namespace korvane::platform
