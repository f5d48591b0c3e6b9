// The help viewer: the topics' titles, and the text of the one that is selected. Closed by the user
// it is only hidden.
#pragma once

#include "toolkit/LibWindow.h"

class BListView;
class BTextView;
class LibHelp;

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
