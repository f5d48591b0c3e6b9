// The widgets to assistive technology, a screen reader for one. Names and roles come from what the
// program gives anyway: labels, tool tips, views' names, drawn text. On the display server only,
// but for IsRead() and DrawnText.
#pragma once

#include "Rect.h"

#include <string>
#include <vector>

class QString;
class QWidget;

// After QApplication, once: from now on views, windows and links have their own interfaces.
void ServeAccessibility();

// Whether anybody reads: only then it pays to note what views draw. From any thread.
bool IsRead();

// The name of a widget that shows none: its tool tip or, without one, the view's name.
QString SpokenName(const QWidget& widget);

// Gives a field or scroll bar its name. To be called again when its label or tool tip has changed.
void NameForReaders(QWidget& widget);

// Ends the interfaces of a view's lines beyond so many: what comes there later is something else.
void KeepLines(QWidget& view, size_t count);

// The text of a view that draws itself, as a screen reader gets it.
struct DrawnLine {
    std::string text; // its pieces, with ", " between them
    BRect frame; // of the view's widget: from its left top, wherever the view is scrolled
    bool isRow = false; // of a list; the rest is for rows only
    bool isSelected = false;
    bool isEnabled = true;
    bool isCurrent = false; // the keys move on from here
    bool operator==(const DrawnLine&) const = default;
};

// While it lives, views draw nothing on its thread: their strings are noted.
class DrawnText {
public:
    explicit DrawnText(BPoint origin); // the view's left top
    ~DrawnText();
    DrawnText(const DrawnText&) = delete;
    DrawnText& operator=(const DrawnText&) = delete;
    static DrawnText* Noting(); // on the calling thread, or null

    // What follows is one row, whatever it draws; its text is empty here, its frame the view's.
    void BeginRow(DrawnLine row);
    void Add(const char* string, BRect frame);
    // The rows. Where none was begun: what stands on the same baseline is a line, and if that is
    // all of it, each piece is one.
    std::vector<DrawnLine> Lines() const;

private:
    const BPoint fOrigin;
    std::vector<DrawnLine> fPieces;
};
