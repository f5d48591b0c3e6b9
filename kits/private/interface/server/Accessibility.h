// The widgets to assistive technology, a screen reader for one. Names and roles come from what the
// program gives anyway: labels, tool tips, views' names, drawn text. On the display server only,
// but for IsRead().
#pragma once

class QPoint;
class QString;
class QWidget;

// After QApplication, once: from now on views, windows and links have their own interfaces.
void ServeAccessibility();

// Whether anybody reads: only then it pays to note what views draw. From any thread.
bool IsRead();

// The name of a widget that shows none: its tool tip or, without one, the view's name.
QString SpokenName(const QWidget& widget);

// Gives a field or scroll bar its name. To be called again when its label or tool tip has changed.
void NameForReaders(QWidget& widget);

// A click with the left button, as the user would do it.
void ClickWidget(QWidget& widget, const QPoint& where);
