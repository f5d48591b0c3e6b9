#include "server/Accessibility.h"

#include "server/ViewAccessible.h"
#include "server/ViewWidget.h"
#include "server/WindowWidget.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QScrollBar>
#include <QTextEdit>

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

} // namespace

void ServeAccessibility()
{
    static Observer observer;
    QAccessible::installFactory(MakeInterface);
    QAccessible::installActivationObserver(&observer);
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
    if (const auto* line = qobject_cast<QLineEdit*>(&widget); line && line->parentWidget())
        widget.setAccessibleName(LineName(*line));
    else if (qobject_cast<QTextEdit*>(&widget) && widget.focusPolicy() != Qt::NoFocus)
        widget.setAccessibleName(SpokenName(widget));
    else if (const QWidget* scrolled = Before(widget);
             scrolled && qobject_cast<QScrollBar*>(&widget))
        widget.setAccessibleName(SpokenName(*scrolled));
}

void ClickWidget(QWidget& widget, const QPoint& where)
{
    const QPointF global = widget.mapToGlobal(QPointF(where));
    QMouseEvent press(QEvent::MouseButtonPress, where, global, Qt::LeftButton, Qt::LeftButton, {});
    QMouseEvent release(QEvent::MouseButtonRelease, where, global, Qt::LeftButton, {}, {});
    QCoreApplication::sendEvent(&widget, &press);
    QCoreApplication::sendEvent(&widget, &release);
}
