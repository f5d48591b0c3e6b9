// A record of drawing calls, and its files in formats that other programs read. Neither needs a
// display: a view draws into a picture without being in a window.
//
//   BPicture picture;
//   view.BeginPicture(&picture);
//   ... the view's drawing calls
//   view.EndPicture();
//   std::string error = WritePicture("chart.svg", picture, view.Bounds(), "A chart");
#pragma once

#include "Rect.h"

#include <memory>
#include <string>

class PictureRecord;

class BPicture {
public:
    // From here on fonts can be measured, with or without a display.
    BPicture();
    ~BPicture();
    BPicture(const BPicture&) = delete;
    BPicture& operator=(const BPicture&) = delete;

    const PictureRecord& Record() const { return *fRecord; }

private:
    friend class BView;
    std::unique_ptr<PictureRecord> fRecord;
};

// Empty if path's ending, in small or capital letters, is of a format that WritePicture() knows:
// ".svg", ".png" or ".pdf". Otherwise the reason as a person reads it.
[[nodiscard]] std::string WhyNoPicture(const char* path);

// Writes the part of a picture that lies in area, a rectangle of view coordinates, on a white
// ground as the file path, by WholeFile: letters stay letters in SVG and in the one page of a PDF,
// where a view unit is 1/96 inch; a PNG has two pixels a view unit either way. Control characters
// are written as the replacement character. Returns an empty string, or why the file could not be
// written; what was there stays then.
[[nodiscard]] std::string WritePicture(
    const char* path, const BPicture& picture, BRect area, const char* title);
