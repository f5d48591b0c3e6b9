// Watches for windows that somebody else has taken off the X server, as tools can: what is drawn in
// them goes nowhere. Each is asked to quit. On the server's thread, as long as it lives.
#pragma once

#include <QAbstractNativeEventFilter>

class LostWindows : public QAbstractNativeEventFilter {
public:
    LostWindows();

    bool nativeEventFilter(const QByteArray& type, void* event, qintptr* result) override;
};
