// The program's help, and the window that shows it.
#pragma once

#include "foundation/LibString.h"
#include "toolkit/LibWindow.h"

#include <deque>
#include <utility>
#include <vector>

class BListView;
class BTextView;
class xmlTag;

// Topics to read and tips for controls, from XML files like
//
//     <help>
//     <topic name="cpusieve" title="Sieve" tip="Counts rounds"><p>A <b>bold</b> word.</p></topic>
//     <tip name="cancel">Closes the window</tip>
//     </help>
//
// Names are those of views and windows. A text lies in one line: lines are joined as they are.
struct LibHelpTopic {
    LibString name;
    LibString title;
    LibString text; // paragraphs with an empty line between them
    std::vector<std::pair<int32, int32>> bold {}; // from which byte of text to which
};

class LibHelp {
public:
    // Adds topics and tips; one of a name that is there already takes its place. False if the file
    // at path has neither.
    bool ReadFile(const char* path);
    bool ReadText(const char* xml); // the file's contents

    // A topic that stands in no file, in place of one of the same name; an empty tip: none.
    void AddTopic(const char* name, const char* title, const char* text, const char* tip);
    void AddTopic(const LibHelpTopic& topic); // of no file either, or of one

    // The files that the application keeps in its resources.
    void ReadResources();
    // Puts the file into the application's resources, in place of one of the same name. False, with
    // a line on standard error, if it holds no help or cannot be stored.
    static bool AddToResources(const char* path);

    int32 CountTopics() const { return static_cast<int32>(topics.size()); }
    const LibHelpTopic* TopicAt(int32 index) const; // null beyond the last
    int32 IndexOf(const char* name) const; // -1: no such topic
    void SetTip(const char* name, const char* text);
    const char* TipFor(const char* name) const; // null: none

private:
    struct Tip {
        LibString name;
        LibString text;
    };

    std::deque<LibHelpTopic> topics;
    std::deque<Tip> tips;
};

// Tips for controls, known by the names of their views. The application gives and switches them;
// windows put them on. A tip that a window has given a view of another name stays: it is no help
// but something to read.

// What the tips are from now on; null: there are none. A copy is taken: windows that open read it
// in threads of their own.
void LibSetToolTips(const LibHelp* help);
// Switches tips on or off, also in the windows that have theirs already.
void LibShowToolTips(bool show);
// Puts their tips on all views of a window, which must be locked or not shown yet.
void LibApplyToolTips(BWindow* window);

// The help viewer: the topics' titles, and the text of the one that is selected. Closed by the user
// it is only hidden.
class LibHelpWindow : public LibWindow {
public:
    explicit LibHelpWindow(const LibHelp& help); // hidden; help must live as long
    ~LibHelpWindow() override;

    // Selects a topic by its index, which must be one of the help's. The window must be locked, or
    // not shown yet.
    void ShowTopic(int32 index);

    void MessageReceived(BMessage* message) override;

private:
    void AddTopics(BRect frame);
    void AddText(BRect frame);
    void TopicSelected();

    const LibHelp& help;
    BListView* topics = nullptr;
    BTextView* text = nullptr;
};
