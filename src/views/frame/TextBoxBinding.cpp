// Continues Binder: boxes that are typed into.
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QLineEdit>

#include "views/frame/Binder.h"
#include "views/frame/Keys.h"

namespace korvane::views {

namespace {

class TextBoxBinding : public Binding {
public:
    TextBoxBinding(Binder& binder, controls::TextBox& box, QLineEdit& widget)
        : Binding(binder, box, widget), box_(box), line_(widget) {
        connect(&line_, &QLineEdit::textEdited, this, [this](const QString& text) { edited(text); });
    }

protected:
    void showContent() override {
        line_.setReadOnly(box_.Locked);
        const QString text = QString::fromStdString(box_.Text);
        if (line_.text() != text) {
            const int cursor = line_.cursorPosition();
            line_.setText(text);
            line_.setCursorPosition(cursor);
        }
    }

    [[nodiscard]] Roles roles() const override {
        return {QPalette::Base, QPalette::Text, controls::kWindowBackground, controls::kWindowText};
    }

    // A handler may drop the character or put another in its place.
    bool characterTyped(QKeyEvent& event) override {
        const int character = characterOf(event);
        const int passed = filtered(character);
        if (passed == 0 || !binder().isAttached()) {
            return true;
        }
        if (passed != character && !box_.Locked) {
            line_.insert(QString(QChar(passed)));
            return true;
        }
        return false;
    }

    // Characters that an input method puts together, accented letters among them, come without a key of their own.
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (Binding::eventFilter(watched, event)) {
            return true;
        }
        if (event->type() != QEvent::InputMethod || watched != &line_ || box_.Locked || !binder().isAttached()) {
            return false;
        }
        auto& input = static_cast<QInputMethodEvent&>(*event);
        QString passed;
        for (const auto character : input.commitString().toUcs4()) {
            if (const int kept = binder().isAttached() ? filtered(static_cast<int>(character)) : 0; kept != 0) {
                const auto code = static_cast<char32_t>(kept);
                passed += QString::fromUcs4(&code, 1);
            }
        }
        input.setCommitString(passed, input.replacementStart(), input.replacementLength());
        return !binder().isAttached();
    }

private:
    [[nodiscard]] int filtered(int character) {
        int passed = character;
        act([&] { passed = box_.keyPress(character); });
        return passed;
    }

    void edited(const QString& text) {
        act([&] { box_.Text = text.toStdString(); });
    }

    controls::TextBox& box_;
    QLineEdit& line_;
};

}  // namespace

void Binder::bind(controls::TextBox& box, QLineEdit& widget) {
    add(std::make_unique<TextBoxBinding>(*this, box, widget));
}

}  // namespace korvane::views
