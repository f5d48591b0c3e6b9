#include "server/TextWidgets.h"

#include "Message.h"
#include "server/Convert.h"
#include "server/ViewPeer.h"

#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QList>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextBoundaryFinder>

#include <algorithm>
#include <cmath>
#include <utility>

int PlaceOfByte(const QString& text, int32 byteOffset)
{
    const QByteArray bytes = text.toUtf8();
    const auto count = std::clamp<qsizetype>(byteOffset, 0, bytes.size());
    return static_cast<int>(QString::fromUtf8(bytes.constData(), count).size());
}

int32 ByteOfPlace(const QString& text, int place)
{
    return static_cast<int32>(text.left(place).toUtf8().size());
}

bool TextLimit::Allows(const QString& text) const
{
    return text.toUtf8().size() <= bytes && text.toUcs4().size() <= characters;
}

QString TextLimit::Cut(const QString& text) const
{
    if (Allows(text))
        return text;
    QTextBoundaryFinder letters(QTextBoundaryFinder::Grapheme, text);
    qsizetype end = 0;
    for (qsizetype next = letters.toNextBoundary(); next > 0 && Allows(text.left(next));
         next = letters.toNextBoundary())
        end = next;
    return text.left(end);
}

// --- Several lines

TextWidget::TextWidget(std::shared_ptr<ViewLink> link, QWidget* parent)
    : QTextEdit(parent), fLink(std::move(link))
{
    setAcceptRichText(false);
    setFrameStyle(QFrame::NoFrame);
    setTabChangesFocus(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    document()->setDocumentMargin(0);
    connect(this, &QTextEdit::textChanged, this, [this] { CutInsertion(); });
    for (QScrollBar* bar : { horizontalScrollBar(), verticalScrollBar() }) {
        connect(bar, &QScrollBar::valueChanged, this, [this] { Report(); });
        connect(bar, &QScrollBar::rangeChanged, this, [this] { Report(); });
    }
}

void TextWidget::SetTextRect(BRect rect, QSize view)
{
    const QRect text = ToQRect(rect);
    setViewportMargins(std::max(text.left(), 0), std::max(text.top(), 0),
        std::max(view.width() - text.right() - 1, 0),
        std::max(view.height() - text.bottom() - 1, 0));
}

void TextWidget::SetManners(bool editable, bool selectable)
{
    Qt::TextInteractionFlags manners = Qt::NoTextInteraction;
    if (selectable)
        manners |= Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard;
    if (editable)
        manners |= Qt::TextEditorInteraction;
    setTextInteractionFlags(manners);
}

void TextWidget::Report()
{
    if (fIsQuiet)
        return;
    BMessage report(kMsgWidgetChanged);
    const auto add = [&report](const char* prefix, const QScrollBar& bar) {
        const std::string name(prefix);
        report.AddInt32((name + "value").c_str(), bar.value());
        report.AddInt32((name + "max").c_str(), bar.maximum());
        report.AddInt32((name + "page").c_str(), bar.pageStep());
        report.AddInt32((name + "step").c_str(), bar.singleStep());
    };
    add("h_", *horizontalScrollBar());
    add("v_", *verticalScrollBar());
    fLink->PostLatest(report);
}

// A text that needs no scrolling would never say so: the range it begins with does not change.
void TextWidget::resizeEvent(QResizeEvent* event)
{
    QTextEdit::resizeEvent(event);
    Report();
}

void TextWidget::Scroll(BPoint where)
{
    fIsQuiet = true;
    horizontalScrollBar()->setValue(static_cast<int>(std::lround(where.x)));
    verticalScrollBar()->setValue(static_cast<int>(std::lround(where.y)));
    fIsQuiet = false;
}

void TextWidget::SetContents(const QString& text)
{
    // Else all of the new text would look as the first letter of the old one.
    if (std::exchange(fHasFonts, false)) {
        clear();
        setCurrentCharFormat({});
    }
    setPlainText(fLimit.Cut(text));
}

// What is put in beyond the limit falls off at its own end. A deletion comes back here, with
// one letter less.
void TextWidget::CutInsertion()
{
    if (fLimit.Allows(toPlainText()))
        return;
    QTextCursor cursor = textCursor();
    cursor.atStart() ? cursor.deleteChar() : cursor.deletePreviousChar();
}

void TextWidget::SetLimit(const TextLimit& limit)
{
    fLimit = limit;
    if (!limit.Allows(toPlainText()))
        SetContents(toPlainText());
}

void TextWidget::SelectBytes(int32 start, int32 finish)
{
    setTextCursor(CursorOver(start, finish));
}

QTextCursor TextWidget::CursorOver(int32 start, int32 finish) const
{
    const QString text = toPlainText();
    QTextCursor cursor = textCursor();
    cursor.setPosition(PlaceOfByte(text, start));
    cursor.setPosition(PlaceOfByte(text, std::max(start, finish)), QTextCursor::KeepAnchor);
    return cursor;
}

void TextWidget::SetBytesFont(int32 start, int32 finish, const QFont& font)
{
    QTextCharFormat format;
    format.setFont(font);
    CursorOver(start, finish).mergeCharFormat(format);
    fHasFonts = true;
}

void TextWidget::keyPressEvent(QKeyEvent* event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isEnter && fLeavesEnter && !(event->modifiers() & Qt::ShiftModifier))
        fLink->Post(KeyMessage(*event));
    else
        QTextEdit::keyPressEvent(event);
}

void TextWidget::GetSelectedBytes(int32& start, int32& finish) const
{
    const QString text = toPlainText();
    start = ByteOfPlace(text, textCursor().selectionStart());
    finish = ByteOfPlace(text, textCursor().selectionEnd());
}

int TextWidget::TextHeight() const
{
    return static_cast<int>(std::ceil(document()->size().height()));
}

// --- One line

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

// What is done is no longer changed by a program that has heard only of what came before.
void LineWidget::Finish()
{
    if (!std::exchange(fIsTouched, false))
        return;
    fVersion++;
    Report(true, false);
}

void LineWidget::Hold()
{
    if (fHolds++ == 0)
        qApp->installEventFilter(this);
}

// Keys wait whichever widget of the window they come to: where the program moves the focus
// meanwhile, a later one would overtake those that came to this.
bool LineWidget::eventFilter(QObject* object, QEvent* event)
{
    const auto* widget = qobject_cast<const QWidget*>(object);
    const bool isKey = dynamic_cast<const QKeyEvent*>(event) != nullptr;
    const bool isHeld = event->isInputEvent() && event->type() != QEvent::ShortcutOverride
        && (widget == this || (isKey && widget && widget->window() == window()));
    if (isHeld)
        fWaiting.emplace_back(event->clone());
    return isHeld;
}

// One of the keys may move the focus: the others are for the widget that then has it.
void LineWidget::Release()
{
    if (--fHolds > 0)
        return;
    qApp->removeEventFilter(this);
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
void LineWidget::contextMenuEvent(QContextMenuEvent* event)
{
    QMenu* menu = createStandardContextMenu();
    menu->setAttribute(Qt::WA_DeleteOnClose);
    if (fMore) {
        menu->addSeparator();
        menu->addActions(fMore->actions());
    }
    menu->popup(event->globalPos());
}

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
