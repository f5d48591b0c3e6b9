// The widget of a BTextView: plain text, whose scrolling it reports instead of showing bars.
#pragma once

#include "Rect.h"
#include "server/TextPeer.h"
#include "server/ViewPeer.h"

#include <QTextEdit>

class TextWidget : public QTextEdit, public TextPeer {
public:
    TextWidget(std::shared_ptr<ViewLink> link, QWidget* parent);

    QString Contents() const override { return toPlainText(); }
    void SetContents(const QString& text) override;
    void InsertText(const QString& text) override { insertPlainText(text); }
    void SelectBytes(int32 start, int32 finish) override;
    void GetSelectedBytes(int32& start, int32& finish) const override;
    void SetLimit(const TextLimit& limit) override;
    void SetManners(bool editable, bool selectable) override;
    void SetTextRect(BRect rect, QSize view) override;
    int TextHeight() const override;
    void Scroll(BPoint where) override;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void CutInsertion();
    void Report();

    const std::shared_ptr<ViewLink> fLink;
    TextLimit fLimit;
    bool fIsQuiet = false;
};
