#include "views/dashboard/KeepLine.h"

#include <QHBoxLayout>

#include "views/frame/ObjectPart.h"
#include "views/frame/OpenButton.h"
#include "views/widgets/Card.h"
#include "views/widgets/Child.h"
#include "views/widgets/OneRowLabel.h"
#include "views/widgets/Spacing.h"

namespace korvane::views {

namespace {

constexpr OpenButton kShowButton{"keepNoticeCompare", "Show differences",
                                 "Compares the ECU with that restore point; nothing is sent or changed"};

constexpr OpenButton kOfferButton{"keepNoticeRestore", "Go on or back",
                                  "Opens the restore points, where the restore can go on or back; nothing is sent yet"};

constexpr OpenButton kUnfinishedButton{
    "keepNoticeUnfinished", "Show restore point",
    "Opens the restore points at the one with those maps; nothing is moved by itself"};
constexpr OpenButton kCloseButton{"keepNoticeClose", "Close", "Removes what is said here; nothing is sent or changed"};

}  // namespace

QWidget& makeKeepLine(link::KeepNotice& notice, Binder& binder, QWidget* parent) {
    auto& card = child<Card>(parent);
    card.setTight();
    card.setObjectName(QStringLiteral("keepNotice"));
    card.setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    QWidget* const inside = &card;
    auto& row = child<QHBoxLayout>(inside);
    row.setSpacing(kSpacing);
    auto& words = child<OneRowLabel>(inside);
    row.addWidget(&words, 1);
    auto& unfinished = makeOpenButton(kUnfinishedButton, binder, inside, [&notice] { notice.showUnfinished(); });
    row.addWidget(&unfinished);
    auto& offer =
        makeOpenButton(kOfferButton, binder, inside, [&notice] { notice.showOffer(notice.OfferPoint.get()); });
    row.addWidget(&offer);
    auto& button = makeOpenButton(kShowButton, binder, inside, [&notice] { notice.compare(notice.Point.get()); });
    row.addWidget(&button);
    auto& close = makeOpenButton(kCloseButton, binder, inside, [&notice] { notice.close(); });
    row.addWidget(&close);
    card.fitMargins();
    ObjectPart::bind(binder, {&notice}, [&card, &words, &unfinished, &offer, &button, &close, &notice] {
        words.setWords(QString::fromStdString(notice.words()));
        unfinished.setVisible(!notice.Unfinished.get().empty() && notice.showOffer);
        offer.setVisible(!notice.Offer.get().empty() && notice.showOffer);
        button.setVisible(!notice.Point.get().empty() && notice.compare);
        close.setVisible(!notice.Text.get().empty());
        card.setVisible(!notice.words().empty());
    });
    return card;
}

}  // namespace korvane::views
