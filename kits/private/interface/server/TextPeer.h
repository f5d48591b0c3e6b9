// What a BTextView asks of its widget, which shows one line or several.
#pragma once

#include "Rect.h"

#include <QSize>
#include <QString>

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
    // The user's keys and clicks wait while changes of the program are under way. Both count.
    virtual void Hold() { }
    virtual void Release() { }
    virtual void SetLimit(const TextLimit& limit) = 0; // cuts the text
    virtual void SetManners(bool editable, bool selectable) = 0;
    virtual void SetTextRect(BRect rect, QSize view) = 0; // the room around rect stays free
    virtual int TextHeight() const = 0;
    virtual void Scroll(BPoint where) = 0; // not reported
};

// Between the two ways to count a text's letters. Both are cut to the text.
int PlaceOfByte(const QString& text, int32 byteOffset);
int32 ByteOfPlace(const QString& text, int place);
