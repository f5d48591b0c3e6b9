#include "ScreenDriver.h"

#include "server/DisplayServer.h"
#include "tests/support/Test.h"

#include <QAbstractSlider>
#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMetaEnum>
#include <QMimeData>
#include <QRegularExpression>
#include <QScreen>
#include <QVariant>
#include <QWindow>
#include <xcb/xcb.h>

namespace screen {
namespace {

// What it is called or holds, whatever kind of widget it is.
std::string TextOf(QWidget* widget)
{
    if (auto* line = widget->findChild<QLineEdit*>("_input_", Qt::FindDirectChildrenOnly))
        return line->text().toStdString();
    for (const char* property : { "plainText", "text", "title" }) {
        if (const QVariant text = widget->property(property); text.isValid())
            return text.toString().replace("&&", "&").toStdString();
    }
    return widget->windowTitle().toStdString();
}

// The part of a widget in rect.
Widget Describe(QWidget* widget, const QRect& rect, bool isEnabled, const std::string& text)
{
    const QWindow* window = widget->window()->windowHandle();
    const QPoint corner = widget->mapToGlobal(rect.topLeft());
    const BRect size(0, 0, rect.width() - 1, rect.height() - 1);
    return { true, window && window->isExposed(), widget->window()->isMinimized(), isEnabled,
        widget->window()->focusWidget() == widget, text,
        size.OffsetToCopy(corner.x(), corner.y()) };
}

// What is its own of a widget: its range, alignment, font, colours and tip.
QString Peculiarities(const QWidget& widget)
{
    QString text;
    const auto add = [&](bool is, const QString& word) { text += is ? " " + word : ""; };
    if (const auto* bar = qobject_cast<const QAbstractSlider*>(&widget))
        text = QString::asprintf(
            " to %d by %d and %d", bar->maximum(), bar->singleStep(), bar->pageStep());
    add(widget.cursor().shape() == Qt::PointingHandCursor, "link");
    add(widget.property("alignment").toInt() & Qt::AlignHCenter, "centred");
    const QFont font = widget.font();
    add(font.pixelSize() != QApplication::font().pixelSize(),
        QString::number(font.pixelSize()) + "px");
    add(font.bold(), "bold");
    const QPalette around =
        widget.isWindow() ? QApplication::palette() : widget.parentWidget()->palette();
    for (const auto role : { QPalette::WindowText, QPalette::Window }) {
        const QColor color = widget.palette().color(role);
        add(color != around.color(role), color.name());
    }
    add(!widget.toolTip().isEmpty(), "tip <" + widget.toolTip() + ">");
    return text;
}

// What a form's test asks for beside that.
QString Details(QAccessibleInterface& node)
{
    const QAccessible::State state = node.state();
    const auto* widget = qobject_cast<QWidget*>(node.object());
    const int margin = widget ? widget->contentsMargins().right() : 0;
    const auto* value = node.valueInterface();
    const QString range = !value
        ? ""
        : " of " + value->minimumValue().toString() + ".." + value->maximumValue().toString();
    return range + (state.focusable ? " focusable" : "") + (state.readOnly ? " read-only" : "")
        + (margin > 2 ? QString(" margin %1").arg(margin) : "")
        + (widget && widget->property("alignment").toInt() & Qt::AlignRight ? " right" : "")
        + (widget && widget->autoFillBackground() ? " filled" : "");
}

// Of a menu that is not open nothing has a place.
void Append(std::string& tree, QAccessibleInterface& node, const QWidget& window,
    const QString& indent, bool isMenu, bool inDetail)
{
    const QAccessible::State state = node.state();
    if (state.invisible && !isMenu)
        return;
    const auto* widget = qobject_cast<QWidget*>(node.object());
    const QRect frame = node.rect().translated(-window.mapToGlobal(QPoint()));
    QString line = QMetaEnum::fromType<QAccessible::Role>().valueToKey(node.role());
    line +=
        " " + (widget ? widget->objectName() : "") + " \"" + node.text(QAccessible::Name) + "\"";
    for (const auto kind : { QAccessible::Value, QAccessible::Accelerator })
        line += node.text(kind).isEmpty() ? "" : " = " + node.text(kind);
    if (!isMenu)
        line +=
            QString::asprintf(" %d %d %dx%d", frame.x(), frame.y(), frame.width(), frame.height());
    line += QString(state.disabled ? " disabled" : "") + (state.checked ? " checked" : "")
        + (state.selected ? " selected" : "") + (state.focused ? " focused" : "")
        + (state.defaultButton ? " default" : "") + (widget ? Peculiarities(*widget) : "")
        + (inDetail ? Details(node) : "");
    tree += (indent + line.replace("\n", "\\n")).toStdString() + "\n";
    for (int i = 0; i < node.childCount(); i++)
        Append(tree, *node.child(i), window, indent + "  ",
            isMenu || node.role() == QAccessible::MenuItem, inDetail);
}

QAccessibleInterface& AccessibleOf(QWidget& widget)
{
    QAccessible::setActive(true); // from now on views note what they draw
    return *QAccessible::queryAccessibleInterface(&widget);
}

template <typename MenuWidget>
Widget FindAction(MenuWidget* menu, const QString& label)
{
    for (QAction* action : menu->actions()) {
        if (action->objectName() == label)
            return Describe(menu, menu->actionGeometry(action), action->isEnabled(),
                action->text().toStdString());
    }
    return {};
}

// In pixels, of which a desktop with large windows has more than these have.
std::string Place(BPoint where)
{
    const double scale = display::Call([] { return qGuiApp->devicePixelRatio(); });
    return std::to_string(static_cast<int>(where.x * scale)) + " "
        + std::to_string(static_cast<int>(where.y * scale));
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

// The frame of what find finds, once it stays where it is: the window manager places new windows.
// Invalid where there is nothing.
BRect SettledFrame(const std::function<Widget()>& find)
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
    return isThere ? before : BRect();
}

bool ClickWhenSettled(const std::function<Widget()>& find, int button)
{
    const BRect frame = SettledFrame(find);
    if (frame.IsValid())
        ClickAt(BPoint((frame.left + frame.right) / 2, (frame.top + frame.bottom) / 2), button);
    return frame.IsValid();
}

// Nothing of a program that drives windows is tested without a display.
class Display : public testing::Environment {
    void SetUp() override
    {
        DataHome();
        xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
        const bool isThere = xcb_connection_has_error(connection) == 0;
        xcb_disconnect(connection);
        if (!isThere)
            GTEST_SKIP() << "[  SKIPPED ] no display"; // as CTest looks for it
    }
};
[[maybe_unused]] const testing::Environment* const gDisplay =
    testing::AddGlobalTestEnvironment(new Display);

std::string WindowOf(const std::string& title)
{
    return "search --sync --onlyvisible --name " + Quoted("^" + title + "$");
}

} // namespace

Widget Find(const std::string& name, const std::string& window)
{
    return display::Call([&] {
        const QString wanted = QString::fromStdString(name);
        const QString title = QString::fromStdString(window);
        for (QWidget* widget : QApplication::allWidgets()) {
            const bool isThere = widget->objectName() == wanted && widget->isVisible();
            if (isThere && (title.isEmpty() || widget->window()->windowTitle() == title))
                return Describe(widget, widget->rect(), widget->isEnabled(), TextOf(widget));
        }
        return Widget {};
    });
}

std::string Tree(const std::string& window, bool inDetail)
{
    return display::Call([&] {
        std::string tree;
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            if (widget->isVisible() && widget->windowTitle() == QString::fromStdString(window))
                Append(tree, AccessibleOf(*widget), *widget, "", false, inDetail);
        }
        return tree;
    });
}

testing::AssertionResult ShowsTree(const std::string& window, const std::string& name,
    const std::map<std::string, std::string>& with)
{
    MoveTo(BPoint(2, 760)); // where nothing has a tip for the pointer
    QString expected = QString::fromStdString(ReadFile(TARVEX_TESTS "/" + name + ".tree"));
    for (const auto& [word, text] : with)
        expected.replace(word.c_str(), QString::fromStdString(text).replace("\n", "\\n"));
    // Where everything is larger, and dark, places and colours are others.
    const QRegularExpression looks(" (#\\w{6}|-?\\d+ -?\\d+ \\d+x\\d+|to \\d+ by .*)");
    const bool isUsual = display::Call([] { return qGuiApp->devicePixelRatio() == 1; });
    QString shown;
    const auto isShown = [&] {
        shown = QString::fromStdString(Tree(window));
        return isUsual ? shown == expected : shown.remove(looks) == expected.remove(looks);
    };
    if (WaitFor(isShown))
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << shown.toStdString() << "is not " << name << ".tree";
}

testing::AssertionResult Shows(const std::string& name, const std::string& text)
{
    const bool isShown = WaitFor([&] { return Find(name).text == text; });
    return isShown ? testing::AssertionSuccess()
                   : testing::AssertionFailure() << Find(name).text << " is not\n"
                                                 << text;
}

std::string Lines(const std::string& view)
{
    return display::Call([&] {
        std::string lines;
        for (QWidget* widget : QApplication::allWidgets()) {
            const bool isWanted = widget->isVisible() && widget->objectName() == view.c_str();
            QAccessibleInterface* node = isWanted ? &AccessibleOf(*widget) : nullptr;
            for (int i = 0; node && i < node->childCount(); i++)
                lines += node->child(i)->text(QAccessible::Name).toStdString() + "\n";
        }
        return lines;
    });
}

bool IsActive(const std::string& window)
{
    return display::Call([&] {
        const QWidget* active = QApplication::activeWindow();
        return active && active->windowTitle() == QString::fromStdString(window);
    });
}

testing::AssertionResult BecomesActive(const std::string& window, double seconds)
{
    if (WaitFor([&] { return IsActive(window); }, seconds))
        return testing::AssertionSuccess();
    return testing::AssertionFailure() << display::Call([] {
        QString shown = "shown are";
        for (const QWidget* widget : QApplication::topLevelWidgets()) {
            if (widget->isVisible())
                shown += (widget->isActiveWindow() ? " the active <" : " <") + widget->windowTitle()
                    + ">";
        }
        return shown.toStdString();
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

BRect Settled(const std::string& name)
{
    return SettledFrame([&] { return Find(name); });
}

void MoveWindow(const std::string& title, BPoint corner)
{
    Xdotool(WindowOf(title) + " windowmove " + Place(corner));
}

void ResizeWindow(const std::string& title, BPoint size)
{
    Xdotool(WindowOf(title) + " windowsize " + Place(size));
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
    // This one is the window manager's, which may not have heard yet who has the keyboard.
    if (combination == "alt+F4")
        WaitFor([] {
            return system("[ \"$(xdotool getactivewindow)\" = \"$(xdotool getwindowfocus)\" ]")
                == 0;
        });
    Xdotool("key " + Quoted(combination));
}

std::string Copied(const char* type)
{
    return display::Call([type] {
        const QMimeData* data = QGuiApplication::clipboard()->mimeData();
        return data ? data->data(type).toStdString() : "";
    });
}

std::vector<uint32> PixelsIn(BRect rect)
{
    return display::Call([rect] {
        const int width = rect.IntegerWidth() + 1, height = rect.IntegerHeight() + 1;
        const QImage shot = QGuiApplication::primaryScreen()
                                ->grabWindow(0, static_cast<int>(rect.left),
                                    static_cast<int>(rect.top), width, height)
                                .toImage();
        std::vector<uint32> pixels;
        const auto scale = static_cast<int>(shot.devicePixelRatio());
        for (int i = 0; i < width * height; i++)
            pixels.push_back(shot.pixel(i % width * scale, i / width * scale) & 0xffffff);
        return pixels;
    });
}

int ContrastIn(BRect rect)
{
    const std::vector<uint32> pixels = PixelsIn(rect);
    const auto range = std::minmax_element(pixels.begin(), pixels.end(),
        [](uint32 one, uint32 other) { return qGray(one) < qGray(other); });
    return qGray(*range.second) - qGray(*range.first);
}

rgb_color PixelAt(BPoint where)
{
    const uint32 pixel = PixelsIn(BRect(where, where))[0];
    return { static_cast<uint8>(pixel >> 16), static_cast<uint8>(pixel >> 8),
        static_cast<uint8>(pixel) };
}

} // namespace screen
