// What a BTextView asks of its widget, which shows one line or several.
#pragma once

#include "Rect.h"
#include "server/ViewPeer.h"

#include <QLineEdit>
#include <QMenu>
#include <QPointer>
#include <QSize>
#include <QString>
#include <QTextEdit>

#include <memory>
#include <vector>

// How much a text may hold, at first anything.
struct TextLimit {
    int32 bytes = INT32_MAX;
    int32 characters = INT32_MAX;

    bool Allows(const QString& text) const;
    // The longest beginning of text, of whole letters, that it allows.
    QString Cut(const QString& text) const;
};

class TextPeer {
public:
    virtual ~TextPeer() = default;

    // Counts the changes of a text that reports each of the user's; of others it is 0. The view
    // compares it with the last one it was told.
    virtual int32 Version() const { return 0; }
    virtual QString Contents() const = 0;
    virtual void SetContents(const QString& text) = 0; // cut to the limit; not reported
    virtual void InsertText(const QString& text) = 0; // in place of the selection
    virtual void SelectBytes(int32 start, int32 finish) = 0; // cut to the text
    virtual void GetSelectedBytes(int32& start, int32& finish) const = 0;
    virtual void SetBytesFont(int32 start, int32 finish, const QFont& font) = 0; // cut to the text
    // The user's keys and clicks wait while changes of the program are under way. Both count.
    virtual void Hold() { }
    virtual void Release() { }
    virtual void SetLimit(const TextLimit& limit) = 0; // cuts the text
    virtual void SetManners(bool editable, bool selectable) = 0;
    virtual void LeaveEnter() { } // to the window; one line does so anyway
    virtual void SetTextRect(BRect rect, QSize view) = 0; // the room around rect stays free
    virtual int TextHeight() const = 0;
    virtual void Scroll(BPoint where) = 0; // not reported
};

// Between the two ways to count a text's letters. Both are cut to the text.
int PlaceOfByte(const QString& text, int32 byteOffset);
int32 ByteOfPlace(const QString& text, int place);

// The widget of a BTextView: plain text, whose scrolling it reports instead of showing bars.
class TextWidget : public QTextEdit, public TextPeer {
public:
    TextWidget(std::shared_ptr<ViewLink> link, QWidget* parent);

    QString Contents() const override { return toPlainText(); }
    void SetContents(const QString& text) override;
    void InsertText(const QString& text) override { insertPlainText(text); }
    void SelectBytes(int32 start, int32 finish) override;
    void GetSelectedBytes(int32& start, int32& finish) const override;
    void SetBytesFont(int32 start, int32 finish, const QFont& font) override;
    void SetLimit(const TextLimit& limit) override;
    void SetManners(bool editable, bool selectable) override;
    void LeaveEnter() override { fLeavesEnter = true; }
    void SetTextRect(BRect rect, QSize view) override;
    int TextHeight() const override;
    void Scroll(BPoint where) override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void CutInsertion();
    void Report();
    QTextCursor CursorOver(int32 start, int32 finish) const;

    const std::shared_ptr<ViewLink> fLink;
    TextLimit fLimit;
    bool fIsQuiet = false;
    bool fHasFonts = false;
    bool fLeavesEnter = false;
};

// The widget of the one line that a BTextControl edits. It reports each change the user makes, with
// "text" (string), "version" (int32) and, unless something was only deleted, "inserted" (bool), and
// Enter and the loss of the keyboard after such changes, with "done" (bool) beside the first two.
// Enter is then also sent as a key. All of the text is selected when the keyboard comes here.
class LineWidget : public QLineEdit, public TextPeer {
public:
    LineWidget(std::shared_ptr<ViewLink> link, QWidget* parent);

    int32 Version() const override { return fVersion; }
    QString Contents() const override { return text(); }
    void SetContents(const QString& text) override;
    void InsertText(const QString& text) override;
    void SelectBytes(int32 start, int32 finish) override;
    void GetSelectedBytes(int32& start, int32& finish) const override;
    void SetBytesFont(int32, int32, const QFont&) override { } // a line has but one
    void Hold() override;
    void Release() override;
    void SetLimit(const TextLimit& limit) override;
    void SetManners(bool editable, bool selectable) override;
    void SetTextRect(BRect rect, QSize view) override;
    int TextHeight() const override;
    void Scroll(BPoint where) override;
    void AddToMenu(QMenu* more) { fMore = more; } // its actions, as they are when the menu opens

protected:
    bool eventFilter(QObject* object, QEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void Changed();
    void CutInsertion();
    void Report(bool isDone, bool isInserted);
    void Finish();
    void SelectWhole();

    const std::shared_ptr<ViewLink> fLink;
    QPointer<QMenu> fMore;
    TextLimit fLimit;
    int32 fVersion = 0;
    int fStart = 0; // of the selection, or the caret, before the change that is being reported
    int32 fHolds = 0;
    std::vector<std::unique_ptr<QEvent>> fWaiting; // came while held
    bool fIsQuiet = false; // the program's change is under way
    bool fIsTouched = false; // by the user, since the last report of being done
    bool fIsEntered = false; // by a click that goes on
    bool fIsLeftOpen = false; // without the keyboard, for a while
};
