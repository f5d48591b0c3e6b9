// Watches a view's widget and reports its input by the view's link. Owned by the widget.
#pragma once

#include "server/ViewPeer.h"

#include <QObject>

class QFocusEvent;
class QKeyEvent;
class QMouseEvent;

class ViewEvents : public QObject {
public:
    // kView: the program handles the input, so mouse, wheel and keys become messages to the view.
    // kControl: Qt does; only the focus is reported.
    enum class Kind { kView, kControl };

    ViewEvents(std::shared_ptr<ViewLink> link, Kind kind, QWidget* widget);

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    bool HandleForView(QEvent* event);
    void MouseMoved(const QMouseEvent& event);
    void EnteredOrLeft(int32 transit);
    void Focused(const QFocusEvent& event);
    bool KeyPressed(const QKeyEvent& event);

    const std::shared_ptr<ViewLink> fLink;
    const Kind fKind;
    QWidget* const fWidget;
};

// Gives a new widget what all of them have: the view's name, its focus rule and its ViewEvents.
void Equip(ViewPeer& peer, const char* name, ViewEvents::Kind kind);
