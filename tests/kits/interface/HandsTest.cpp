// What the program's calls and the user's hands make of a window, line by line of a file.
#include "Button.h"
#include "CheckBox.h"
#include "ScrollBar.h"
#include "ScrollView.h"
#include "server/DisplayServer.h"
#include "StatusBar.h"
#include "StringView.h"
#include "TabView.h"
#include "tests/support/Calls.h"
#include "TestWindow.h"
#include "TextControl.h"
#include "TextView.h"

#include <QApplication>
#include <QWidget>

namespace {

Log* gLog = nullptr; // of the test that runs

std::string At(float x, float y)
{
    return " " + std::to_string(std::lround(x)) + "," + std::to_string(std::lround(y));
}

// All that a message tells of input.
std::string Text(const BMessage& message)
{
    std::string text;
    BPoint where, notches;
    int32 number = 0;
    for (const char* name : { "where", "screen_where" })
        text += message.FindPoint(name, &where) == B_OK ? " is" + At(where.x, where.y) : "";
    if (message.FindFloat("be:wheel_delta_x", &notches.x) == B_OK
        && message.FindFloat("be:wheel_delta_y", &notches.y) == B_OK)
        text += At(notches.x, notches.y);
    for (const char* name : { "buttons", "modifiers", "clicks", "be:transit", "key", "raw_char" })
        text += message.FindInt32(name, &number) == B_OK
            ? std::string(" ") + name + " " + std::to_string(number)
            : "";
    return text + (message.HasInt64("when") ? "" : " at no time");
}

// Logs what it is told. One whose name begins with "-" leaves the window at once.
class ToldView : public BView {
public:
    using BView::BView;
    void AttachedToWindow() override
    {
        Add("attached");
        if (Name()[0] == '-')
            RemoveSelf();
    }
    void AllAttached() override { Add("all attached"); }
    void DetachedFromWindow() override { Add("detached"); }
    void AllDetached() override { Add("all detached"); }
    void TargetedByScrollView(BScrollView*) override { Add("targeted"); }
    void WindowActivated(bool is) override { Add(is ? "active" : "inactive"); }
    void FrameMoved(BPoint to) override { Add("moved" + At(to.x, to.y)); }
    void FrameResized(float width, float height) override { Add("resized" + At(width, height)); }
    void MakeFocus(bool focus = true) override
    {
        BView::MakeFocus(focus);
        Add("focus" + At(focus, screen::Find(Name()).focused));
    }
    void MouseDown(BPoint where) override { AddInput("down", where); }
    void MouseUp(BPoint where) override { AddInput("up", where); }
    void MouseMoved(BPoint where, uint32 transit, const BMessage*) override
    {
        if (transit != B_INSIDE_VIEW) // of which there may be any number
            AddInput("pointer", where);
    }
    void KeyDown(const char* bytes, int32 count) override
    {
        AddInput("key", BPoint(bytes[0], count));
        BView::KeyDown(bytes, count);
    }
    void MessageReceived(BMessage* message) override
    {
        AddInput("message", B_ORIGIN);
        BView::MessageReceived(message);
    }

private:
    void Add(const std::string& what) { gLog->Add(Name() + (" " + what)); }
    void AddInput(const std::string& what, BPoint where)
    {
        Add(what + At(where.x, where.y) + Text(*Window()->CurrentMessage()));
    }
};

// A function of a view or of the window, given what a row says from its third field on.
using Call = std::function<std::string(BHandler&, const Row&)>;

template <class F, class T>
Call On(F T::*function)
{
    return [call = Function(function)](
               BHandler& on, const Row& row) { return call(dynamic_cast<T&>(on), row); };
}

class HandsTest : public WindowTest, public testing::WithParamInterface<const char*> {
protected:
    void SetUp() override
    {
        WindowTest::SetUp();
        gLog = fLog.get();
        fWindow->AddChild(new BView(fWindow->Bounds(), "top", B_FOLLOW_ALL_SIDES, 0));
        fOnes = { { "window", fWindow }, { "top", fWindow->ChildAt(0) } };
    }
    std::string Do(const Row& row)
    {
        const std::map<std::string, std::function<void()>> hands = {
            { "key", [&] { screen::Key(row[1]); } },
            { "type", [&] { screen::Type(row[1]); } },
            { "click", [&] { screen::ClickAt(Place(row), row.size() > 3 ? row[3][0] - '0' : 1); } },
            { "double", [&] { screen::DoubleClickAt(Place(row)); } },
            { "show", [&] { Show(), Becomes([&] { return fWindow->IsActive(); }); } },
            { "pointer", [&] { screen::MoveTo(Place(row)); } },
            { "close", [] { display::Call([] { QApplication::activeWindow()->close(); }); } },
            { "shell", [&] { EXPECT_EQ(system(row.at(1).c_str()), 0); } },
            { "new", [&] { fOnes[row.at(2)] = Make(row); } },
        };
        if (const auto hand = hands.find(row[0]); hand != hands.end())
            return hand->second(), "";
        if (const BRect frame = screen::Find("Test").frame; row[0] == "frame")
            return At(frame.left, frame.top) + At(frame.right, frame.bottom);
        if (row[0] == "pixel") {
            const rgb_color color = screen::PixelAt(Place(row));
            return std::to_string(color.red) + At(color.green, color.blue);
        }
        const bool isWindow = row[0] == "window"; // which locks itself
        const Call& call = fFunctions.at((isWindow ? "window." : "") + row.at(1));
        const auto run = [&] { return call(*fOnes.at(row[0]), row); };
        return isWindow ? run() : Locked(run);
    }
    static BPoint Place(const Row& row)
    {
        return BPoint(200 + std::stof(row.at(1)), 150 + std::stof(row.at(2)));
    }

    std::set<std::string> fLines; // of the window's tree
    size_t fKnown = 0; // of the log

private:
    BView* View(const std::string& name) { return dynamic_cast<BView*>(fOnes.at(name)); }
    // new | KIND | NAME | its four edges | its label or flags, or the view that it is for
    BView* Make(const Row& row)
    {
        const char* const name = row.at(2).c_str();
        const auto edge = [&](size_t i) { return std::stof(row.at(i)); };
        const BRect frame(edge(3), edge(4), edge(5), edge(6));
        const std::string more = row.size() > 7 ? row[7] : "";
        const auto number = [&] { return static_cast<uint32>(std::stoul(more, nullptr, 0)); };
        const auto line = [&] {
            auto* control = new BTextControl(frame, name, more.c_str(), "", new BMessage(1));
            control->SetModificationMessage(new BMessage(2));
            fOnes[row[2] + ".text"] = control->TextView();
            return control;
        };
        const auto scroll = [&] {
            auto* view = new BScrollView(name, more.empty() ? nullptr : View(more), B_FOLLOW_NONE,
                0, true, true, static_cast<border_style>(edge(3)));
            fOnes[row[2] + ".h"] = view->ScrollBar(B_HORIZONTAL);
            fOnes[row[2] + ".v"] = view->ScrollBar(B_VERTICAL);
            return view;
        };
        const std::map<std::string, std::function<BView*()>> kinds = {
            { "button", [&] { return new BButton(frame, name, name, new BMessage(number())); } },
            { "check", [&] { return new BCheckBox(frame, name, name, new BMessage(number())); } },
            { "line", line },
            { "scroll", scroll },
            { "status", [&] { return new BStatusBar(frame, name); } },
            { "string", [&] { return new BStringView(frame, name, name, 0, B_NAVIGABLE); } },
            { "tabs", [&] { return new BTabView(frame, name, B_WIDTH_FROM_WIDEST); } },
            { "text", [&] { return new BTextView(frame, name, frame.OffsetToCopy(4, 4), 0); } },
            { "view", [&] { return new ToldView(frame, name, B_FOLLOW_ALL_SIDES, number()); } },
        };
        return kinds.at(row[1])();
    }

    const std::map<std::string, Call> fFunctions = {
        { "Hide", On(&BView::Hide) },
        { "IsHidden", On(&BView::IsHidden) },
        { "MakeFocus", On(&BView::MakeFocus) },
        { "MoveTo", On<void(float, float)>(&BView::MoveTo) },
        { "RemoveSelf", On(&BView::RemoveSelf) },
        { "ResizeTo", On(&BView::ResizeTo) },
        { "ScrollTo", On<void(float, float)>(&BView::ScrollTo) },
        { "SetFontSize", On(&BView::SetFontSize) },
        { "Show", On(&BView::Show) },
        { "ShowLinkPointer", On(&BView::ShowLinkPointer) },
        { "SetEnabled", On(&BControl::SetEnabled) },
        { "SetState", On(&BControl::SetValue) },
        { "MakeDefault", On(&BButton::MakeDefault) },
        { "SetValue", On(&BScrollBar::SetValue) },
        { "SetRange", On(&BScrollBar::SetRange) },
        { "SetProportion", On(&BScrollBar::SetProportion) },
        { "SetSteps", On(&BScrollBar::SetSteps) },
        { "SetMaxValue", On(&BStatusBar::SetMaxValue) },
        { "Update", On(&BStatusBar::Update) },
        { "Reset", On(&BStatusBar::Reset) },
        { "SelectTab", On(&BTabView::Select) },
        { "Insert", On(&BTextView::Insert) },
        { "LeaveEnterToWindow", On(&BTextView::LeaveEnterToWindow) },
        { "MakeEditable", On(&BTextView::MakeEditable) },
        { "Select", On(&BTextView::Select) },
        { "SetMaxBytes", On(&BTextView::SetMaxBytes) },
        { "SetMaxCharacters", On(&BTextView::SetMaxCharacters) },
        { "SetText", On(&BTextView::SetText) },
        { "TextHeight", On(&BTextView::TextHeight) },
        { "Text", [](BHandler& on, const Row&) { return dynamic_cast<BTextView&>(on).Text(); } },
        { "window.Hide", On(&BWindow::Hide) },
        { "window.MoveTo", On<void(float, float)>(&BWindow::MoveTo) },
        { "window.ResizeTo", On(&BWindow::ResizeTo) },
        { "window.Show", On(&BWindow::Show) },
        { "window.Lock", On(&BLooper::Lock) },
        { "window.RemoveShortcut", On(&BWindow::RemoveShortcut) },
        { "window.ResizeBy", On(&BWindow::ResizeBy) },
        { "window.SetFlags", On(&BWindow::SetFlags) },
        { "window.Unlock", On(&BLooper::Unlock) },
        { "delete", [](BHandler& on, const Row&) { return delete &on, ""; } },
        { "AddChild",
            [this](BHandler& on, const Row& row) {
                BView* const before = row.size() > 3 ? View(row[3]) : nullptr;
                if (auto* tabs = dynamic_cast<BTabView*>(&on))
                    return tabs->AddTab(View(row.at(2))), "";
                return dynamic_cast<BView&>(on).AddChild(View(row.at(2)), before), "";
            } },
        { "Enlarge",
            [](BHandler& on, const Row&) {
                BFont large(be_bold_font);
                large.SetSize(30);
                return dynamic_cast<BTextView&>(on).SetFontAndColor(0, 1, &large), "";
            } },
        { "Selection",
            [](BHandler& on, const Row&) {
                int32 start = -1, end = -1;
                dynamic_cast<BTextView&>(on).GetSelection(&start, &end);
                return std::to_string(start) + " to " + std::to_string(end);
            } },
        { "window.AddShortcut",
            [this](BHandler&, const Row& row) {
                auto* message = new BMessage(std::stoul(row.at(4)));
                BView* const target = row.size() > 5 ? View(row[5]) : nullptr;
                return fWindow->AddShortcut(row.at(2)[0], std::stoul(row.at(3)), message, target),
                       "";
            } },
    };
    std::map<std::string, BHandler*> fOnes; // views by their names, and the window
};

} // namespace

// Below each line of the file stands what follows: what a call returns ("ask": at last), what is
// logged, and the lines of the window's tree that were not there before.
TEST_P(HandsTest, BecomesWhatAFileSays)
{
    const std::string file = std::string("kits/interface/") + GetParam() + ".txt";
    for (const TextRow& row : ReadRows(file)) {
        SCOPED_TRACE(row.given);
        Row given = RowOf(row.given);
        const bool isAsked = given[0] == "ask";
        given.erase(given.begin(), given.begin() + isAsked);
        const std::string result = isAsked ? "" : Do(given);
        std::string told;
        std::set<std::string> lines;
        Entries all;
        const auto tell = [&](const std::string& line) {
            told += (told.empty() ? "" : "\n") + line;
        };
        screen::WaitFor([&] {
            told = isAsked ? Do(given) : result;
            all = fLog->Now();
            std::for_each(all.begin() + static_cast<ptrdiff_t>(fKnown), all.end(), tell);
            lines.clear();
            std::istringstream tree(screen::Tree("Test", true));
            for (std::string line; std::getline(tree >> std::ws, line); lines.insert(line)) {
                if (!fLines.contains(line))
                    tell(line);
            }
            return told == row.told;
        });
        EXPECT_EQ(told, row.told);
        fLines = lines;
        fKnown = all.size();
    }
}

INSTANTIATE_TEST_SUITE_P(, HandsTest,
    testing::Values("bars", "hooks", "keys", "line", "parts", "shortcuts", "texts", "window"),
    [](const auto& file) { return std::string(file.param); });
