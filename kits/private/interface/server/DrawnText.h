// The text of a view that draws itself, as a screen reader gets it.
#pragma once

#include "Rect.h"

#include <string>
#include <vector>

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
