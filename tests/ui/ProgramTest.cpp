// The program as users run it.
#include "tests/ui/Program.h"

#include "results/TestCatalogue.h"
#include "tests/support/Rows.h"
#include "tests/support/Test.h"
#include "ui/TarvexApp.h"

TEST(Program, AnswersWithoutADisplay)
{
    setenv("ON_A_DISPLAY", TARVEX_TESTS "/../scripts/with-display", 1);
    for (const Row& row : RowsOf("ui/Answers.txt", 4)) {
        const std::string command =
            "env -u DISPLAY -u WAYLAND_DISPLAY " + row[0] + " " TARVEX_BUILD "/tarvex " + row[1];
        FILE* const program = popen(command.c_str(), "r");
        char shown[2000] = "";
        static_cast<void>(fread(shown, 1, sizeof shown - 1, program));
        EXPECT_EQ(std::to_string(WEXITSTATUS(pclose(program))), row[2]) << command;
        EXPECT_TRUE(std::regex_match(shown, std::regex(row[3]))) << command << ": " << shown;
    }
}

TEST(Program, ReadsItsArgumentsAndQuitsWhenTold)
{
    const TempFolder folder;
    WriteFile(folder / "good", "1.0\n26\nPC (1-x)\t100:126/1.000000;\n");
    WriteFile(folder / "bad", "no results");
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    setenv("XDG_DATA_HOME", folder.Path().c_str(), 1); // compared machines are remembered
    for (const Row& row : RowsOf("ui/Arguments.txt", 4)) {
        const std::string &arguments = row[0], &key = row[1], &title = row[2], &errors = row[3];
        std::vector<std::string> words;
        std::istringstream all(std::regex_replace(arguments, std::regex("@"), folder.Path()));
        for (std::string word; std::getline(all, word, ',');)
            words.push_back(word);
        Program program(words);
        ASSERT_TRUE(program.In(title, "", {}));
        // Window managers give a window without an icon one of 48 pixels.
        const char* const icon = "xprop -name Tarvex _NET_WM_ICON | grep -q '(128 x 128)'";
        EXPECT_SOON(system(icon) == 0);
        key.empty() ? program.End(SIGTERM) : screen::Key(key);
        EXPECT_EQ(program.Status(30), 0) << arguments;
        EXPECT_EQ(program.Errors(), std::regex_replace(errors, std::regex("@"), folder.Path()));
    }
}

TEST(TarvexApp, HelpsOnEveryGroupOfTests)
{
    struct App : TarvexApp {
        using TarvexApp::AddHelp;
    } app;
    LibHelp help;
    app.AddHelp(help);
    for (const TestGroup& group : kTestGroups) {
        if (group.box == GroupBox::kNone)
            continue;
        const LibHelpTopic* topic = help.TopicAt(help.IndexOf(group.viewName));
        EXPECT_TRUE(topic && topic->title.Compare(group.label) == 0
            && topic->text.Compare(group.help) == 0);
        EXPECT_STREQ(help.TipFor(group.viewName), group.tip);
    }
}

TEST(Program, ALaterStartReachesTheOneThatRuns)
{
    const TempFolder folder;
    WriteFile(folder / "one", "1.0\n26\nPC (1-x)\t100:126/1.000000;\n");
    setenv("XDG_DATA_HOME", folder.Path().c_str(), 1); // compared machines are remembered
    // Of starts at once one is the first, whichever it is.
    Program both[] = { Program({}), Program({}) };
    int first = 0;
    ASSERT_SOON((first = both[0].Status(0.01) == 0 ? 1 : 0) == 1 || both[1].Status(0.01) == 0);
    Program& program = both[first];
    ASSERT_TRUE(program.In("Tarvex", "", {}));
    const std::string start = "cd " + folder.Path() + " && " TARVEX_BUILD "/tarvex ";
    EXPECT_EQ(system((start + "one").c_str()), 0);
    EXPECT_TRUE(program.In("Tarvex Comparisons", "", {})) << "its path counts from there";
    EXPECT_EQ(system(start.c_str()), 0);
    EXPECT_TRUE(program.In("Tarvex", "", {}));

    EXPECT_EQ(program.Errors(), "");

    program.End(SIGSTOP);
    EXPECT_EQ(WEXITSTATUS(system((start + "one 2>said").c_str())), 1);
    EXPECT_TRUE(std::regex_match(ReadFile(folder / "said"),
        std::regex("Tarvex is running \\(process \\d+\\) but does not answer\n")))
        << ReadFile(folder / "said");
    program.End(SIGKILL);
    EXPECT_EQ(program.Status(30), -1);
    Program next({ folder / "one" });
    EXPECT_TRUE(next.In("Tarvex Comparisons", "", {}));
    next.End(SIGTERM);
    EXPECT_EQ(next.Status(30), 0);
}
