#include <QApplication>
#include <QCheckBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <QWidget>

#include <filesystem>
#include <fstream>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <unistd.h>

#include "platform/qt/QtDialogs.h"
namespace korvane::platform {
namespace {

using testing::ElementsAre;

class QtDialogsTest : public testing::Test {
protected:
    QtDialogsTest() : folder(std::filesystem::temp_directory_path() / ("korvane-dialogs-" + std::to_string(getpid()))) {
        std::filesystem::create_directories(folder);
        folder = std::filesystem::canonical(folder);
        std::ofstream(folder / "tune.txt") << "tune";
    }
    ~QtDialogsTest() override { std::filesystem::remove_all(folder); }

    // Does this with the next dialog once it is open. No alarm of the pump: those may be held.
    template <class Dialog>
    void whenOpen(std::function<void(Dialog&)> act) {
        auto* const timer = new QTimer(&context);
        QObject::connect(timer, &QTimer::timeout, &context, [timer, act] {
            if (auto* const dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget())) {
                timer->stop();
                act(*dialog);
            }
        });
        timer->start(1);
    }

    void after(int milliseconds, std::function<void()> act) {
        auto* const timer = new QTimer(&context);
        timer->setSingleShot(true);
        QObject::connect(timer, &QTimer::timeout, &context, std::move(act));
        timer->start(milliseconds);
    }

    static void answer(QFileDialog& dialog, const std::filesystem::path& path) {
        auto* const name = dialog.findChild<QLineEdit*>("fileNameEdit");
        ASSERT_NE(name, nullptr);
        name->setText(QString::fromStdString(path.string()));
        QMetaObject::invokeMethod(&dialog, "accept");
    }

    QObject context;
    QtPump pump;
    QtDialogs dialogs{pump};
    std::filesystem::path folder;
};

TEST_F(QtDialogsTest, BoxShowsTitleTextAndIconAsPlainText) {
    bool seen = false;
    whenOpen<QMessageBox>([&](QMessageBox& box) {
        EXPECT_EQ(box.windowTitle(), "Sarn");
        EXPECT_EQ(box.text(), "<b>8002</b> Perä");
        EXPECT_EQ(box.textFormat(), Qt::PlainText);
        EXPECT_EQ(box.icon(), QMessageBox::Critical);
        seen = true;
        box.accept();
    });
    dialogs.show({"Sarn", "<b>8002</b> Perä", MessageIcon::Critical});
    EXPECT_TRUE(seen);
}

TEST_F(QtDialogsTest, AQuestionHasItsOwnButtonsAndTheSaferOneByDefault) {
    whenOpen<QMessageBox>([](QMessageBox& box) {
        EXPECT_EQ(box.text(), "3 fuel cells");
        ASSERT_EQ(box.buttons().size(), 2);
        EXPECT_EQ(box.defaultButton()->text().remove('&'), "Keep open");
        EXPECT_EQ(box.escapeButton(), box.defaultButton());
        EXPECT_EQ(box.checkBox()->text().remove('&'), "Do not ask again");
        box.checkBox()->setChecked(true);
        for (auto* button : box.buttons()) {
            if (button != box.defaultButton()) {
                button->click();
            }
        }
    });
    const auto answer = dialogs.ask({"title", "3 fuel cells", "Close", "Keep open", "Do not ask again"});
    EXPECT_TRUE(answer.yes);
    EXPECT_TRUE(answer.stop);
}

TEST_F(QtDialogsTest, AQuestionThatIsClosedIsAnsweredWithNo) {
    whenOpen<QMessageBox>([](QMessageBox& box) { box.reject(); });
    EXPECT_FALSE(dialogs.ask({"title", "3 fuel cells", "Close", "Keep open", "Do not ask again"}).yes);
}

TEST_F(QtDialogsTest, QuestionsCanBeLeftOut) {
    QtDialogs silent(pump, QtDialogs::Questions::LeftOut);
    EXPECT_TRUE(silent.ask({"title", "3 fuel cells", "Close", "Keep open", "Do not ask again"}).yes);
}

TEST_F(QtDialogsTest, EachIconHasItsOwn) {
    for (const auto& [icon, shown] : {std::pair(MessageIcon::None, QMessageBox::NoIcon),
                                      std::pair(MessageIcon::Information, QMessageBox::Information),
                                      std::pair(MessageIcon::Exclamation, QMessageBox::Warning)}) {
        whenOpen<QMessageBox>([expected = shown](QMessageBox& box) {
            EXPECT_EQ(box.icon(), expected);
            box.accept();
        });
        dialogs.show({"title", "text", icon});
    }
}

TEST_F(QtDialogsTest, NoHandlerRunsWhileABoxIsOpen) {
    int handled = 0;
    const auto handler = pump.makeAlarm([&] { ++handled; });
    handler->callAt(pump.now());
    int handledInside = -1;
    whenOpen<QMessageBox>([&](QMessageBox& box) {
        handler->callAt(pump.now());
        after(5, [&] {
            handledInside = handled;
            box.accept();
        });
    });
    dialogs.show({"title", "text"});
    EXPECT_EQ(handledInside, 0);
    EXPECT_EQ(handled, 0);
    pump.wait(2);
    EXPECT_EQ(handled, 1);
}

TEST_F(QtDialogsTest, BoxStandsBeforeTheActiveWindow) {
    QWidget window;
    window.show();
    QApplication::setActiveWindow(&window);
    whenOpen<QMessageBox>([&](QMessageBox& box) {
        EXPECT_EQ(box.parentWidget(), &window);
        box.accept();
    });
    dialogs.show({"title", "text"});
}

TEST_F(QtDialogsTest, ChosenFileIsReturned) {
    whenOpen<QFileDialog>([&](QFileDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Open Settings file");
        EXPECT_EQ(dialog.acceptMode(), QFileDialog::AcceptOpen);
        EXPECT_EQ(dialog.nameFilters(), QStringList{"All Files (*.txt)"});
        answer(dialog, folder / "tune.txt");
    });
    EXPECT_EQ(dialogs.choose({FileDialog::Kind::Open, "Open Settings file", "All Files (*.txt)|*.txt"}),
              folder / "tune.txt");
}

TEST_F(QtDialogsTest, CancelReturnsNothing) {
    whenOpen<QFileDialog>([](QFileDialog& dialog) { dialog.reject(); });
    EXPECT_EQ(dialogs.choose({FileDialog::Kind::Open, "Open", "All Files (*.txt)|*.txt"}), "");
}

TEST_F(QtDialogsTest, NameToSaveGetsTheEndingOfTheFilter) {
    whenOpen<QFileDialog>([&](QFileDialog& dialog) {
        EXPECT_EQ(dialog.acceptMode(), QFileDialog::AcceptSave);
        answer(dialog, folder / "new");
    });
    EXPECT_EQ(dialogs.choose({FileDialog::Kind::Save, "Save", "All Files (*.lam)|*.lam"}), folder / "new.lam");
}

TEST_F(QtDialogsTest, NextDialogStartsWhereTheLastChoiceWas) {
    whenOpen<QFileDialog>([&](QFileDialog& dialog) { answer(dialog, folder / "tune.txt"); });
    EXPECT_NE(dialogs.choose({FileDialog::Kind::Open, "Open", "All Files (*.txt)|*.txt"}), "");
    whenOpen<QFileDialog>([&](QFileDialog& dialog) {
        EXPECT_EQ(dialog.directory().absolutePath().toStdString(), folder);
        dialog.reject();
    });
    EXPECT_EQ(dialogs.choose({FileDialog::Kind::Save, "Save", "All Files (*.txt)|*.txt"}), "");
}

TEST_F(QtDialogsTest, SavingOverAFileAsksFirstUnlessItIsNotWanted) {
    for (const bool confirm : {true, false}) {
        whenOpen<QFileDialog>([&](QFileDialog& dialog) {
            EXPECT_EQ(dialog.testOption(QFileDialog::DontConfirmOverwrite), !confirm);
            dialog.reject();
        });
        EXPECT_EQ(dialogs.choose({FileDialog::Kind::Save, "Save", "All Files (*.lam)|*.lam", confirm}), "");
    }
}

TEST_F(QtDialogsTest, HandlersRunWhileAFileIsChosen) {
    int handled = 0;
    const auto handler = pump.makeAlarm([&] { ++handled; });
    handler->callAt(pump.now());
    whenOpen<QFileDialog>([](QFileDialog& dialog) { dialog.reject(); });
    EXPECT_EQ(dialogs.choose({FileDialog::Kind::Open, "Open", ""}), "");
    EXPECT_EQ(handled, 1);
}

TEST_F(QtDialogsTest, WindowThatGoesTakesItsFileDialogAlong) {
    auto window = std::make_unique<QWidget>();
    window->show();
    QApplication::setActiveWindow(window.get());
    whenOpen<QFileDialog>([&](QFileDialog& dialog) {
        ASSERT_EQ(dialog.parentWidget(), window.get());
        after(0, [&] { window.reset(); });
    });
    EXPECT_EQ(dialogs.choose({FileDialog::Kind::Open, "Open", ""}), "");
}

TEST(NameFilters, PatternsStandInBrackets) {
    EXPECT_THAT(nameFilters("All Files (*.txt)|*.txt"), ElementsAre("All Files (*.txt)"));
    EXPECT_THAT(nameFilters("Logs|*.txt;*.log|All Files (*.*)|*.*"),
                ElementsAre("Logs (*.txt *.log)", "All Files (*.*)"));
    EXPECT_TRUE(nameFilters("").isEmpty());
    EXPECT_TRUE(nameFilters("no pattern").isEmpty());
}

}  // namespace
}  // namespace korvane::platform
