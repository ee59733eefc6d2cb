// A part of MainParts: port, speed, connect, and what is known of the line.
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

#include "views/dashboard/MainParts.h"
#include "views/dashboard/PortList.h"
#include "views/frame/LinkMark.h"
#include "views/frame/ObjectPart.h"
#include "views/frame/OpenButton.h"
#include "views/frame/TransferBar.h"
#include "views/widgets/Caption.h"
#include "views/widgets/Card.h"
#include "views/widgets/Child.h"
#include "views/widgets/DropDown.h"
#include "views/widgets/values/Readout.h"

namespace korvane::views {

namespace {

constexpr int kColumnGap = 14;
constexpr int kCaptionGap = 2;
constexpr int kBadgeGap = 4;
constexpr double kStateShare = 0.62;  // of its width, in a low window: the badge beside it needs its word

constexpr OpenButton kTestButton{"testPort", "Test port",
                                 "Finds out why the port does not work; sends nothing by itself"};

// Wide enough for both of its captions, so that nothing moves when they change.
class ConnectButton : public QPushButton {
public:
    explicit ConnectButton(QWidget* parent) : QPushButton(parent) {}

    [[nodiscard]] QSize sizeHint() const override {
        const int longest = fontMetrics().horizontalAdvance(QStringLiteral("Disconnect"));
        return {longest + fontMetrics().height() * 2, QPushButton::sizeHint().height()};
    }
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }
};

class Bar {
public:
    Bar(Binder& binder, QWidget* parent)
        : binder_(binder), card_(child<Card>(parent)), row_(child<QHBoxLayout>(&card_)) {
        card_.setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
        row_.setSpacing(kColumnGap);
    }

    [[nodiscard]] Card& card() { return card_; }

    template <class List = DropDown>
    void addList(controls::ComboBox& box, const QString& caption, const QString& longest) {
        auto& list = child<List>(&card_);
        list.setMinimumContentsLength(static_cast<int>(longest.size()));
        binder_.bind(box, list);
        addColumn(child<Caption>(&card_, caption, &list), list);
    }

    void addButton(controls::CommandButton& button, char mnemonic) {
        auto& push = child<ConnectButton>(&card_);
        binder_.bind(button, push, mnemonic);
        addColumn(child<Caption>(&card_, QString(), nullptr), push);
    }

    // Beside the button that connects, while there is a reason to test.
    void addTest(link::PortDoubt& doubt) {
        auto& test = makeOpenButton(kTestButton, binder_, &card_, [&doubt] { doubt.test(); });
        addColumn(child<Caption>(&card_, QString(), nullptr), test);
        ObjectPart::bind(binder_, {&doubt}, [&test, &doubt] { test.setVisible(doubt.Shown && doubt.test); });
    }

    Readout& addReadout(controls::Label& label, const QString& caption, const QString& longest) {
        auto& readout = child<Readout>(&card_);
        readout.setReserve(longest);
        binder_.bind(label, readout);
        addColumn(child<Caption>(&card_, caption, &readout), readout);
        return readout;
    }

    // The bar is beside the caption, where it takes no space from the texts.
    void addState(link::ConnectionPanel& panel) {
        controls::Label& state = panel.lblState;
        QWidget* const inside = &card_;
        auto& readout = child<Readout>(inside, Readout::Look{.bold = true});
        readout.setReserve(QStringLiteral("COM15; 230400 Connected"));
        readout.setNarrowest(kStateShare);
        // Keeps what it said when the port closes, as version and features do.
        readout.setFromEcu(Dimmable::Source::OtherFrames);
        binder_.bind(state, readout);
        auto& bar = makeTransferBar(panel.prgSettings, binder_, inside, QStringLiteral("Settings asked for"),
                                    QStringLiteral("Settings %p% asked"));
        bar.setMinimumWidth(0);
        ObjectPart::bind(binder_, {&panel.settingsTally}, [&bar, &tally = panel.settingsTally] {
            bar.setFormat(QString::fromStdString(tally.Text.get().empty() ? "Settings %p% asked" : tally.Text.get()));
        });
        auto& line = child<QHBoxLayout>(kNobody);
        line.addWidget(&child<Caption>(inside, QStringLiteral("Connection"), &readout));
        line.addWidget(&bar, 1);
        auto& column = makeColumn();
        column.addLayout(&line);
        column.addLayout(&makeStateRow(readout), 1);
    }

    void addSpace() { row_.addStretch(1); }

private:
    // The state, and beside it the badge with the age of the data.
    static QHBoxLayout& makeStateRow(Readout& state) {
        auto& row = child<QHBoxLayout>(kNobody);
        row.setSpacing(kBadgeGap);
        row.addWidget(&state);
        auto& badge = child<QHBoxLayout>(kNobody);
        badge.setObjectName(QLatin1String(LinkMark::kPlace));
        row.addLayout(&badge);
        return row;
    }

    QVBoxLayout& makeColumn() {
        auto& column = child<QVBoxLayout>(kNobody);
        column.setSpacing(kCaptionGap);
        row_.addLayout(&column);
        return column;
    }

    void addColumn(Caption& caption, QWidget& field) {
        auto& column = makeColumn();
        column.addWidget(&caption);
        column.addWidget(&field, 1);
    }

    Binder& binder_;
    Card& card_;
    QHBoxLayout& row_;
};

}  // namespace

QWidget& makeConnectionBar(live::FrmSarn2& window, Binder& binder, QWidget* parent) {
    Bar bar(binder, parent);
    bar.addList<PortList>(window.ComboPort, QStringLiteral("&Port"), QStringLiteral("COM15"));
    bar.addList(window.ComboBaud, QStringLiteral("&Speed"), QStringLiteral("230400"));
    bar.addList(window.ComboRefresh, QStringLiteral("&Refresh"), QStringLiteral("275"));
    bar.addButton(window.btnConnect, 'c');
    bar.addTest(window.portDoubt);
    bar.addState(window);
    bar.addSpace();
    bar.addReadout(window.lblBytesRec, QStringLiteral("Bytes"), QStringLiteral("2147483647"));
    // When no frame comes any more the rate stays as it was.
    bar.addReadout(window.lblPackets, QStringLiteral("Packets/s"), QStringLiteral("100")).setFromEcu();
    bar.addReadout(window.lblHWVer, QStringLiteral("Device"), QStringLiteral("hwVer: 65.535"))
        .setFromEcu(Dimmable::Source::OtherFrames);
    bar.addReadout(window.lblFeatures, QStringLiteral("Features"), QStringLiteral("65535"))
        .setFromEcu(Dimmable::Source::OtherFrames);
    bar.card().fitMargins();
    return bar.card();
}

}  // namespace korvane::views
