// A view that draws itself, to assistive technology: a list with its rows, or a canvas with the
// lines of its text; a view that only holds others is neither.
#pragma once

#include "server/ViewWidget.h"

#include <QAccessibleWidget>
#include <QPointer>

#include <vector>

class ViewAccessible : public QAccessibleWidget {
public:
    explicit ViewAccessible(ViewWidget& widget);
    ~ViewAccessible() override;

    // Ends the interfaces beyond so many: what comes there later is something else.
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
