// What all windows have in common on the screen: title, size, colour, visibility, close box, keys.
#pragma once

#include <QPixmap>
#include <QWidget>

#include "controls/Window.h"
#include "views/frame/Binder.h"

namespace korvane::views {

// Base of the views. A view holds no state of its own: what it shows is in the window, whose sizes are in twips, 15 to
// a logical pixel. It appears and goes with the window's Visible.
class WindowView : public QWidget, private controls::Observer {
public:
    WindowView(controls::Window& window, FrameClock& clock);
    WindowView(const WindowView&) = delete;
    WindowView& operator=(const WindowView&) = delete;
    ~WindowView() override;

    // Shows the window as it is now; the host calls it once the view is built.
    void open();
    // The window is going: the view is hidden and uses nothing of it from now on.
    void detach();
    // Detaches the view, which deletes itself as soon as no handler of the window runs that it has called.
    void leave();

    // The view as it looks now, on screen or not.
    [[nodiscard]] QPixmap picture();

    [[nodiscard]] Binder& binder() { return binder_; }

protected:
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

    // The user closes the window: whether it may go.
    [[nodiscard]] virtual bool mayClose() { return true; }

    [[nodiscard]] QSize modelSize() const;
    // The window learns of a size that is not its own.
    void reportSize();

private:
    void propertyChanged(controls::Object& object, const void* property) override;
    void showTitle();
    void showColor();
    void showSize();
    void showVisible();

    controls::Window& window_;
    Binder binder_;
    bool reporting_ = false;
};

}  // namespace korvane::views
