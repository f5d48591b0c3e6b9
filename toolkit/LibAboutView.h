// What an about box shows: the program's name, version and release date, and who made it.
#pragma once

#include <View.h>

class BStringView;

class LibAboutView : public BView {
public:
    explicit LibAboutView(BRect frame);

    void SetAppName(const char* name);
    void SetVersion(const char* version); // shown as "Version: version"
    void SetReleaseDate(const char* date); // shown as "Released: date"
    // The width of the widest of name, version, date and maker, in pixels; 0 if all are empty.
    float WidestString() const;

private:
    BStringView* AddLine(const char* name, float top, float bottom, float size);

    BStringView* appName;
    BStringView* version;
    BStringView* releaseDate;
    BStringView* company;
};
