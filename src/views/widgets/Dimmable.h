// A widget that can be dimmed: what it shows is no longer, or not yet, true.
#pragma once

#include <QColor>
#include <QWidget>

namespace korvane::views {

class Dimmable : public QWidget {
public:
    // Where its value comes from: from the live data, without which it is dimmed, or from other frames of the ECU, of
    // which only a closed port says that none will come.
    enum class Source { Own, LiveData, OtherFrames };
    void setFromEcu(Source source = Source::LiveData) { source_ = source; }
    [[nodiscard]] Source source() const { return source_; }

    void setDimmed(bool dimmed);
    [[nodiscard]] bool isDimmed() const { return dimmed_; }

protected:
    explicit Dimmable(QWidget* parent) : QWidget(parent) {}

    // What the widget paints is mixed with this colour: its ground, which thereby stays as it is.
    [[nodiscard]] virtual QColor ground() const = 0;
    bool event(QEvent* event) override;

private:
    Source source_ = Source::Own;
    bool dimmed_ = false;
};

}  // namespace korvane::views
