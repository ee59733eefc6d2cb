#include <gmock/gmock.h>

#include "ModelBench.h"
#include "controls/MSComm.h"
#include "controls/Timer.h"

namespace korvane::controls {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class PropertyTest : public ModelBench {
protected:
    static void set(Object& object, std::string_view name, const Value& value) {
        const auto* property = object.findProperty(name);
        ASSERT_NE(property, nullptr) << name;
        property->set(object, value);
    }
    static Value get(const Object& object, std::string_view name) {
        const auto* property = object.findProperty(name);
        return property == nullptr ? Value(std::string("no such property")) : property->get(object);
    }
    static int errorOfSet(Object& object, std::string_view name, const Value& value) {
        return errorOf([&] { object.findProperty(name)->set(object, value); });
    }
    static Value whole(std::int64_t number) { return number; }
    static Value text(const char* words) { return std::string(words); }

    Label label_{window_, "lblTest"};
};

TEST_F(PropertyTest, TellsOnceForAChangeAndNotForAnEqualValue) {
    NotingObserver observer(label_);
    label_.Caption = "one";
    EXPECT_THAT(observer.changes, ElementsAre(&label_.Caption));
    label_.Caption = "one";
    label_.Caption = std::string("one");
    label_.Caption = std::string_view("one");
    label_.Width = 0;
    EXPECT_EQ(observer.changes.size(), 1U);
    label_.Width = 5;
    label_.Caption = "two";
    EXPECT_THAT(observer.changes, ElementsAre(&label_.Caption, &label_.Width, &label_.Caption));
}

TEST_F(PropertyTest, HasItsNewValueWhenItTells) {
    class Reading : public Observer {
    public:
        void propertyChanged(Object& object, const void*) override {
            seen = dynamic_cast<Label&>(object).Caption.get();
        }
        std::string seen;
    };
    Reading reading;
    label_.addObserver(reading);
    label_.Caption = "now";
    EXPECT_EQ(reading.seen, "now");
    label_.removeObserver(reading);
    label_.Caption = "later";
    EXPECT_EQ(reading.seen, "now");
}

TEST_F(PropertyTest, AssigningAPropertyAssignsItsValue) {
    Label other(window_, "lblOther");
    other.Caption = "words";
    label_.Caption = other.Caption;
    EXPECT_EQ(label_.Caption.get(), "words");
    other.Caption = "more";
    EXPECT_EQ(label_.Caption.get(), "words");
}

TEST_F(PropertyTest, ObserversAreToldInOrderBeforeTheHandler) {
    CheckBox box(window_, "chkTest");
    std::vector<std::string> order;
    class Ordered : public Observer {
    public:
        Ordered(std::vector<std::string>& order, const char* name) : order_(order), name_(name) {}
        void propertyChanged(Object&, const void*) override { order_.emplace_back(name_); }

    private:
        std::vector<std::string>& order_;
        const char* name_;
    };
    Ordered first(order, "first");
    Ordered second(order, "second");
    box.addObserver(first);
    box.addObserver(second);
    box.Click = [&] { order.emplace_back("click"); };
    box.Value = 1;
    EXPECT_THAT(order, ElementsAre("first", "second", "click"));
    box.removeObserver(first);
    box.removeObserver(second);
}

TEST_F(PropertyTest, AnObserverMayLeaveWhileItIsTold) {
    class Leaving : public Observer {
    public:
        void propertyChanged(Object& object, const void*) override {
            ++told;
            object.removeObserver(*this);
        }
        int told = 0;
    };
    Leaving leaving;
    label_.addObserver(leaving);
    label_.Caption = "a";
    label_.Caption = "b";
    EXPECT_EQ(leaving.told, 1);
}

TEST_F(PropertyTest, IsReachedByItsName) {
    set(label_, "Caption", text("words"));
    set(label_, "Left", whole(-120));
    set(label_, "Visible", false);
    set(label_, "BackColor", whole(0x8000000F));
    EXPECT_EQ(label_.Caption.get(), "words");
    EXPECT_EQ(label_.Left.get(), -120);
    EXPECT_FALSE(label_.Visible);
    EXPECT_EQ(get(label_, "Caption"), text("words"));
    EXPECT_EQ(get(label_, "BackColor"), whole(2147483663));
    EXPECT_EQ(get(label_, "Enabled"), Value(true));
    EXPECT_EQ(get(label_, "Name"), text("lblTest"));
    EXPECT_EQ(get(label_, "Index"), Value());
}

TEST_F(PropertyTest, NamesAreExact) {
    EXPECT_EQ(label_.findProperty("caption"), nullptr);
    EXPECT_EQ(label_.findProperty("Text"), nullptr);
    EXPECT_EQ(label_.findProperty(""), nullptr);
}

TEST_F(PropertyTest, AValueOfTheWrongKindRaises13AndChangesNothing) {
    label_.Caption = "before";
    for (const Value& wrong : {Value(), Value(true), whole(1), Value(1.5)}) {
        EXPECT_EQ(errorOfSet(label_, "Caption", wrong), 13);
    }
    for (const Value& wrong : {Value(), Value(true), text("1"), Value(1.5)}) {
        EXPECT_EQ(errorOfSet(label_, "Left", wrong), 13);
    }
    for (const Value& wrong : {Value(), whole(1), text("true"), Value(1.0)}) {
        EXPECT_EQ(errorOfSet(label_, "Visible", wrong), 13);
    }
    EXPECT_EQ(label_.Caption.get(), "before");
    EXPECT_TRUE(label_.Visible);
}

TEST_F(PropertyTest, ANumberOutOfItsRangeRaises13) {
    EXPECT_EQ(errorOfSet(label_, "Left", whole(2147483647)), 0);
    EXPECT_EQ(errorOfSet(label_, "Left", whole(2147483648)), 13);
    EXPECT_EQ(errorOfSet(label_, "Left", whole(-2147483649)), 13);
    EXPECT_EQ(errorOfSet(label_, "BackColor", whole(-1)), 13);
    EXPECT_EQ(errorOfSet(label_, "BackColor", whole(4294967295)), 0);
}

TEST_F(PropertyTest, APictureIsGreyGreenOrRed) {
    Image lamp(window_, "imgLed", 3);
    for (const auto* name : {"grey", "green", "red"}) {
        set(lamp, "Picture", text(name));
        EXPECT_EQ(get(lamp, "Picture"), text(name));
    }
    EXPECT_EQ(lamp.Shown.get(), Picture::Red);
    EXPECT_EQ(errorOfSet(lamp, "Picture", text("blue")), 13);
    EXPECT_EQ(errorOfSet(lamp, "Picture", whole(1)), 13);
    EXPECT_EQ(get(lamp, "Index"), whole(3));
}

TEST_F(PropertyTest, ACheckBoxIs0Or1) {
    CheckBox box(window_, "chkTest");
    set(box, "Value", whole(1));
    EXPECT_EQ(get(box, "Value"), whole(1));
    EXPECT_EQ(errorOfSet(box, "Value", whole(2)), 13);
    EXPECT_EQ(errorOfSet(box, "Value", whole(-1)), 13);
    EXPECT_EQ(errorOfSet(box, "Value", Value(true)), 13);
}

TEST_F(PropertyTest, AComboBoxTakesTheRowsThatItHas) {
    ComboBox box(window_, "cmbTest");
    box.AddItem("a");
    box.AddItem("b");
    set(box, "ListIndex", whole(1));
    EXPECT_EQ(get(box, "Text"), text("b"));
    EXPECT_EQ(get(box, "ListCount"), whole(2));
    EXPECT_EQ(errorOfSet(box, "ListIndex", whole(2)), 13);
    EXPECT_EQ(errorOfSet(box, "ListIndex", whole(-2)), 13);
    EXPECT_EQ(box.ListIndex.get(), 1);
    set(box, "ListIndex", whole(-1));
    EXPECT_EQ(get(box, "Text"), text(""));
}

TEST_F(PropertyTest, WhatIsComputedCanOnlyBeRead) {
    ComboBox box(window_, "cmbTest");
    MSComm comm(window_, "MSComm1");
    EXPECT_EQ(box.findProperty("Text")->set, nullptr);
    EXPECT_EQ(box.findProperty("ListCount")->set, nullptr);
    EXPECT_EQ(label_.findProperty("Name")->set, nullptr);
    EXPECT_EQ(comm.findProperty("InBufferCount")->set, nullptr);
    EXPECT_EQ(window_.findProperty("ActiveControl")->set, nullptr);
}

TEST_F(PropertyTest, TimersTextBoxesAndTheSerialControlHaveTheirs) {
    Timer timer(window_, "Timer1", false, 100);
    set(timer, "Interval", whole(250));
    set(timer, "Enabled", true);
    EXPECT_EQ(timer.Interval.get(), 250);
    EXPECT_EQ(get(timer, "Enabled"), Value(true));
    TextBox box(window_, "txtTest");
    set(box, "Text", text("abc"));
    set(box, "Locked", true);
    EXPECT_EQ(box.Text.get(), "abc");
    EXPECT_TRUE(box.Locked);
    MSComm comm(window_, "MSComm1");
    set(comm, "CommPort", whole(3));
    set(comm, "PortOpen", true);
    EXPECT_TRUE(comm.PortOpen());
    EXPECT_EQ(get(comm, "CommPort"), whole(3));
    EXPECT_EQ(get(comm, "InBufferCount"), whole(0));
    EXPECT_EQ(get(comm, "OutBufferCount"), whole(0));
}

TEST_F(PropertyTest, AWindowHasItsOwn) {
    set(window_, "Caption", text("title"));
    set(window_, "Width", whole(4000));
    EXPECT_EQ(window_.Caption.get(), "title");
    EXPECT_EQ(get(window_, "Width"), whole(4000));
    EXPECT_EQ(get(window_, "Name"), text("frmTest"));
    EXPECT_EQ(get(window_, "ActiveControl"), Value());
    EXPECT_EQ(errorOfSet(window_, "Caption", whole(4)), 13);
}

}  // namespace
}  // namespace korvane::controls
