// A menu's widget, and its items' actions by their ids. On the display server only.
#pragma once

#include "server/ViewPeer.h"

#include <QAction>
#include <QPushButton>

#include <map>

struct MenuPeer {
    std::shared_ptr<ViewLink> link; // made with the peer; the rest by the server
    QWidget* widget = nullptr; // QMenu or QMenuBar
    QPushButton* field = nullptr; // a BMenuField's, that opens it
    std::map<int32, QAction*> actions;
};
