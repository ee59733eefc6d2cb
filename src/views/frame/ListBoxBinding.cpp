// Continues Binder: list boxes.
#include <algorithm>

#include "controls/ListBox.h"
#include "views/frame/Binder.h"
#include "views/widgets/TextList.h"

namespace korvane::views {

namespace {

// Brings over only the rows that went and came since it showed them last: a list may get twenty a second for hours.
class ListBoxBinding : public Binding {
public:
    ListBoxBinding(Binder& binder, controls::ListBox& list, TextList& widget)
        : Binding(binder, list, widget), list_(list), texts_(widget), rowsGone_(list.rowsGone()) {
        texts_.onRow([this](int row) { chosen(row); });
    }

    void detach(const ControlSet& alive) override {
        texts_.onRow({});
        Binding::detach(alive);
    }

protected:
    void showContent() override {
        dropRows();
        addRows();
        texts_.select(list_.ListIndex);
    }

    [[nodiscard]] Roles roles() const override {
        return {QPalette::Base, QPalette::Text, controls::kButtonFace, controls::kButtonText};
    }

private:
    void dropRows() {
        const auto gone = std::min<std::int64_t>(list_.rowsGone() - rowsGone_, texts_.rowCount());
        rowsGone_ = list_.rowsGone();
        if (gone > 0) {
            texts_.removeFirst(static_cast<int>(gone));
        }
    }
    void addRows() {
        QStringList more;
        for (int row = texts_.rowCount(); row < list_.ListCount(); ++row) {
            more += QString::fromStdString(list_.List(row));
        }
        if (!more.isEmpty()) {
            texts_.append(more);
        }
    }

    // The toolkit has moved the highlight already; what the program makes of it counts.
    void chosen(int row) {
        act([&] {
            if (list_.usable() && row < list_.ListCount()) {
                list_.choose(row);
            }
        });
        if (binder().isAttached()) {
            texts_.select(list_.ListIndex);
        }
    }

    controls::ListBox& list_;
    TextList& texts_;
    std::int64_t rowsGone_;
};

}  // namespace

void Binder::bind(controls::ListBox& list, TextList& widget) {
    add(std::make_unique<ListBoxBinding>(*this, list, widget));
}

}  // namespace korvane::views
