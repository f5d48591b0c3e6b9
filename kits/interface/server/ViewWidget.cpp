#include "server/ViewWidget.h"

#include "server/Convert.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QPaintEvent>
#include <QtGui/qguiapplication_platform.h>
#include <QWindow>

#include <cmath>
#include <cstdlib>
#include <set>
#include <xcb/xcb.h>

namespace {

std::set<ViewWidget*>& NativeWidgets()
{
    static std::set<ViewWidget*> widgets; // touched by the server's thread only
    return widgets;
}

void RoundTrip()
{
    auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (!x11)
        return;
    xcb_connection_t* connection = x11->connection();
    free(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
}

QColor ReadableOn(const QColor& ground, const QColor& text)
{
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

NativeSurface ViewWidget::BecomeNative()
{
    if (!fIsNative) {
        fIsNative = true;
        NativeWidgets().insert(this);
        setAutoFillBackground(false);
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
    const QWidget* around = nativeParentWidget();
    if (windowHandle() && around)
        windowHandle()->setGeometry(QRect(mapTo(around, QPoint()), size()));
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
