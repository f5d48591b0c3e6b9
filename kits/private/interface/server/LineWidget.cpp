#include "server/LineWidget.h"

#include "Message.h"
#include "server/InputMessages.h"
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
    // After a change these come behind its textChanged().
    const auto keepStart = [this] {
        fStart = hasSelectedText() ? selectionStart() : cursorPosition();
    };
    connect(this, &QLineEdit::selectionChanged, this, keepStart);
    connect(this, &QLineEdit::cursorPositionChanged, this, keepStart);
}

void LineWidget::Changed()
{
    if (fIsQuiet)
        return;
    const bool isInserted = cursorPosition() > fStart;
    CutInsertion();
    fVersion++;
    fIsTouched = true;
    Report(false, isInserted);
}

// What the user puts in beyond the limit falls off at its own end, not at that of the text.
void LineWidget::CutInsertion()
{
    const bool wasQuiet = std::exchange(fIsQuiet, true);
    while (!fLimit.Allows(text()))
        cursorPosition() > 0 ? backspace() : del();
    fIsQuiet = wasQuiet;
}

void LineWidget::Report(bool isDone, bool isInserted)
{
    BMessage report(kMsgWidgetChanged);
    report.AddString("text", text().toUtf8().constData());
    report.AddInt32("version", fVersion);
    if (isDone)
        report.AddBool("done", true);
    if (isInserted)
        report.AddBool("inserted", true);
    fLink->Post(report);
}

void LineWidget::Finish()
{
    if (std::exchange(fIsTouched, false))
        Report(true, false);
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

// Enter means that this text is done, not the window. What is typed behind it waits for the
// program, which may move the focus.
void LineWidget::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter)
        return QLineEdit::keyPressEvent(event);
    Finish();
    SelectWhole();
    event->accept();
    Hold();
    fLink->Post(KeyMessage(*event));
    BMessage release(kMsgWidgetChanged);
    release.AddBool("release", true);
    fLink->Post(release);
}

// The caret stands at the beginning: a name is known by that.
void LineWidget::SelectWhole()
{
    const auto length = static_cast<int>(text().size());
    setSelection(length, -length);
}

void LineWidget::focusInEvent(QFocusEvent* event)
{
    QLineEdit::focusInEvent(event);
    const bool isBack =
        event->reason() == Qt::PopupFocusReason || event->reason() == Qt::ActiveWindowFocusReason;
    if (std::exchange(fIsLeftOpen, false) && isBack)
        return;
    SelectWhole();
    fIsEntered = event->reason() == Qt::MouseFocusReason;
}

// The click that brings the focus selects the text as the keys do, unless it is a drag over a part.
void LineWidget::mouseReleaseEvent(QMouseEvent* event)
{
    QLineEdit::mouseReleaseEvent(event);
    if (std::exchange(fIsEntered, false) && !hasSelectedText())
        SelectWhole();
}

// A menu or another window takes the focus away for a while only.
void LineWidget::focusOutEvent(QFocusEvent* event)
{
    QLineEdit::focusOutEvent(event);
    fIsLeftOpen =
        event->reason() == Qt::PopupFocusReason || event->reason() == Qt::ActiveWindowFocusReason;
    if (event->reason() == Qt::PopupFocusReason)
        return;
    Finish();
    if (!fIsLeftOpen)
        home(false);
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

void LineWidget::SetManners(bool editable, bool selectable)
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
