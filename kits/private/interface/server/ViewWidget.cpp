#include "server/ViewWidget.h"

#include "drawing/XcbReply.h"
#include "server/Accessibility.h"
#include "server/Convert.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QPaintEvent>
#include <QWindow>
#include <xcb/xcb.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <QtGui/qguiapplication_platform.h>
#include <set>
#include <utility>

namespace {

std::set<ViewWidget*>& NativeWidgets()
{
    static std::set<ViewWidget*> sWidgets; // touched by the server's thread only
    return sWidgets;
}

// A request in the toolkit's buffer has not happened yet for other connections.
void RoundTrip()
{
    auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (!x11)
        return;
    xcb_connection_t* connection = x11->connection();
    MakeReply(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
}

QColor ReadableOn(const QColor& ground, const QColor& text)
{
    // In 255 steps of grey. The palette's text was chosen for another ground.
    constexpr int kLeastContrast = 100;
    if (std::abs(qGray(ground.rgb()) - qGray(text.rgb())) >= kLeastContrast)
        return text;
    return qGray(ground.rgb()) < 128 ? Qt::white : Qt::black;
}

} // namespace

ViewWidget::ViewWidget(std::shared_ptr<ViewLink> link, QWidget* parent)
    : QWidget(parent), fLink(std::move(link))
{
}

ViewWidget::~ViewWidget()
{
    NativeWidgets().erase(this);
}

QPaintEngine* ViewWidget::paintEngine() const
{
    return fIsNative ? nullptr : QWidget::paintEngine();
}

void ViewWidget::paintEvent(QPaintEvent* event)
{
    fLink->AddDirty(FromQRect(event->rect()));
}

void ViewWidget::TellLine(int index, QAccessible::Event what)
{
    QAccessibleEvent event(this, what);
    event.setChild(index);
    QAccessible::updateAccessibility(&event);
}

void ViewWidget::SetLines(std::vector<DrawnLine> lines)
{
    const std::vector<DrawnLine> before = std::exchange(fLines, std::move(lines));
    KeepLines(*this, fLines.size());
    if (!fIsList)
        FindCurrentLine(before);
    for (size_t i = 0; i < std::min(fLines.size(), before.size()); i++) {
        const bool isNew = fLines[i].text != before[i].text;
        if (isNew)
            TellLine(static_cast<int>(i), QAccessible::NameChanged);
        if (fLines[i].isSelected != before[i].isSelected)
            TellLine(static_cast<int>(i), QAccessible::Selection);
        if (fLines[i].isCurrent && (isNew || !before[i].isCurrent) && hasFocus())
            TellLine(static_cast<int>(i), QAccessible::Focus);
    }
}

// One line that changes alone says where the keys have moved to.
void ViewWidget::FindCurrentLine(const std::vector<DrawnLine>& before)
{
    int changes = 0;
    const auto isOther = [&](size_t i) { return fLines[i].text != before[i].text; };
    for (size_t i = 0; fLines.size() == before.size() && i < fLines.size(); i++)
        changes += isOther(i) ? 1 : 0;
    for (size_t i = 0; i < std::min(fLines.size(), before.size()); i++)
        fLines[i].isCurrent = changes == 1 ? isOther(i) : before[i].isCurrent;
}

// Qt tells of the view itself afterwards; a reader is to stay with the row.
void ViewWidget::focusInEvent(QFocusEvent* event)
{
    QWidget::focusInEvent(event);
    const auto tell = [this] {
        for (size_t i = 0; i < fLines.size(); i++) {
            if (fLines[i].isCurrent && hasFocus())
                TellLine(static_cast<int>(i), QAccessible::Focus);
        }
    };
    QMetaObject::invokeMethod(this, tell, Qt::QueuedConnection);
}

NativeSurface ViewWidget::BecomeNative()
{
    if (!fIsNative) {
        fIsNative = true;
        NativeWidgets().insert(this);
        setAutoFillBackground(false);
        // Native without its ancestors: else each widget around would get an X window, to be moved
        // by a request of its own. And nothing may paint over what the program draws.
        for (Qt::WidgetAttribute attribute : { Qt::WA_OpaquePaintEvent, Qt::WA_NoSystemBackground,
                 Qt::WA_PaintOnScreen, Qt::WA_DontCreateNativeAncestors, Qt::WA_NativeWindow })
            setAttribute(attribute);
    }
    const WId window = winId();
    PlaceNative();
    RoundTrip();
    const qreal scale = devicePixelRatioF();
    return { static_cast<uint32>(window), static_cast<int32>(std::lround(width() * scale)),
        static_cast<int32>(std::lround(height() * scale)), static_cast<float>(scale) };
}

void ViewWidget::PlaceNative()
{
    if (windowHandle())
        windowHandle()->setGeometry(QRect(mapTo(nativeParentWidget(), QPoint()), size()));
    // What comes out from behind the edge of a widget around this one is exposed before that
    // widget has grown, and Qt then takes it for hidden.
    const QRegion seen = visibleRegion();
    update(seen - std::exchange(fSeen, seen));
}

void ViewWidget::PlaceNatives(const QWidget* window)
{
    for (ViewWidget* widget : NativeWidgets()) {
        if (widget->window() == window)
            widget->PlaceNative();
    }
}

void ShowViewColor(QWidget& widget, const QColor& color, bool fills)
{
    const bool isText = qobject_cast<QAbstractScrollArea*>(&widget) != nullptr;
    if (!fills && !isText && !widget.autoFillBackground())
        return;
    QPalette palette = widget.palette();
    const QPalette::ColorRole textRole = isText ? QPalette::Text : QPalette::WindowText;
    palette.setColor(QPalette::Window, color);
    if (isText)
        palette.setColor(QPalette::Base, color);
    palette.setColor(
        QPalette::Active, textRole, ReadableOn(color, palette.color(QPalette::Active, textRole)));
    palette.setColor(QPalette::Inactive, textRole,
        ReadableOn(color, palette.color(QPalette::Inactive, textRole)));
    widget.setPalette(palette);
    auto* view = dynamic_cast<ViewWidget*>(&widget);
    widget.setAutoFillBackground(fills && !(view && view->IsNative()));
    widget.update();
}

void UseDesktopColors(QWidget& widget)
{
    QPalette palette = QApplication::palette(&widget);
    for (QPalette::ColorRole role : { QPalette::Window, QPalette::WindowText }) {
        // Setting it, though it is the same, keeps the parent's from coming through.
        for (QPalette::ColorGroup group :
            { QPalette::Active, QPalette::Inactive, QPalette::Disabled })
            palette.setBrush(group, role, palette.brush(group, role));
    }
    widget.setPalette(palette);
}
