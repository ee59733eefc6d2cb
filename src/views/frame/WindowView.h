// What all windows have in common on the screen: title, size, colour, visibility, close box, keys.
#pragma once

#include <QPixmap>
#include <QString>
#include <QWidget>

#include <functional>
#include <vector>

#include "controls/Window.h"
#include "views/frame/Binder.h"

class QShortcut;

namespace korvane::views {

class Desk;
class HelpWindow;

// Base of the views. A view holds no state of its own: what it shows is in the window, whose sizes are in twips, 15 to
// a logical pixel. It appears and goes with the window's Visible. Its title is that of WindowGuide and the window's
// caption.
class WindowView : public QWidget, private controls::Observer {
public:
    WindowView(controls::Window& window, FrameClock& clock);
    WindowView(const WindowView&) = delete;
    WindowView& operator=(const WindowView&) = delete;
    ~WindowView() override;

    // Where the window appears and how large, on real screens. Without a desk it has its own size.
    void setDesk(const Desk* desk) { desk_ = desk; }
    // Shows the window as it is now; the host calls it once the view is built.
    void open();
    // The window is going: the view is hidden and uses nothing of it from now on.
    void detach();
    // Detaches the view, which deletes itself as soon as no handler of the window runs that it has called.
    void leave();

    // The view as it looks now, on screen or not.
    [[nodiscard]] QPixmap picture();

    // `show` is called with the caption each time that it changes.
    void onCaption(std::function<void(const QString&)> show);

    [[nodiscard]] Binder& binder() { return binder_; }

protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

    // The user closes the window: whether it may go.
    [[nodiscard]] virtual bool mayClose() { return true; }

    [[nodiscard]] QSize modelSize() const;
    // The window learns of a size that is not its own.
    void reportSize();

    // The focus has moved to this widget, which may be out of sight.
    virtual void focusMoved(QWidget&) {}

    // In which size the window opens, if the screen has room for it.
    [[nodiscard]] virtual QSize wantedSize() const { return size(); }
    [[nodiscard]] const Desk* desk() const { return desk_; }

private:
    void propertyChanged(controls::Object& object, const void* property) override;
    void showTitle();
    void showColor();
    void showSize();
    void showVisible();
    void showFocus();
    void activated();

    void addKeys();
    void addKey(Qt::Key key, const QString& text, void (WindowView::*action)());
    void sendToFocus(QKeyEvent&& key);
    void showHelp();
    void readWindow();
    void escape();
    void goBackToMap();

    controls::Window& window_;
    Binder binder_;
    std::vector<QShortcut*> keys_;  // those that the control with the focus gets first
    const Desk* desk_ = nullptr;
    HelpWindow* help_ = nullptr;
    std::function<void(const QString&)> showCaption_;
    bool opened_ = false;
    bool activated_ = false;
    bool reporting_ = false;
};

}  // namespace korvane::views
