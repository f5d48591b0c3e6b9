#include "server/AlertWidgets.h"

#include "server/Convert.h"
#include "server/DisplayServer.h"
#include "server/ViewEvents.h"

#include <QApplication>
#include <QLabel>
#include <QScreen>
#include <QStyle>
#include <QTextDocument>

#include <algorithm>
#include <cmath>

namespace {

QStyle::StandardPixmap PixmapOf(alert_type type)
{
    switch (type) {
        case B_IDEA_ALERT: return QStyle::SP_MessageBoxQuestion;
        case B_WARNING_ALERT: return QStyle::SP_MessageBoxWarning;
        case B_STOP_ALERT: return QStyle::SP_MessageBoxCritical;
        default: return QStyle::SP_MessageBoxInformation;
    }
}

float Ceiling(qreal length)
{
    return static_cast<float>(std::ceil(length));
}

} // namespace

AlertIcon::AlertIcon(BPoint where, alert_type type)
    : BView(BRect(where.x, where.y, where.x + kSize - 1, where.y + kSize - 1), "icon",
        B_FOLLOW_LEFT | B_FOLLOW_TOP, 0),
      fType(type)
{
    SetViewColor(B_TRANSPARENT_COLOR);
}

void AlertIcon::MakeWidget(ViewPeer& peer)
{
    auto* label = new QLabel(peer.parent);
    const QIcon icon = QApplication::style()->standardIcon(PixmapOf(fType));
    label->setPixmap(icon.pixmap(static_cast<int>(kSize)));
    peer.widget = label;
    Equip(peer, Name(), ViewEvents::Kind::kView);
}

AlertText LayOutAlertText(const char* text, float minWidth)
{
    constexpr float kReadableWidth = 360;
    constexpr float kStep = 120;
    constexpr float kOtherHeight = 140; // title, margins and buttons
    const BRect room = AlertRoom();
    const float most = std::max(room.Width() * 3 / 4, kReadableWidth);
    const float tallest = std::max(room.Height() - kOtherHeight, 100.0f);
    return display::Call([=] {
        QTextDocument document(QString::fromUtf8(text));
        document.setDocumentMargin(0);
        const float natural = Ceiling(document.idealWidth()) + 1;
        float width = std::max(std::min(natural, kReadableWidth), minWidth);
        document.setTextWidth(width);
        while (document.size().height() > tallest && width < most) {
            width += kStep;
            document.setTextWidth(width);
        }
        const float height = Ceiling(document.size().height());
        return AlertText { width, height, std::min(height, tallest) };
    });
}

BRect AlertRoom()
{
    return display::Call(
        [] { return FromQRect(QGuiApplication::primaryScreen()->availableGeometry()); });
}
