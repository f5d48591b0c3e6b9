#include "ScreenDriver.h"

#include "kits/interface/server/DisplayServer.h"

#include <QAbstractButton>
#include <QApplication>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QScreen>
#include <QTextEdit>
#include <QWindow>

#include <cstdio>
#include <cstdlib>
#include <thread>
#include <xcb/xcb.h>

namespace screen {
namespace {

std::string TextOf(QWidget* widget)
{
    if (auto* button = qobject_cast<QAbstractButton*>(widget))
        return button->text().replace("&&", "&").toStdString();
    if (auto* line = widget->findChild<QLineEdit*>("_input_", Qt::FindDirectChildrenOnly))
        return line->text().toStdString();
    if (auto* label = qobject_cast<QLabel*>(widget))
        return label->text().toStdString();
    if (auto* box = qobject_cast<QGroupBox*>(widget))
        return box->title().replace("&&", "&").toStdString();
    if (auto* line = qobject_cast<QLineEdit*>(widget))
        return line->text().toStdString();
    if (auto* edit = qobject_cast<QTextEdit*>(widget))
        return edit->toPlainText().toStdString();
    return widget->windowTitle().toStdString();
}

BRect OnScreen(QWidget* widget, const QRect& rect)
{
    const QPoint leftTop = widget->mapToGlobal(rect.topLeft());
    return BRect(
        leftTop.x(), leftTop.y(), leftTop.x() + rect.width() - 1, leftTop.y() + rect.height() - 1);
}

Widget Describe(QWidget* widget)
{
    Widget result;
    result.exists = true;
    const QWindow* window = widget->window()->windowHandle();
    result.exposed = window && window->isExposed();
    result.enabled = widget->isEnabled();
    result.text = TextOf(widget);
    result.frame = OnScreen(widget, widget->rect());
    return result;
}

template <typename MenuWidget>
Widget FindAction(MenuWidget* menu, const QString& label)
{
    for (QAction* action : menu->actions()) {
        if (action->objectName() != label)
            continue;
        Widget result;
        result.exists = true;
        const QWindow* window = menu->window()->windowHandle();
        result.exposed = window && window->isExposed();
        result.enabled = action->isEnabled();
        result.text = action->text().toStdString();
        result.frame = OnScreen(menu, menu->actionGeometry(action));
        return result;
    }
    return {};
}

BPoint MiddleOf(BRect frame)
{
    return BPoint((frame.left + frame.right) / 2, (frame.top + frame.bottom) / 2);
}

std::string Place(BPoint where)
{
    return std::to_string(static_cast<int>(where.x)) + " "
        + std::to_string(static_cast<int>(where.y));
}

void Xdotool(const std::string& arguments)
{
    const std::string command = "xdotool " + arguments;
    if (system(command.c_str()) != 0)
        fprintf(stderr, "Error running <%s>\n", command.c_str());
}

std::string Quoted(const std::string& text)
{
    std::string quoted = "'";
    for (char letter : text)
        quoted += letter == '\'' ? std::string("'\\''") : std::string(1, letter);
    return quoted + "'";
}

// Clicks at what find finds, once it stays where it is: the window manager places new windows.
bool ClickWhenSettled(const std::function<Widget()>& find, int button)
{
    BRect before;
    const bool isThere = WaitFor([&] {
        const Widget widget = find();
        const bool isSettled = widget.exposed && widget.frame == before;
        before = widget.frame;
        if (!isSettled)
            std::this_thread::sleep_for(std::chrono::milliseconds(40));
        return isSettled;
    });
    if (isThere)
        ClickAt(MiddleOf(before), button);
    return isThere;
}

} // namespace

bool IsThere()
{
    xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
    const bool isThere = xcb_connection_has_error(connection) == 0;
    xcb_disconnect(connection);
    return isThere;
}

Widget Find(const std::string& name, const std::string& window)
{
    return display::Call([&] {
        const QString wanted = QString::fromStdString(name);
        const QString title = QString::fromStdString(window);
        for (QWidget* widget : QApplication::allWidgets()) {
            const bool isThere = widget->objectName() == wanted && widget->isVisible();
            if (isThere && (title.isEmpty() || widget->window()->windowTitle() == title))
                return Describe(widget);
        }
        return Widget {};
    });
}

bool IsActive(const std::string& window)
{
    return display::Call([&] {
        const QWidget* active = QApplication::activeWindow();
        return active && active->windowTitle() == QString::fromStdString(window);
    });
}

Widget FindMenuItem(const std::string& label)
{
    return display::Call([&] {
        const QString wanted = QString::fromStdString(label);
        Widget found;
        for (QWidget* widget : QApplication::allWidgets()) {
            if (!widget->isVisible() || found.exists)
                continue;
            if (auto* menu = qobject_cast<QMenu*>(widget))
                found = FindAction(menu, wanted);
            else if (auto* bar = qobject_cast<QMenuBar*>(widget))
                found = FindAction(bar, wanted);
        }
        return found;
    });
}

bool Click(const std::string& name, const std::string& window, int button)
{
    return ClickWhenSettled([&] { return Find(name, window); }, button);
}

void ClickAt(BPoint where, int button)
{
    Xdotool("mousemove " + Place(where) + " click " + std::to_string(button));
}

void DoubleClickAt(BPoint where)
{
    Xdotool("mousemove " + Place(where) + " click --repeat 2 --delay 20 1");
}

void MoveTo(BPoint where)
{
    Xdotool("mousemove " + Place(where));
}

bool ClickMenu(const std::vector<std::string>& labels)
{
    for (const std::string& label : labels) {
        if (!ClickWhenSettled([&] { return FindMenuItem(label); }, 1))
            return false;
    }
    return true;
}

void Type(const std::string& text)
{
    Xdotool("type --delay 5 -- " + Quoted(text));
}

void Key(const std::string& combination)
{
    Xdotool("key " + Quoted(combination));
}

rgb_color PixelAt(BPoint where)
{
    return display::Call([where] {
        const QPixmap shot = QGuiApplication::primaryScreen()->grabWindow(
            0, static_cast<int>(where.x), static_cast<int>(where.y), 1, 1);
        const QColor color = shot.toImage().pixelColor(0, 0);
        return rgb_color { static_cast<uint8>(color.red()), static_cast<uint8>(color.green()),
            static_cast<uint8>(color.blue()), 255 };
    });
}

} // namespace screen
