#include "server/LineWidget.h"

#include "Message.h"
#include "server/ServerMessages.h"

#include <algorithm>
#include <cmath>
#include <QCoreApplication>
#include <QKeyEvent>
#include <utility>

LineWidget::LineWidget(std::shared_ptr<ViewLink> link, QWidget* parent)
    : QLineEdit(parent), fLink(std::move(link))
{
    connect(this, &QLineEdit::textChanged, this, [this] { Changed(); });
}

void LineWidget::Changed()
{
    if (fIsQuiet)
        return;
    CutInsertion();
    fVersion++;
    fIsTouched = true;
    Report(false);
}

// What the user puts in beyond the limit falls off at its own end, not at that of the text.
void LineWidget::CutInsertion()
{
    const bool wasQuiet = std::exchange(fIsQuiet, true);
    while (!fLimit.Allows(text()))
        cursorPosition() > 0 ? backspace() : del();
    fIsQuiet = wasQuiet;
}

void LineWidget::Report(bool isDone)
{
    BMessage report(kMsgWidgetChanged);
    report.AddString("text", text().toUtf8().constData());
    report.AddInt32("version", fVersion);
    if (isDone)
        report.AddBool("done", true);
    fLink->Post(report);
}

void LineWidget::Finish()
{
    if (std::exchange(fIsTouched, false))
        Report(true);
}

bool LineWidget::event(QEvent* event)
{
    if (fHolds > 0 && event->isInputEvent() && event->type() != QEvent::ShortcutOverride) {
        fWaiting.emplace_back(event->clone());
        return true;
    }
    return QLineEdit::event(event);
}

// One of the keys may move the focus: the others are for the widget that then has it.
void LineWidget::Release()
{
    if (--fHolds > 0)
        return;
    for (const auto& event : std::exchange(fWaiting, {})) {
        const bool isKey = dynamic_cast<const QKeyEvent*>(event.get()) != nullptr;
        QWidget* focused = window()->focusWidget();
        QCoreApplication::sendEvent(isKey && focused ? focused : this, event.get());
    }
}

// Enter means that this text is done, not the window.
void LineWidget::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter)
        return QLineEdit::keyPressEvent(event);
    Finish();
    selectAll();
    event->accept();
}

void LineWidget::focusOutEvent(QFocusEvent* event)
{
    QLineEdit::focusOutEvent(event);
    if (event->reason() == Qt::PopupFocusReason)
        return;
    Finish();
    home(false); // a name is known by its beginning
}

void LineWidget::SetContents(const QString& contents)
{
    const bool wasQuiet = std::exchange(fIsQuiet, true);
    setText(fLimit.Cut(contents));
    setCursorPosition(0);
    fIsQuiet = wasQuiet;
    fVersion++;
}

void LineWidget::InsertText(const QString& inserted)
{
    const bool wasQuiet = std::exchange(fIsQuiet, true);
    insert(inserted);
    CutInsertion();
    fIsQuiet = wasQuiet;
    fVersion++;
}

// The caret stands at the beginning, so that this is in sight.
void LineWidget::SelectBytes(int32 start, int32 finish)
{
    const int first = PlaceOfByte(text(), start);
    const int last = PlaceOfByte(text(), std::max(start, finish));
    setSelection(last, first - last);
}

void LineWidget::GetSelectedBytes(int32& start, int32& finish) const
{
    const int first = hasSelectedText() ? selectionStart() : cursorPosition();
    const int last = hasSelectedText() ? selectionEnd() : first;
    start = ByteOfPlace(text(), first);
    finish = ByteOfPlace(text(), last);
}

void LineWidget::SetLimit(const TextLimit& limit)
{
    fLimit = limit;
    if (!limit.Allows(text()))
        SetContents(text());
}

void LineWidget::SetManners(bool editable, bool selectable, bool)
{
    setReadOnly(!editable);
    setFocusPolicy(editable || selectable ? Qt::StrongFocus : Qt::NoFocus);
}

// A line has all of its widget.
void LineWidget::SetTextRect(BRect, QSize) { }

int LineWidget::TextHeight() const
{
    return fontMetrics().height();
}

// A line shows the place of its caret.
void LineWidget::Scroll(BPoint where)
{
    const QString shown = text();
    int place = 0;
    while (place < shown.size()
        && fontMetrics().horizontalAdvance(shown.left(place)) < std::lround(where.x))
        place++;
    setCursorPosition(static_cast<int>(shown.size()));
    setCursorPosition(place);
}
