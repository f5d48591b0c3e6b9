#include "server/Accessibility.h"

#include "server/Convert.h"
#include "server/ViewWidget.h"
#include "server/WindowWidget.h"

#include <QAccessibleWidget>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPointer>
#include <QScrollBar>
#include <QTextEdit>

#include <algorithm>
#include <atomic>

namespace {

std::atomic<bool> gIsRead = false;

// What views have drawn before somebody listened was not noted.
class Observer : public QAccessible::ActivationObserver {
public:
    void accessibilityActiveChanged(bool active) override
    {
        gIsRead = active;
        for (QWidget* widget : QApplication::allWidgets()) {
            if (active && dynamic_cast<ViewWidget*>(widget))
                widget->update();
        }
    }
};

// A click with the left button, as the user would do it.
void ClickWidget(QWidget& widget, const QPoint& where)
{
    // By events, so that the program gets what it gets when the user does it.
    const QPointF global = widget.mapToGlobal(QPointF(where));
    QMouseEvent press(QEvent::MouseButtonPress, where, global, Qt::LeftButton, Qt::LeftButton, {});
    QMouseEvent release(QEvent::MouseButtonRelease, where, global, Qt::LeftButton, {}, {});
    QCoreApplication::sendEvent(&widget, &press);
    QCoreApplication::sendEvent(&widget, &release);
}

// A view that draws itself: a list with its rows, or a canvas with the lines of its text; a view
// that only holds others is neither.
class ViewAccessible : public QAccessibleWidget {
public:
    explicit ViewAccessible(ViewWidget& widget);
    ~ViewAccessible() override;

    void KeepLines(size_t count);

    QAccessible::Role role() const override;
    QString text(QAccessible::Text kind) const override;
    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    QAccessibleInterface* childAt(int x, int y) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;
    QAccessibleInterface* focusChild() const override;

private:
    ViewWidget& View() const;

    mutable std::vector<QAccessible::Id> fLines; // the interfaces made so far, by index
};

// One of its rows or lines. Pressing it is a click on it.
class LineAccessible : public QAccessibleInterface, public QAccessibleActionInterface {
public:
    LineAccessible(ViewWidget& view, int index) : fView(&view), fIndex(index) { }

    int Index() const { return fIndex; }
    bool isValid() const override; // false once the view has fewer
    QObject* object() const override { return nullptr; }
    QAccessibleInterface* parent() const override;
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QString text(QAccessible::Text kind) const override;
    void setText(QAccessible::Text, const QString&) override { }
    QRect rect() const override;
    QAccessible::Role role() const override;
    QAccessible::State state() const override;
    void* interface_cast(QAccessible::InterfaceType type) override;
    QStringList actionNames() const override;
    void doAction(const QString& name) override;
    QStringList keyBindingsForAction(const QString&) const override { return {}; }

private:
    bool IsBeside() const;

    const QPointer<ViewWidget> fView;
    const int fIndex;
};

ViewAccessible::ViewAccessible(ViewWidget& widget) : QAccessibleWidget(&widget) { }

ViewAccessible::~ViewAccessible()
{
    // Qt keeps what was registered until it is told.
    KeepLines(0);
}

void ViewAccessible::KeepLines(size_t count)
{
    for (; fLines.size() > count; fLines.pop_back())
        QAccessible::deleteAccessibleInterface(fLines.back());
}

ViewWidget& ViewAccessible::View() const
{
    return *static_cast<ViewWidget*>(widget());
}

QAccessible::Role ViewAccessible::role() const
{
    if (View().IsList())
        return QAccessible::List;
    const bool isCanvas = View().IsNative() || View().focusPolicy() != Qt::NoFocus;
    return isCanvas ? QAccessible::Canvas : QAccessible::Client;
}

QString ViewAccessible::text(QAccessible::Text kind) const
{
    if (role() == QAccessible::Client || kind > QAccessible::Description)
        return QAccessibleWidget::text(kind);
    return kind == QAccessible::Name ? SpokenName(View()) : QString();
}

int ViewAccessible::childCount() const
{
    const auto lines = static_cast<int>(View().Lines().size());
    return lines > 0 ? lines : QAccessibleWidget::childCount();
}

QAccessibleInterface* ViewAccessible::child(int index) const
{
    if (View().Lines().empty())
        return QAccessibleWidget::child(index);
    if (index < 0 || index >= childCount())
        return nullptr;
    // Made when they are asked for: most of a list's thousands of rows are never read.
    for (auto next = static_cast<int>(fLines.size()); next <= index; next++) {
        fLines.push_back(
            QAccessible::registerAccessibleInterface(new LineAccessible(View(), next)));
    }
    return QAccessible::accessibleInterface(fLines[static_cast<size_t>(index)]);
}

QAccessibleInterface* ViewAccessible::childAt(int x, int y) const
{
    for (int i = 0; i < childCount(); i++) {
        if (child(i)->rect().contains(x, y))
            return child(i);
    }
    return nullptr;
}

int ViewAccessible::indexOfChild(const QAccessibleInterface* child) const
{
    const auto* line = dynamic_cast<const LineAccessible*>(child);
    return line ? line->Index() : QAccessibleWidget::indexOfChild(child);
}

QAccessibleInterface* ViewAccessible::focusChild() const
{
    for (int i = 0; i < childCount(); i++) {
        if (child(i)->state().focused)
            return child(i);
    }
    return QAccessibleWidget::focusChild();
}

bool LineAccessible::isValid() const
{
    return fView && fIndex < static_cast<int>(fView->Lines().size());
}

QAccessibleInterface* LineAccessible::parent() const
{
    return QAccessible::queryAccessibleInterface(fView);
}

QString LineAccessible::text(QAccessible::Text kind) const
{
    if (kind != QAccessible::Name || !isValid())
        return QString();
    return QString::fromStdString(fView->Lines()[static_cast<size_t>(fIndex)].text);
}

// What is drawn beside the view is to be heard only: it has the view's place.
bool LineAccessible::IsBeside() const
{
    const DrawnLine& line = fView->Lines()[static_cast<size_t>(fIndex)];
    return !line.isRow && !ToQRect(line.frame).intersects(fView->rect());
}

QRect LineAccessible::rect() const
{
    if (!isValid())
        return QRect();
    // Of a row half in sight a reader frames that half; one out of sight keeps its place there.
    const QRect inView = ToQRect(fView->Lines()[static_cast<size_t>(fIndex)].frame);
    const QRect shown = inView & fView->rect();
    const QRect place = IsBeside() ? fView->rect() : shown.isEmpty() ? inView : shown;
    return QRect(fView->mapToGlobal(place.topLeft()), place.size());
}

QAccessible::Role LineAccessible::role() const
{
    const bool isRow = isValid() && fView->Lines()[static_cast<size_t>(fIndex)].isRow;
    return isRow ? QAccessible::ListItem : QAccessible::StaticText;
}

QAccessible::State LineAccessible::state() const
{
    QAccessible::State state;
    if (!isValid()) {
        state.invalid = true;
        return state;
    }
    const DrawnLine& line = fView->Lines()[static_cast<size_t>(fIndex)];
    state.invisible = !fView->isVisible();
    state.offscreen = line.isRow && !ToQRect(line.frame).intersects(fView->rect());
    state.disabled = !line.isEnabled;
    state.selectable = state.focusable = line.isRow && line.isEnabled;
    state.selected = line.isSelected;
    state.focused = line.isCurrent && fView->hasFocus();
    return state;
}

void* LineAccessible::interface_cast(QAccessible::InterfaceType type)
{
    return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this)
                                                : nullptr;
}

QStringList LineAccessible::actionNames() const
{
    return isValid() && !IsBeside() ? QStringList(pressAction()) : QStringList();
}

void LineAccessible::doAction(const QString& name)
{
    if (actionNames().contains(name))
        ClickWidget(*fView, fView->mapFromGlobal(rect().center()));
}

class WindowAccessible : public QAccessibleWidget {
public:
    explicit WindowAccessible(QWidget& window) : QAccessibleWidget(&window) { }

    QAccessible::Role role() const override
    {
        return widget()->isModal() ? QAccessible::Dialog : QAccessible::Window;
    }
    QString text(QAccessible::Text kind) const override
    {
        if (kind == QAccessible::Name && widget()->windowTitle().isEmpty())
            return QGuiApplication::applicationDisplayName();
        // What a dialog says is heard as soon as it appears, not only after a walk through it.
        const auto* words = widget()->isModal() ? widget()->findChild<QTextEdit*>() : nullptr;
        return kind == QAccessible::Description && words ? words->toPlainText()
                                                         : QAccessibleWidget::text(kind);
    }
};

// A line of text that the keyboard reaches is one to press.
class LinkAccessible : public QAccessibleWidget {
public:
    explicit LinkAccessible(QLabel& label) : QAccessibleWidget(&label, QAccessible::Link) { }

    QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Name ? static_cast<QLabel*>(widget())->text()
                                         : QAccessibleWidget::text(kind);
    }
    QStringList actionNames() const override
    {
        return QStringList(pressAction()) + QAccessibleWidget::actionNames();
    }
    void doAction(const QString& name) override
    {
        if (name == pressAction())
            ClickWidget(*widget(), widget()->rect().center());
        else
            QAccessibleWidget::doAction(name);
    }
};

QAccessibleInterface* MakeInterface(const QString& type, QObject* object)
{
    // Null leaves the widget to Qt, which knows its own.
    if (auto* view = dynamic_cast<ViewWidget*>(object))
        return new ViewAccessible(*view);
    if (auto* window = dynamic_cast<WindowWidget*>(object))
        return new WindowAccessible(*window);
    auto* label = qobject_cast<QLabel*>(object);
    if (label && label->focusPolicy() != Qt::NoFocus)
        return new LinkAccessible(*label);
    if (type == "QFrame") // else it would be said to be a window
        return new QAccessibleWidget(static_cast<QWidget*>(object));
    return nullptr;
}

// In the order of the tree, in which a label comes just before what it is for.
QWidget* Before(const QWidget& widget)
{
    QWidget* before = nullptr;
    for (QObject* child : widget.parent()->children()) {
        if (child == &widget)
            return before;
        before = child->isWidgetType() ? static_cast<QWidget*>(child) : before;
    }
    return nullptr;
}

QString LabelOf(QWidget* widget)
{
    const auto* label = qobject_cast<QLabel*>(widget);
    return label ? label->text() : QString();
}

// The control around the line has the label; or else what stands before that.
QString LineName(const QLineEdit& line)
{
    QWidget& control = *line.parentWidget();
    for (const QString& label : { LabelOf(&control), LabelOf(Before(control)) }) {
        if (!label.isEmpty())
            return label;
    }
    return SpokenName(control);
}

// By what both of its kind stand behind.
void NameScrollBar(QWidget& bar)
{
    QWidget* scrolled = Before(bar);
    while (qobject_cast<QScrollBar*>(scrolled))
        scrolled = Before(*scrolled);
    if (scrolled)
        bar.setAccessibleName(SpokenName(*scrolled));
}

} // namespace

void ServeAccessibility()
{
    static Observer sObserver;
    QAccessible::installFactory(MakeInterface);
    QAccessible::installActivationObserver(&sObserver);
    gIsRead = QAccessible::isActive();
}

bool IsRead()
{
    return gIsRead;
}

QString SpokenName(const QWidget& widget)
{
    if (!widget.toolTip().isEmpty())
        return widget.toolTip();
    return widget.objectName().replace('_', ' ').trimmed();
}

void NameForReaders(QWidget& widget)
{
    if (auto* part = widget.findChild<QLineEdit*>(QString(), Qt::FindDirectChildrenOnly))
        NameForReaders(*part);
    if (const auto* line = qobject_cast<QLineEdit*>(&widget); line && line->parentWidget())
        widget.setAccessibleName(LineName(*line));
    else if (qobject_cast<QTextEdit*>(&widget) && widget.focusPolicy() != Qt::NoFocus)
        widget.setAccessibleName(SpokenName(widget));
    else if (qobject_cast<QScrollBar*>(&widget))
        NameScrollBar(widget);
}

void KeepLines(QWidget& view, size_t count)
{
    if (auto* lines = dynamic_cast<ViewAccessible*>(QAccessible::queryAccessibleInterface(&view)))
        lines->KeepLines(count);
}

// --- Text

namespace {

thread_local DrawnText* tNoting = nullptr;

void Append(DrawnLine& line, const std::string& piece)
{
    line.text += line.text.empty() || piece.empty() ? piece : ", " + piece;
}

} // namespace

DrawnText::DrawnText(BPoint origin) : fOrigin(origin)
{
    tNoting = this;
}

DrawnText::~DrawnText()
{
    tNoting = nullptr;
}

DrawnText* DrawnText::Noting()
{
    return tNoting;
}

void DrawnText::BeginRow(DrawnLine row)
{
    row.isRow = true;
    row.frame.OffsetBy(-fOrigin.x, -fOrigin.y);
    fPieces.push_back(std::move(row));
}

void DrawnText::Add(const char* string, BRect frame)
{
    if (!fPieces.empty() && fPieces.back().isRow)
        return Append(fPieces.back(), string);
    fPieces.push_back({ string, frame.OffsetByCopy(-fOrigin.x, -fOrigin.y) });
}

std::vector<DrawnLine> DrawnText::Lines() const
{
    const auto isFirst = [this](const DrawnLine& piece) {
        return piece.isRow || piece.frame.bottom == fPieces.front().frame.bottom;
    };
    if (std::all_of(fPieces.begin(), fPieces.end(), isFirst))
        return fPieces;
    std::vector<DrawnLine> lines;
    for (const DrawnLine& piece : fPieces) {
        const auto line = std::find_if(lines.begin(), lines.end(),
            [&](const DrawnLine& known) { return known.frame.bottom == piece.frame.bottom; });
        if (line == lines.end()) {
            lines.push_back(piece);
        } else {
            Append(*line, piece.text);
            line->frame = line->frame | piece.frame;
        }
    }
    return lines;
}
