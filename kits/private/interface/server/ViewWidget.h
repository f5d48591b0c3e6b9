// The widget of a view that draws itself, or only holds others.
#pragma once

#include "server/Accessibility.h"
#include "server/ViewPeer.h"
#include "SupportDefs.h"

#include <QAccessible>
#include <QRegion>
#include <QWidget>

// The X window that a view draws into.
struct NativeSurface {
    uint32 window = 0; // 0: the view is in no shown window
    int32 width = 0; // device pixels
    int32 height = 0;
    float scale = 1; // device pixels in a view unit
};

class ViewWidget : public QWidget {
public:
    ViewWidget(std::shared_ptr<ViewLink> link, QWidget* parent);
    ~ViewWidget() override;

    // Gives the widget an X window of its own that Qt never paints, once; a round trip makes it
    // known to other connections.
    NativeSurface BecomeNative();
    bool IsNative() const { return fIsNative; }
    // Puts the X windows of all native views in window where their widgets are, after widgets
    // around them have moved: Qt forgets that.
    static void PlaceNatives(const QWidget* window);
    QPaintEngine* paintEngine() const override; // none for a native one

    // For assistive technology: what is a list, and the text drawn last, whose changes are told.
    void BecomeList() { fIsList = true; }
    bool IsList() const { return fIsList; }
    void SetLines(std::vector<DrawnLine> lines);
    const std::vector<DrawnLine>& Lines() const { return fLines; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

private:
    void PlaceNative();
    void TellLine(int index, QAccessible::Event what);
    void FindCurrentLine(const std::vector<DrawnLine>& before);

    const std::shared_ptr<ViewLink> fLink;
    bool fIsNative = false;
    QRegion fSeen; // of a native one, when it was last placed
    bool fIsList = false;
    std::vector<DrawnLine> fLines;
};

// Shows the view's colour, with text that can be read on it. fills is false where it is what lies
// beneath anyway.
void ShowViewColor(QWidget& widget, const QColor& color, bool fills);

// For widgets that do not show their view's colour: the desktop's background and text, instead of
// what the parent has.
void UseDesktopColors(QWidget& widget);
