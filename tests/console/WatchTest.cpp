#include <gtest/gtest.h>

#include "console/TestWindow.h"

namespace korvane::console {
namespace {

class Watching : public testing::Test, public ConsoleOnTestWindow {};

TEST_F(Watching, NotesEachChangeWithItsTime) {
    EXPECT_EQ(run("watch frmTest.Caption"), "ok");
    window->Caption = "one";
    window->Caption = "one";
    pump.runUntil(5999);
    window->Caption = "two";
    window->Caption = "one";
    window->Tag = "not watched";
    EXPECT_EQ(run("changes"),
              "ok [[0,\"frmTest.Caption\",\"one\"],[5,\"frmTest.Caption\",\"two\"],[5,\"frmTest.Caption\",\"one\"]]");
    EXPECT_EQ(run("changes"), "ok []");
}

TEST_F(Watching, KeepsTheOrderAcrossControls) {
    EXPECT_EQ(run("watch frmTest.txtCell(2).Text"), "ok");
    EXPECT_EQ(run("watch frmTest.chkTrace.Value"), "ok");
    window->txtCell(2).Text = "a";
    window->txtCell(1).Text = "b";
    window->chkTrace.Value = 1;
    window->txtCell(2).Text = "c";
    EXPECT_EQ(run("changes"),
              "ok [[0,\"frmTest.txtCell(2).Text\",\"a\"],[0,\"frmTest.chkTrace.Value\",1],"
              "[0,\"frmTest.txtCell(2).Text\",\"c\"]]");
}

TEST_F(Watching, SeesPropertiesThatAreComputedFromOthers) {
    EXPECT_EQ(run("watch frmTest.cmbPort.Text"), "ok");
    EXPECT_EQ(run("watch frmTest.cmbPort.ListCount"), "ok");
    EXPECT_EQ(run("watch frmTest.cmbPort.List(2)"), "ok");
    EXPECT_EQ(run("watch frmTest.ActiveControl"), "ok");
    EXPECT_EQ(run("watch frmTest.MSComm1.PortOpen"), "ok");
    EXPECT_EQ(run("choose frmTest.cmbPort 1"), "ok");
    window->cmbPort.Clear();
    EXPECT_EQ(run("focus frmTest.btnGo"), "ok");
    EXPECT_EQ(run("set frmTest.MSComm1.PortOpen true"), "ok");
    EXPECT_EQ(run("changes"),
              "ok [[0,\"frmTest.cmbPort.Text\",\"COM2\"],[0,\"frmTest.cmbPort.Text\",null],"
              "[0,\"frmTest.cmbPort.ListCount\",0],[0,\"frmTest.cmbPort.List(2)\",null],"
              "[0,\"frmTest.cmbPort.Text\",\"\"],[0,\"frmTest.ActiveControl\",\"btnGo\"],"
              "[0,\"frmTest.MSComm1.PortOpen\",true]]");
}

TEST_F(Watching, ASecondWatchOfTheSameNotesNothingTwice) {
    EXPECT_EQ(run("watch frmTest.Caption"), "ok");
    EXPECT_EQ(run("watch frmTest.Caption"), "ok");
    window->Caption = "one";
    EXPECT_EQ(run("changes"), "ok [[0,\"frmTest.Caption\",\"one\"]]");
}

TEST_F(Watching, EndsWithUnwatch) {
    EXPECT_EQ(run("watch frmTest.Caption"), "ok");
    EXPECT_EQ(run("watch frmTest.Tag"), "ok");
    EXPECT_EQ(run("unwatch frmTest.Caption"), "ok");
    window->Caption = "one";
    window->Tag = "two";
    EXPECT_EQ(run("changes"), "ok [[0,\"frmTest.Tag\",\"two\"]]");
    EXPECT_EQ(run("unwatch frmTest.Caption"), "error frmTest.Caption is not watched");
}

TEST_F(Watching, EndsWhenTheWindowGoesAway) {
    EXPECT_EQ(run("watch frmTest.Caption"), "ok");
    EXPECT_EQ(run("watch frmTest.txtName.Text"), "ok");
    window->txtName.Text = "last";
    window.reset();
    EXPECT_EQ(run("changes"), "ok [[0,\"frmTest.txtName.Text\",\"last\"]]");
    EXPECT_EQ(run("unwatch frmTest.Caption"), "error frmTest.Caption is not watched");
    window = std::make_unique<TestWindow>(tapped);
    window->show();
    window->Caption = "new";
    EXPECT_EQ(run("changes"), "ok []");
}

TEST_F(Watching, EndsWithTheConsole) {
    {
        Console other({tapped, dialogs, tap, names, nullptr, nullptr, errors, {}, {}});
        EXPECT_EQ(other.execute("watch frmTest.Caption"), "ok");
    }
    window->Caption = "nobody looks";
    EXPECT_EQ(run("changes"), "ok []");
}

TEST_F(Watching, NeedsAPropertyThatExists) {
    names.add("MapPlace", {}, [](Names::Indices) { return Json(7); });
    EXPECT_EQ(run("watch frmTest.Color"), "error frmTest has no property or control Color");
    EXPECT_EQ(run("watch frmTest.btnGo.Text"), "error frmTest.btnGo has no property Text (a button has Caption)");
    EXPECT_EQ(run("watch MapPlace"), "error MapPlace is no property of a window or control and can't be watched");
    EXPECT_EQ(run("watch Nothing"), "error no open window, table or value is named Nothing");
}

TEST_F(Watching, DropsTheOldestWhenNobodyAsks) {
    EXPECT_EQ(run("watch frmTest.Tag"), "ok");
    const std::string big(1 << 20, 'x');
    for (int i = 0; i < 70; ++i) {
        window->Tag = std::to_string(i) + big;
    }
    const auto reply = run("changes");
    EXPECT_EQ(reply.substr(0, 30), "ok [[0,\"frmTest.Tag\",\"7xxxxxxx");
    EXPECT_EQ(reply.substr(reply.size() - 3), "\"]]");
}

}  // namespace
}  // namespace korvane::console
