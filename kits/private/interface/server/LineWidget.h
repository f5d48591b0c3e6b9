// The widget of the one line that a BTextControl edits. It reports each change the user makes, with
// "text" (string), "version" (int32) and, unless something was only deleted, "inserted" (bool), and
// Enter and the loss of the keyboard after such changes, with "done" (bool) beside the first two.
// Enter is then also sent as a key. All of the text is selected when the keyboard comes here.
#pragma once

#include "server/TextPeer.h"
#include "server/ViewPeer.h"

#include <QLineEdit>

#include <memory>
#include <vector>

class LineWidget : public QLineEdit, public TextPeer {
public:
    LineWidget(std::shared_ptr<ViewLink> link, QWidget* parent);

    int32 Version() const override { return fVersion; }
    QString Contents() const override { return text(); }
    void SetContents(const QString& text) override;
    void InsertText(const QString& text) override;
    void SelectBytes(int32 start, int32 finish) override;
    void GetSelectedBytes(int32& start, int32& finish) const override;
    void Hold() override { fHolds++; }
    void Release() override;
    void SetLimit(const TextLimit& limit) override;
    void SetManners(bool editable, bool selectable) override;
    void SetTextRect(BRect rect, QSize view) override;
    int TextHeight() const override;
    void Scroll(BPoint where) override;

protected:
    bool event(QEvent* event) override;
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
