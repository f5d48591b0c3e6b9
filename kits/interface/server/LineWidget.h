// The widget of the one line that a BTextControl edits. It reports each change the user makes, with
// "text" (string) and "version" (int32), and Enter and the loss of the keyboard after such changes,
// with "done" (bool) beside these two.
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
    void SetManners(bool editable, bool selectable, bool wraps) override;
    void SetTextRect(BRect rect, QSize view) override;
    int TextHeight() const override;
    void Scroll(BPoint where) override;

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void Changed();
    void CutInsertion();
    void Report(bool isDone);
    void Finish();

    const std::shared_ptr<ViewLink> fLink;
    TextLimit fLimit;
    int32 fVersion = 0;
    int32 fHolds = 0;
    std::vector<std::unique_ptr<QEvent>> fWaiting; // came while held
    bool fIsQuiet = false; // the program's change is under way
    bool fIsTouched = false; // by the user, since the last report of being done
};
