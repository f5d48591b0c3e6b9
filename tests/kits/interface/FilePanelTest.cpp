#include "FilePanel.h"

#include "Alert.h"
#include "server/DisplayServer.h"
#include "TestWindow.h"

#include <QApplication>
#include <QLineEdit>
#include <QWindow>

namespace {

// Saves under a name in a panel that is shown; the text of its question, "" if there is none.
std::string SaveAs(const std::string& name, Log& log)
{
    EXPECT_TRUE(screen::BecomesActive("Save As"));
    const size_t before = log.Now().size();
    screen::Key("ctrl+a");
    screen::Type(name);
    screen::Key("Return");
    EXPECT_SOON(screen::IsActive("Replace") || log.Now().size() > before);
    return screen::Find("qt_msgbox_label").text;
}

} // namespace

TEST_F(WindowTest, ASavePanelAsksOnceAboutAllThatWouldBeReplaced)
{
    const TempFolder folder;
    for (const char* name : { "both", "both.zip", "second.zip", "first" })
        WriteFile(folder / name, "");
    const std::string none, it = " already exists.\nDo you want to replace it?";
    // ending: of what is written beside the chosen file
    const std::tuple<const char*, const char*, std::string> rows[] = { { ".zip", "new", none },
        { ".zip", "first", "first" + it }, { ".zip", "second", "second.zip" + it },
        { ".zip", "both", "both and both.zip already exist.\nDo you want to replace them?" },
        { nullptr, "second", none }, { nullptr, "/tarvex-none", none },
        { nullptr, "both", "both" + it } };
    entry_ref directory;
    EXPECT_EQ(get_ref_for_path(folder.Path().c_str(), &directory), B_OK);
    fWindow->Show();
    for (const auto& [ending, name, question] : rows) {
        SCOPED_TRACE(name);
        BMessage reply(7);
        if (ending)
            reply.AddString("be:also_written", ending);
        BFilePanel panel(B_SAVE_PANEL, &fTarget, &directory, &reply);
        const Entries before = fLog->Now();
        panel.Show();
        EXPECT_EQ(SaveAs(name, *fLog), question);
        if (!question.empty()) {
            screen::Key("Return"); // no: the panel is still there
            ASSERT_SOON(!screen::Find("qt_msgbox_label").exists);
            EXPECT_EQ(fLog->Now(), before);
            EXPECT_EQ(SaveAs(name, *fLog), question);
            screen::Key("alt+y");
        }
        const Entries after = fLog->WaitFor(before.size() + 2);
        const std::string where = name[0] == '/' ? "/ tarvex-none" : folder.Path() + " " + name;
        EXPECT_EQ(Entries(after.begin() + before.size(), after.end()), (Entries { where, "7" }));
    }
    auto panel = std::make_unique<BFilePanel>(B_SAVE_PANEL, &fTarget, &directory);
    panel->Show();
    ASSERT_TRUE(screen::BecomesActive("Save As"));
    screen::ClickAt(screen::Settled("treeView").LeftTop() + BPoint(40, 40)); // at the first file
    screen::Key("Delete");
    ASSERT_TRUE(screen::BecomesActive("Delete"));
    panel.reset(); // while Qt asks
    EXPECT_SOON(display::Call([] { return QApplication::topLevelWidgets().size() == 1; }));
    EXPECT_TRUE(std::filesystem::exists(folder / "both"));
}

TEST_F(WindowTest, WhatIsWrittenInAPanelCountsNotAFolderSelectedOnTheWay)
{
    const TempFolder folder;
    fWindow->Show();
    BFilePanel panel(B_SAVE_PANEL, &fTarget);
    panel.Show();
    ASSERT_TRUE(screen::BecomesActive("Save As"));
    display::Call([&] { // as a screen reader writes: the field has no keyboard
        const QWidget* dialog = QApplication::activeWindow();
        dialog->findChild<QWidget*>("treeView")->setFocus();
        auto* edit = dialog->findChild<QLineEdit*>("fileNameEdit");
        edit->setText(folder.Path().c_str());
        edit->setText((folder / "mine").c_str());
        edit->setFocus();
    });
    screen::Key("Return");
    EXPECT_EQ(fLog->WaitFor(1), Entries { folder.Path() + " mine" });
}

TEST_F(WindowTest, BoxesBelongToTheWindowThatAsksNotToTheActiveOne)
{
    Show();
    auto* other = new TestWindow(fLog, BRect(500, 400, 600, 500), "Other");
    other->Show();
    BFilePanel panel(B_SAVE_PANEL, &fTarget);
    const std::pair<const char*, std::function<void()>> boxes[] = {
        { "save_panel", [&] { panel.Show(); } },
        { "Question", [] { (new BAlert("Question", "Why?", "So"))->Go(nullptr); } },
    };
    for (const auto& box : boxes) {
        const char* const name = box.first;
        other->Activate();
        ASSERT_TRUE(screen::BecomesActive("Other"));
        fWindow->fAsked = box.second;
        fWindow->PostMessage(kAsk);
        ASSERT_SOON(screen::Find(name).exposed);
        EXPECT_EQ(display::Call([name] {
            for (const QWidget* widget : QApplication::topLevelWidgets())
                if (widget->objectName() == name)
                    return widget->windowHandle()->transientParent()->title().toStdString();
            return std::string();
        }),
            "Test");
        screen::Key("Escape");
        EXPECT_SOON(!screen::Find(name).exists);
    }
    WithLock(other, [other] { other->Quit(); });
}

TEST_F(WindowTest, AnOpenPanelSendsAFileThatIsThereOnly)
{
    const TempFolder folder;
    WriteFile(folder / "file", "");
    fWindow->Show();
    BFilePanel panel(B_OPEN_PANEL, &fTarget);
    panel.SetPanelDirectory(folder.Path().c_str());
    panel.Show();
    ASSERT_SOON(screen::Find("open_panel").exposed);
    screen::Type(folder / "none");
    screen::Key("Return");
    ASSERT_SOON(display::Call([] {
        const QWidget* active = QApplication::activeWindow(); // which the keys go to
        return active && active->inherits("QMessageBox");
    }));
    screen::Key("Return");
    ASSERT_SOON(!screen::Find("qt_msgbox_label").exists);
    screen::Key("ctrl+a");
    screen::Type(folder / "file");
    screen::Key("Return");
    EXPECT_EQ(fLog->WaitFor(1), Entries { folder / "file" });
    panel.Show(); // and goes while it tells of a file that is not there
    ASSERT_SOON(screen::Find("open_panel").exposed);
    screen::Key("ctrl+a");
    screen::Type(folder / "none");
    screen::Key("Return");
    ASSERT_SOON(screen::Find("qt_msgbox_label").exists);
}

TEST_F(WindowTest, APanelComesUpOverItsWindowAndThenWhereItWasLeft)
{
    fWindow->Show();
    const auto show = [&](BFilePanel& panel) {
        fWindow->fAsked = [&] { panel.Show(); };
        fWindow->PostMessage(kAsk);
        EXPECT_TRUE(screen::BecomesActive("Save As"));
        return screen::Settled("save_panel");
    };
    const std::pair<BPoint, BRect> places[] = { { { 380, 300 }, { 218, 194, 841, 605 } },
        { { 0, 0 }, { 1, 28, 624, 439 } }, { { 900, 700 }, { 399, 351, 1022, 762 } } };
    for (const auto& [corner, place] : places) {
        BFilePanel panel(B_SAVE_PANEL, &fTarget);
        fWindow->MoveTo(corner);
        EXPECT_EQ(show(panel), place);
    }
    BFilePanel panel(B_SAVE_PANEL, &fTarget);
    BRect left = show(panel);
    for (const char* key : { "Escape", "alt+F4" }) {
        screen::Key(key);
        ASSERT_SOON(!screen::Find("save_panel").exists);
        show(panel);
        EXPECT_SOON(screen::Find("save_panel").frame == left) << key;
    }
    EXPECT_EQ(fLog->WaitFor(2), Entries(2, "forgone " + std::to_string(B_SAVE_REQUESTED)));
    screen::MoveWindow("Save As", BPoint(70, 90));
    ASSERT_SOON(screen::Find("save_panel").frame != left);
    left = screen::Settled("save_panel");
    panel.Hide();
    EXPECT_SOON(!screen::Find("save_panel").exists);
    show(panel);
    EXPECT_SOON(screen::Find("save_panel").frame == left);
}
