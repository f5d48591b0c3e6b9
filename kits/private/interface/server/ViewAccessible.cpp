#include "server/ViewAccessible.h"

#include "server/Accessibility.h"
#include "server/Convert.h"
#include "server/ViewWidget.h"

ViewAccessible::ViewAccessible(ViewWidget& widget) : QAccessibleWidget(&widget) { }

ViewAccessible::~ViewAccessible()
{
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

// --- Lines

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
