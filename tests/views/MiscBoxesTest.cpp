// The boxes of the settings window as a user works with them: typed into, stepped by keys, shown only; and its list.
#include <QAccessible>
#include <QHeaderView>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include <map>
#include <set>

#include "core/Checked.h"
#include "views/MiscViewBench.h"
#include "views/widgets/ListTable.h"
#include "views/widgets/Palette.h"

namespace korvane::views {
namespace {

using testing::ElementsAre;

struct MiscBoxesTest : testing::Test, MiscViewBench {
    ~MiscBoxesTest() override { QApplication::setPalette(usual_); }

    [[nodiscard]] std::string text(const std::string& box) const { return find<QLineEdit>(box).text().toStdString(); }
    void press(QWidget& box, Qt::Key code, const QString& character) { key(box, code, {}, character); }
    // A click on the mark, at the left.
    void choose(const char* option) {
        auto& radio = find(option);
        click(radio, {radio.height() / 2, radio.height() / 2});
    }
    [[nodiscard]] QColor ground(const std::string& box) const { return find(box).palette().color(QPalette::Base); }
    // The colour at which a widget is painted most away from its ground, in its right half, where its text stands.
    [[nodiscard]] double strongest(const std::string& name) const {
        const QImage image = find(name).grab().toImage();
        const QColor back = image.pixelColor(image.width() - 1, 0);
        double most = 1;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = image.height(); x < image.width(); ++x) {
                most = std::max(most, contrast(back, image.pixelColor(x, y)));
            }
        }
        return most;
    }
    void clickHead(ListTable& list, int column) {
        auto* const header = list.header();
        click(*header->viewport(), {header->sectionViewportPosition(column) + 5, header->height() / 2});
        frame();
    }
    [[nodiscard]] static std::string cell(const ListTable& list, int row, int column) {
        return list.model()->index(row, column).data().toString().toStdString();
    }
    [[nodiscard]] static std::string selected(const ListTable& list) {
        const auto rows = list.selectionModel()->selectedRows();
        return rows.size() == 1 ? rows.front().data().toString().toStdString() : "";
    }

private:
    QPalette usual_ = QApplication::palette();
};

TEST_F(MiscBoxesTest, TypingGoesIntoAPlainBox) {
    auto& box = find<QLineEdit>("txtIdleAdv(2)");
    box.setFocus();
    box.selectAll();
    type(box, "12.5x");
    EXPECT_EQ(window.txtIdleAdv(2).Text.get(), "12.5x");
    press(box, Qt::Key_Backspace, "\b");
    EXPECT_EQ(window.txtIdleAdv(2).Text.get(), "12.5");
}

TEST_F(MiscBoxesTest, PlusAndMinusStepAScaledBoxAtOnce) {
    window.UpdateReadEE(198, tables.addresses.START_HELP_OFF, false);
    showTab(2);
    auto& box = find<QLineEdit>("txtStart");
    box.setFocus();
    EXPECT_EQ(text("txtStart"), "2.75");
    press(box, Qt::Key_Plus, "+");
    EXPECT_EQ(text("txtStart"), "2.7639");
    press(box, Qt::Key_Plus, "+");
    press(box, Qt::Key_Plus, "+");
    EXPECT_EQ(text("txtStart"), "2.7778");
    press(box, Qt::Key_Minus, "-");
    EXPECT_EQ(text("txtStart"), "2.7639");
    EXPECT_EQ(window.txtStart.Tag.get(), "199");
}

TEST_F(MiscBoxesTest, AScaledBoxTakesNoLetters) {
    window.UpdateReadEE(50, tables.addresses.CHARGE_TIME_OFF, false);
    frame();
    auto& box = find<QLineEdit>("txtchargetime");
    box.setFocus();
    type(box, "7");
    press(box, Qt::Key_Backspace, "\b");
    press(box, Qt::Key_Delete, "");
    EXPECT_EQ(text("txtchargetime"), "1");
    EXPECT_EQ(window.txtchargetime.Text.get(), "1");
}

TEST_F(MiscBoxesTest, ArrowsStepARowOfScaledBoxesAndGoRoundIt) {
    showTab(2);
    window.UpdateReadEE(10, tables.addresses.ACCEL_OFF + 9, false);
    auto& box = find<QLineEdit>("txtAccel(9)");
    box.setFocus();
    key(box, Qt::Key_Up);
    EXPECT_EQ(text("txtAccel(9)"), "0.1528");
    key(box, Qt::Key_Right);
    EXPECT_EQ(view().focusWidget()->objectName(), "txtAccel(0)");
    key(*view().focusWidget(), Qt::Key_Left);
    EXPECT_EQ(view().focusWidget()->objectName(), "txtAccel(9)");
}

TEST_F(MiscBoxesTest, ScaledBoxesLookDifferentFromPlainOnes) {
    for (const auto* control : window.controls()) {
        const auto* const box = dynamic_cast<const controls::TextBox*>(control);
        if (box != nullptr) {
            const auto& edit = find<QLineEdit>(box->path());
            EXPECT_EQ(edit.isReadOnly(), box->Locked.get()) << box->path();
            const bool own = edit.palette().color(QPalette::Active, QPalette::Base) !=
                             QPalette().color(QPalette::Active, QPalette::Base);
            EXPECT_EQ(own, box->Locked.get()) << box->path();
        }
    }
    std::set<std::string> scaled;
    for (const auto* edit : view().findChildren<QLineEdit*>()) {
        if (edit->isReadOnly()) {
            scaled.insert(edit->objectName().section(u'(', 0, 0).toStdString());
        }
    }
    EXPECT_THAT(scaled, ElementsAre("txtALS_fuel", "txtALS_ign_retard", "txtAccel", "txtRyyppy", "txtStart", "txtVolt",
                                    "txtchargetime"));
}

TEST_F(MiscBoxesTest, MarkedAccelerationCellCanBeReadInLightAndDark) {
    for (const auto& palette : {Palette::dark(), Palette::light()}) {
        QApplication::setPalette(palette);
        window.MarkAccelCell(3);
        window.MarkAccelCell(4);
        frame();
        for (const char* name : {"txtAccel(3)", "txtAccel(4)", "txtAccel(5)"}) {
            const auto& shown = find(name).palette();
            EXPECT_GT(contrast(shown.color(QPalette::Base), shown.color(QPalette::Text)), 4.5) << name;
        }
    }
    EXPECT_EQ(find("txtAccel(4)").palette().color(QPalette::Base), QColor(255, 0, 0));
}

TEST_F(MiscBoxesTest, TheLongestTimeIsShownAndCannotBeChosen) {
    core::checked(tables.EEParams, tables.addresses.INJ_MODE_OFFSET).value = std::uint8_t{1};
    window.UpdateReadEE(3, tables.addresses.INJ_MULTIPLIER_OFF, false);
    showTab(2);
    auto& shown = find<QRadioButton>("optInj8ms(3)");
    EXPECT_TRUE(shown.isChecked());
    EXPECT_FALSE(shown.isEnabled());
}

TEST_F(MiscBoxesTest, BothOutputsAreChosenByThemselves) {
    showTab(3);
    choose("OptionPWM1(2)");
    choose("OptionPWM2(0)");
    EXPECT_TRUE(window.OptionPWM1(2).Value);
    EXPECT_TRUE(window.OptionPWM2(0).Value);
    choose("OptionPWM1(0)");
    EXPECT_FALSE(find<QRadioButton>("OptionPWM1(2)").isChecked());
    EXPECT_TRUE(find<QRadioButton>("OptionPWM2(0)").isChecked());
}

// What a box shows after +, and after - and + again, its number having been 2.
TEST_F(MiscBoxesTest, KeysReachEveryScaledBox) {
    const auto& at = tables.addresses;
    const std::map<std::string, std::pair<int, std::string>> boxes{
        {"txtStart", {at.START_HELP_OFF, "0.0417"}},     {"txtRyyppy", {at.RYYPPY_OFF, "0.0417"}},
        {"txtchargetime", {at.CHARGE_TIME_OFF, "0.06"}}, {"txtALS_fuel", {at.ALS_FUEL_OFF, "15"}},
        {"txtALS_ign_retard", {at.ALS_ADV_OFF, "13.5"}}, {"txtVolt(0)", {at.VOLT_OFF, "0.0417"}},
        {"txtAccel(5)", {at.ACCEL_OFF + 5, "0.0417"}}};
    for (const auto& [name, expected] : boxes) {
        window.UpdateReadEE(2, expected.first, false);
        frame();
        auto& box = find<QLineEdit>(name);
        press(box, Qt::Key_Plus, "+");
        EXPECT_EQ(text(name), expected.second) << name;
        press(box, Qt::Key_Minus, "-");
        press(box, Qt::Key_Plus, "+");
        EXPECT_EQ(text(name), expected.second) << name;
    }
}

TEST_F(MiscBoxesTest, ScreenReadersSayHowAScaledBoxIsChanged) {
    const auto told = [this](const char* box) {
        return QAccessible::queryAccessibleInterface(&find(box))->text(QAccessible::Description);
    };
    EXPECT_EQ(told("txtStart"), "changes by the keys + and -");
    EXPECT_EQ(told("txtStartHelpLen"), "");
}

TEST_F(MiscBoxesTest, ACellThatWasMarkedStillDoesNotLookLikeABoxToTypeInto) {
    for (const auto& palette : {Palette::dark(), Palette::light()}) {
        QApplication::setPalette(palette);
        window.MarkAccelCell(3);
        window.MarkAccelCell(4);
        frame();
        EXPECT_EQ(window.txtAccel(3).BackColor.get(), controls::kWhite);
        EXPECT_EQ(ground("txtAccel(3)"), ground("txtAccel(7)"));
        EXPECT_NE(ground("txtAccel(3)"), ground("txtAccelDelay"));
    }
}

TEST_F(MiscBoxesTest, TheLongestTimeInForceIsAsLegibleAsAnyText) {
    window.optInj8ms(1).Value = true;
    showTab(2);
    EXPECT_GT(strongest("optInj8ms(1)"), 4.5);
    EXPECT_LT(strongest("optInj8ms(2)"), strongest("optInj8ms(1)"));
}

TEST_F(MiscBoxesTest, NoTwoOfAPagesTextsHaveTheSameLetterUnderAlt) {
    for (int tab = 1; tab <= settings::kPages; ++tab) {
        showTab(tab);
        std::multiset<std::string> letters;
        for (const auto* widget : view().findChildren<QWidget*>()) {
            const auto* const button = qobject_cast<const QAbstractButton*>(widget);
            const auto* const label = qobject_cast<const QLabel*>(widget);
            if (widget->isVisible() && (button != nullptr || (label != nullptr && label->buddy() != nullptr))) {
                const auto letter = QKeySequence::mnemonic(button != nullptr ? button->text() : label->text());
                letters.insert(letter.toString().toStdString());
            }
        }
        letters.erase("");
        EXPECT_GE(letters.size(), 3U) << tab;
        for (const auto& letter : letters) {
            EXPECT_EQ(letters.count(letter), 1U) << letter << " on page " << tab;
        }
    }
}

TEST_F(MiscBoxesTest, HeadsOfTheParameterListSortItAndTheSelectionStaysOnItsRow) {
    showTab(9);
    auto& list = find<ListTable>("ListView1");
    EXPECT_EQ(cell(list, 0, 0), "MISC2_OFF");
    click(*list.viewport(), list.visualRect(list.model()->index(2, 0)).center());
    const auto chosen = selected(list);
    EXPECT_EQ(window.TextOs.Text.get(), "3");
    clickHead(list, 0);
    const auto first = cell(list, 0, 0);
    EXPECT_GE(first, cell(list, 1, 0));  // the order is turned before the list is sorted
    EXPECT_EQ(selected(list), chosen);
    clickHead(list, 0);
    EXPECT_EQ(cell(list, list.model()->rowCount() - 1, 0), first);
    EXPECT_EQ(selected(list), chosen);
    EXPECT_EQ(window.TextOs.Text.get(), "3");
    EXPECT_TRUE(list.header()->isSortIndicatorShown());
}

TEST_F(MiscBoxesTest, TypingANameInTheParameterListFillsTheAddress) {
    showTab(9);
    QApplication::setKeyboardInputInterval(60000);
    auto& list = find<ListTable>("ListView1");
    list.setFocus();
    type(list, "launchcontrol");
    EXPECT_EQ(selected(list).substr(0, 13), "LAUNCHCONTROL");
    EXPECT_EQ(window.TextOs.Text.get(), std::to_string(tables.addresses.LAUNCHCONTROL_LO));
}

}  // namespace
}  // namespace korvane::views
