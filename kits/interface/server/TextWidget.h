// The widget of a BTextView: plain text, whose scrolling it reports instead of showing bars.
#pragma once

#include "Rect.h"
#include "server/ViewPeer.h"

#include <QTextEdit>

class TextWidget : public QTextEdit {
public:
    TextWidget(std::shared_ptr<ViewLink> link, QWidget* parent);

    // The room around rect stays free on all sides.
    void SetTextRect(BRect rect, QSize view);
    void SetManners(bool editable, bool selectable, bool wraps);
    void Scroll(BPoint where); // not reported
    int PlaceOf(int32 byteOffset) const; // in the document, cut to its length
    int32 ByteOffsetOf(int place) const;
    void SelectBytes(int32 start, int32 finish);
    int TextHeight() const;

private:
    void Report();

    const std::shared_ptr<ViewLink> fLink;
    bool fIsQuiet = false;
};
