// The reader behind LibParseDate(). A rule takes what it knows from the front of the rest and
// returns true; otherwise it is undone by Try(). What contradicts something read before sets
// fRefused.
#pragma once

#include "foundation/LibParseDate.h"

#include <string_view>

class DateReader {
public:
    // folded is the text in lower case. It and the others must live as long as the reader.
    DateReader(std::string_view folded, const LibDateConventions& conventions, const LibDate& today,
        const LibTime& now)
        : fRest(folded), fConventions(conventions), fToday(today), fNow(now)
    {
    }

    // Reads the whole text, once. False, and parsed undefined, if that cannot be done.
    [[nodiscard]] bool Read(LibParsedDate& parsed);

private:
    struct Number {
        int32 value = 0;
        int32 digits = 0;
    };

    struct Distance {
        int64 months = 0;
        int64 days = 0;
        int64 seconds = 0;

        void Add(const Distance& other, int64 times)
        {
            months += other.months * times;
            days += other.days * times;
            seconds += other.seconds * times;
        }
    };

    enum class Which { kNone, kThis, kNext, kLast }; // of the weekdays

    using Rule = bool (DateReader::*)();

    bool Try(Rule rule);
    bool ReadItem();
    bool NumericDate();
    bool JoinedDate();
    bool MonthThenNumber();
    bool NumberThenMonth();
    bool TimeOfDay();
    bool JoinedTime();
    bool Zone();
    bool SignedDistance();
    bool SpokenDistance();
    bool Neighbour();
    bool WeekDay();
    bool Keyword();
    bool Filler();

    bool TakeNumber(Number& number);
    bool TakeDigits(int32 digits, int32& value);
    bool TakeText(std::string_view text);
    bool TakeWord(std::string_view word);
    bool TakeMonth(int32& month);
    bool TakeSeparator(size_t index, char& kind);
    bool TakeNumbers(Number (&numbers)[3], int32& count, char& kind);
    bool TakeYear();
    bool TakeWeekDay(Which which);
    bool TakeCount(int32& count);
    bool TakeUnit(Distance& length);
    bool TakeDistance(Distance& distance);
    bool TakeDirection(int& direction, bool& needsMore);
    void SkipBlanks();
    void SkipLoosely();
    void SkipOrdinal();
    bool BeginsWithLetter() const;

    bool SetDate(int32 year, int32 month, int32 day);
    bool SetDate(const LibDate& date);
    bool SetTime(const LibTime& time);
    bool SetTime(int32 hours, int32 minutes, int32 seconds);
    bool SetWeekDay(Which which, int32 weekDay);
    bool Resolve(LibParsedDate& parsed);
    bool ResolveWeekDay(LibDate& date) const;

    std::string_view fRest;
    const LibDateConventions& fConventions;
    const LibDate& fToday;
    const LibTime& fNow;

    bool fRefused = false;
    bool fHasDate = false;
    bool fHasTime = false;
    bool fClockTime = false; // the time is that of a clock in some zone, not "now"
    bool fHasZone = false;
    bool fHasDistance = false;
    bool fNeedsMore = false; // "3 days before" what?
    LibDate fDate;
    LibTime fTime;
    int32 fYear = 0; // what TakeYear read
    int32 fZoneMinutes = 0;
    Distance fDistance;
    Which fWhich = Which::kNone;
    int32 fWeekDay = 0;
};
