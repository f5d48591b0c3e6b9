#include "TabView.h"

#include "Message.h"
#include "server/Convert.h"
#include "server/DisplayServer.h"
#include "server/ViewPeer.h"
#include "server/ViewWidget.h"

#include <QTabBar>

namespace {

constexpr float kTabHeight = 26;

class TabBarWidget : public QTabBar {
public:
    TabBarWidget(bool evenWidths, QWidget* parent) : QTabBar(parent), fEvenWidths(evenWidths)
    {
        setExpanding(false);
    }

protected:
    QSize tabSizeHint(int index) const override
    {
        QSize size = QTabBar::tabSizeHint(index);
        // Qt asks for each tab alone, so each looks for the widest.
        for (int i = 0; fEvenWidths && i < count(); i++)
            size.setWidth(std::max(size.width(), QTabBar::tabSizeHint(i).width()));
        return size;
    }

private:
    const bool fEvenWidths;
};

} // namespace

// The tabs themselves.
class BTabRow : public BView {
public:
    BTabRow(BRect frame, BTabView* owner, button_width width)
        : BView(frame, "tabs", B_FOLLOW_LEFT_RIGHT | B_FOLLOW_TOP, B_NAVIGABLE), fOwner(owner),
          fWidth(width)
    {
        BView::SetViewColor(B_TRANSPARENT_COLOR);
    }

    void ShowTabs()
    {
        if (Peer())
            display::Call([this] { ShowIn(*static_cast<QTabBar*>(Peer()->widget)); });
    }

protected:
    void MakeWidget(ViewPeer& peer) override
    {
        auto* bar = new TabBarWidget(fWidth == B_WIDTH_FROM_WIDEST, peer.parent);
        UseDesktopColors(*bar);
        ShowIn(*bar);
        QObject::connect(bar, &QTabBar::currentChanged, bar, [link = peer.link](int index) {
            BMessage report(kMsgWidgetChanged);
            report.AddInt32("index", index);
            link->Post(report);
        });
        peer.widget = bar;
        Equip(peer, Name(), ViewEvents::Kind::kControl);
    }

    void WidgetChanged(BMessage* report) override
    {
        int32 index = 0;
        if (report->FindInt32("index", &index) == B_OK)
            fOwner->Select(index);
    }

private:
    void ShowIn(QTabBar& bar)
    {
        // While tabs come Qt selects one, which is no choice of the user's.
        const QSignalBlocker quiet(&bar);
        for (int32 i = 0; i < fOwner->CountTabs(); i++) {
            const QString label = PlainLabel(fOwner->TabAt(i)->Label());
            if (i < bar.count())
                bar.setTabText(i, label);
            else
                bar.addTab(label);
        }
        bar.setCurrentIndex(fOwner->Selection());
    }

    BTabView* fOwner;
    button_width fWidth;
};

BTab::BTab(BView* contents)
    : fView(contents), fLabel(contents && contents->Name() ? contents->Name() : "")
{
}

void BTab::SetLabel(const char* label)
{
    fLabel = label ? label : "";
}

BTabView::BTabView(
    BRect frame, const char* name, button_width width, uint32 resizeMode, uint32 flags)
    : BView(frame, name, resizeMode, flags)
{
    BRect bounds(0, 0, frame.Width(), frame.Height());
    fRow = new BTabRow(BRect(0, 0, bounds.right, kTabHeight - 1), this, width);
    bounds.top = kTabHeight;
    fContainer = new BView(bounds, "container", B_FOLLOW_ALL, 0);
    AddChild(fRow);
    AddChild(fContainer);
}

BTabView::~BTabView() = default;

void BTabView::AddTab(BView* contents, BTab* tab)
{
    if (!tab)
        tab = new BTab(contents);
    if (!tab->fView)
        tab->fView = contents;
    fTabs.emplace_back(tab);
    if (contents) {
        // Before it is added, or it would be seen for a moment over the selected one.
        contents->Hide();
        fContainer->AddChild(contents);
    }
    if (fSelection < 0)
        Select(0);
    fRow->ShowTabs();
}

BTab* BTabView::TabAt(int32 index) const
{
    return index >= 0 && index < CountTabs() ? fTabs[static_cast<size_t>(index)].get() : nullptr;
}

void BTabView::Select(int32 index)
{
    BTab* tab = TabAt(index);
    if (!tab || index == fSelection)
        return;
    if (BTab* before = TabAt(fSelection)) {
        before->fSelected = false;
        if (before->View())
            before->View()->Hide();
    }
    fSelection = index;
    tab->fSelected = true;
    // Hide() nests: what the program has hidden itself stays hidden in the selected tab.
    if (tab->View())
        tab->View()->Show();
    fRow->ShowTabs();
}

float BTabView::TabHeight() const
{
    return kTabHeight;
}

void BTabView::AttachedToWindow()
{
    // White is what every view begins with: the program has chosen nothing.
    if (Parent() && ViewColor() == white_color)
        SetViewColor(Parent()->ViewColor());
}

// The parts have the same colour, so that no edge shows between tabs and contents.
void BTabView::SetViewColor(rgb_color color)
{
    BView::SetViewColor(color);
    fRow->BView::SetViewColor(color);
    fContainer->SetViewColor(color);
}
