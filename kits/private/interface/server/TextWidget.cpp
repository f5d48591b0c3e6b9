#include "server/TextWidget.h"

#include "Message.h"
#include "server/Convert.h"
#include "server/ServerMessages.h"

#include <algorithm>
#include <cmath>
#include <QScrollBar>
#include <QTextBlock>

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
    setLineWrapMode(WidgetWidth);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
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
    const QString text = toPlainText();
    QTextCursor cursor = textCursor();
    cursor.setPosition(PlaceOfByte(text, start));
    cursor.setPosition(PlaceOfByte(text, std::max(start, finish)), QTextCursor::KeepAnchor);
    setTextCursor(cursor);
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
