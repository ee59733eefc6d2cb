#include <gtest/gtest.h>

#include "views/widgets/PlainTip.h"
#include "views/widgets/values/LongLine.h"

namespace korvane::views {
namespace {

TEST(PlainTip, AnUsualTextIsLeftAlone) {
    for (const char* text : {"", "a.txt", "R&D \"new\"", "5 < 6", "one\ntwo"}) {
        EXPECT_EQ(plainTip(text), text);
    }
}

TEST(PlainTip, MarkUpIsShownAsItIsWritten) {
    EXPECT_EQ(plainTip("<b>a</b> & b\nc"), "<qt>&lt;b&gt;a&lt;/b&gt; &amp; b<br>c");
}

TEST(PlainTip, ALongLineTellsItsWordsAsTheyAre) {
    LongLine line(nullptr);
    line.setWords("Fan & pump: 2 values sent");
    EXPECT_EQ(line.toolTip(), "Fan & pump: 2 values sent");
}

}  // namespace
}  // namespace korvane::views
