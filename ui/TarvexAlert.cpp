#include "ui/TarvexAlert.h"

#include "toolkit/Maker.h"

#include <Box.h>
#include <Button.h>
#include <Looper.h>
#include <Message.h>
#include <TextView.h>

namespace {

constexpr char kText[] =
    "Please send your results to " TARVEX_SUPPORT_ADDRESS
    ", so that they can be distrubuted in the next release.\n\n"
    "You may send the file yourself, or you can e-mail it now.\n"
    "When e-mailing your results, please describe the configuration of your system. "
    "For example: BeBox 133, Mac 7600, UMAX s9000, Presario 4500.";

// The results window takes it as the order to mail.
constexpr uint32 kMsgConfiguration = 5000;
constexpr int32 kEmailButton = 1;

constexpr float kMargin = 12;
constexpr float kLabelHeight = 20;
constexpr float kFrameHeight = 110;

} // namespace

TarvexAlert::TarvexAlert(BLooper* answerTarget)
    : BAlert("alert", kText, "Save", "E-mail", nullptr, B_WIDTH_AS_USUAL, B_OFFSET_SPACING,
        B_INFO_ALERT),
      target(answerTarget)
{
    SetShortcut(0, B_ESCAPE); // the file is there already
    SetFlags(Flags() & ~(B_NOT_CLOSABLE));
    AddConfiguration();
}

// The alert has laid out its text and, at its bottom, its buttons: the frame goes in between.
void TarvexAlert::AddConfiguration()
{
    BView* back = ButtonAt(0)->Parent();
    const float top = ButtonAt(0)->Frame().top;
    ResizeBy(0, kFrameHeight + kMargin);

    BBox* frame = new BBox(BRect(kMargin, top, back->Bounds().right - kMargin, top + kFrameHeight),
        "config_frame", B_FOLLOW_LEFT_RIGHT | B_FOLLOW_BOTTOM);
    frame->SetLabel("Configuration");
    back->AddChild(frame);

    BRect inside = frame->Bounds();
    inside.InsetBy(kMargin, kMargin);
    inside.top = kLabelHeight + kMargin;
    configuration = new BTextView(
        inside, "config", inside.OffsetToCopy(0, 0).InsetByCopy(4, 4), B_FOLLOW_ALL_SIDES);
    frame->AddChild(configuration);
    configuration->MakeFocus();
}

void TarvexAlert::MessageReceived(BMessage* message)
{
    // Before the base, which ends the alert, and the text with it.
    int32 which = 0;
    if (message->FindInt32("which", &which) == B_OK && which == kEmailButton) {
        BMessage answer(kMsgConfiguration);
        answer.AddString("config", Configuration());
        target->PostMessage(&answer);
    }
    BAlert::MessageReceived(message);
}

const char* TarvexAlert::Configuration()
{
    return configuration->Text();
}
