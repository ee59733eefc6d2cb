#include "MapsBench.h"
#include "maps/panes/MiscBoxes.h"
#include "support/Typing.h"

namespace korvane::maps {
namespace {

class MiscBoxes : public MapsBench {
protected:
    MiscBoxes() { window_.show(); }

    std::string typed(int box, std::string_view text) {
        window_.setFocus(&window_.txtMisc(box));
        window_.txtMisc(box).Text = "";
        for (const char character : text) {
            support::typeCharacter(window_.txtMisc(box), character);
        }
        return window_.txtMisc(box).Text;
    }
    std::string left(int box, std::string_view text) {
        window_.setFocus(&window_.txtMisc(box));
        window_.txtMisc(box).Text = text;
        window_.setFocus(&window_.btnHelp);
        return window_.txtMisc(box).Text;
    }

    BenchWindow window_{machine_.machine, context_, kOrdinaryMaps};
};

TEST_F(MiscBoxes, TakeNumbersOnly) {
    EXPECT_EQ(typed(0, "a1 2+3x.4Eä"), "123.4");
    EXPECT_EQ(typed(2, "-1,5"), "-1.5");
    EXPECT_EQ(miscCharacter(8), 8);
    EXPECT_EQ(miscCharacter(127), 127);
    EXPECT_EQ(miscCharacter(','), '.');
    EXPECT_EQ(miscCharacter('/'), 0);
    EXPECT_EQ(miscCharacter(':'), 0);
    EXPECT_EQ(miscCharacter(13), 0);
}

TEST_F(MiscBoxes, IgnitionOffsetIsBroughtInToTheOtherLimit) {
    EXPECT_EQ(typed(3, "12"), "12");
    EXPECT_EQ(typed(3, "12.1"), "10");
    EXPECT_EQ(typed(3, "-10"), "-10");
    window_.txtMisc(3).Text = "-10.1";
    window_.txtMisc(3).keyUp(controls::kKeyShift, 0);
    EXPECT_EQ(window_.txtMisc(3).Text.get(), "-12");
}

TEST_F(MiscBoxes, IgnitionOffsetKeepsItsRawByteInTheToolTip) {
    typed(3, "1.5");
    EXPECT_EQ(window_.txtMisc(3).ToolTipText.get(), "143");
    typed(3, "50");
    EXPECT_EQ(window_.txtMisc(3).ToolTipText.get(), "228");  // of the 10 that stands there
    typed(3, "-11");
    EXPECT_EQ(window_.txtMisc(3).ToolTipText.get(), "8");  // of the -12
    typed(3, "-");
    EXPECT_EQ(window_.txtMisc(3).ToolTipText.get(), "128");
}

TEST_F(MiscBoxes, OtherBoxesKeepTheirToolTips) {
    typed(2, "50");
    EXPECT_EQ(window_.txtMisc(2).ToolTipText.get(), "");
    EXPECT_EQ(window_.txtMisc(2).Text.get(), "50");
}

TEST_F(MiscBoxes, SpeedsEndAtTenThousandWhenTheFocusLeaves) {
    EXPECT_EQ(left(0, "70000"), "10000");
    EXPECT_EQ(left(1, "10001"), "10000");
    EXPECT_EQ(left(0, "10000"), "10000");
    EXPECT_EQ(left(1, "9999.5"), "9999.5");
}

TEST_F(MiscBoxes, OffsetsEndAt255WhenTheFocusLeaves) {
    EXPECT_EQ(left(2, "256"), "255");
    EXPECT_EQ(left(3, "300"), "255");
    EXPECT_EQ(left(2, "255"), "255");
    EXPECT_EQ(left(2, "-300"), "-300");
    EXPECT_EQ(left(2, "abc"), "abc");
}

}  // namespace
}  // namespace korvane::maps
