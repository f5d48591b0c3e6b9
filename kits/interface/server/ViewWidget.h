// The widget of a view that draws itself, or only holds others.
#pragma once

#include "server/NativeSurface.h"
#include "server/ViewPeer.h"

#include <QWidget>

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

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void PlaceNative();

    const std::shared_ptr<ViewLink> fLink;
    bool fIsNative = false;
};

// Shows the view's colour, with text that can be read on it. fills is false where it is what lies
// beneath anyway.
void ShowViewColor(QWidget& widget, const QColor& color, bool fills);

// For widgets that do not show their view's colour: the desktop's background and text, instead of
// what the parent has.
void UseDesktopColors(QWidget& widget);
