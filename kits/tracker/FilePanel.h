// The desktop's dialog for choosing a place and name to save under. It runs beside the program's
// windows and answers with messages.
#pragma once

#include "Entry.h"
#include "Messenger.h"

#include <memory>

class BMessage;
struct FilePanelPeer;

enum file_panel_mode { B_OPEN_PANEL, B_SAVE_PANEL };

class BFilePanel {
public:
    // A copy of message goes to target when the user has chosen: to save, with "directory" (ref)
    // and "name" (string); to open, with "refs" of the file. B_CANCEL goes there, with an int32
    // "old_what" of the message's code, when the panel is closed otherwise. The default message is
    // B_SAVE_REQUESTED or B_REFS_RECEIVED, the default target the application; message and target
    // are copied. Before the user may save over a file the panel asks; also over one of the chosen
    // name with the ending that the message's string "be:also_written" gives, if it has that.
    explicit BFilePanel(file_panel_mode mode = B_OPEN_PANEL, const BMessenger* target = nullptr,
        const entry_ref* directory = nullptr, const BMessage* message = nullptr);
    ~BFilePanel();
    BFilePanel(const BFilePanel&) = delete;
    BFilePanel& operator=(const BFilePanel&) = delete;

    // In front, the first time over the window whose thread this is.
    void Show();
    void Hide();
    file_panel_mode PanelMode() const { return fMode; }
    BMessenger Messenger() const { return fTarget; }

    void SetPanelDirectory(const char* path);
    void SetSaveText(const char* name); // the name proposed

private:
    void Report();
    void TakeSecondEnding();

    const file_panel_mode fMode;
    BMessenger fTarget;
    std::unique_ptr<BMessage> fMessage;
    const std::unique_ptr<FilePanelPeer> fPeer;
};
