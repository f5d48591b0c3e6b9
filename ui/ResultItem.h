// A row of the results list: a test and its rate for each processor count.
#pragma once

#include "foundation/LibString.h"

#include <ListItem.h>

class ResultItem : public BListItem {
public:
    static constexpr int kMaxRates = 8;

    explicit ResultItem(const char* description);

    void Branch(const char* text);
    void Units(const char* text);
    // Sets how many rates the row shows. Rate() counts by itself.
    void Quantity(const int& rates);
    // Sets the rate of a slot and shows one rate more. A slot of kMaxRates or more, or below 0, is
    // ignored.
    void Rate(const int& slot, const float& value);

    const char* Description() const { return description; }
    const char* Units() const { return units; }
    int Quantity() const { return quantity; }
    float Rate(const int& slot) const { return rates[slot]; } // 0 to kMaxRates - 1

    void DrawItem(BView* owner, BRect frame, bool complete = false) override;

private:
    LibString branch; // not drawn
    LibString description;
    LibString units;
    int32 quantity = 0;
    float rates[kMaxRates] = {};
};
