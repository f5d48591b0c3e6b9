// A date shown and typed as the user's language has it.
#pragma once

#include "foundation/LibDate.h"
#include "foundation/LibDateConventions.h"
#include "foundation/LibString.h"

class LibLocaleDate : public LibDate {
public:
    // By the conventions of the user's environment unless others are given.
    explicit LibLocaleDate(const LibDate& date = LibDate(),
        const LibDateConventions& conventions = LibDateConventions::OfLocale(""));

    const LibDateConventions& Conventions() const { return fConventions; }

    // The date in numbers, the year in full: "03/12/2001", "12.03.2001".
    void GetShort(LibString& text) const;
    // With names: "Monday, March 12, 2001", "Montag, 12 März 2001". A month out of range has none.
    void GetLong(LibString& text) const;
    // Reads what people type, as LibParseDate() does, both forms above among it, from today on.
    // False, a line on standard error, and nothing changes, if it cannot be read or names a time
    // of day.
    bool SetTyped(const char* text);
    // The same on a given day, so that it depends on nothing else.
    bool SetTyped(const char* text, const LibDate& today);

private:
    LibDateConventions fConventions;
};
