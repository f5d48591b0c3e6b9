#include "ui/ResultItem.h"

#include "results/FormatRate.h"

#include <GraphicsDefs.h>
#include <View.h>

#include <algorithm>

namespace {

// From the row's left edge. The columns' titles in the results window stand above them.
constexpr float kDescriptionX = 5;
constexpr float kUnitsX = 190;
constexpr float kRatesX = 290;
constexpr float kRateWidth = 55;
constexpr float kBaseline = 3; // above the row's bottom

} // namespace

ResultItem::ResultItem(const char* text) : description(text ? text : "") { }

void ResultItem::Branch(const char* text)
{
    branch = text;
}

void ResultItem::Units(const char* text)
{
    units = text;
}

void ResultItem::Quantity(const int& nbrRates)
{
    quantity = nbrRates;
}

void ResultItem::Rate(const int& slot, const float& value)
{
    if (slot < 0 || slot >= kMaxRates)
        return;
    quantity++;
    rates[slot] = value;
}

void ResultItem::DrawItem(BView* owner, BRect frame, bool)
{
    owner->SetHighColor(white_color);
    owner->FillRect(frame);
    owner->SetHighColor(black_color);

    const float baseline = frame.bottom - kBaseline;
    owner->DrawString(Description(), BPoint(frame.left + kDescriptionX, baseline));
    owner->DrawString(Units(), BPoint(frame.left + kUnitsX, baseline));
    for (int slot = 0; slot < std::min(quantity, kMaxRates); slot++) {
        const BPoint place(frame.left + kRatesX + kRateWidth * float(slot), baseline);
        owner->DrawString(FormatRate(double(rates[slot])), place);
    }
    if (IsSelected())
        owner->InvertRect(frame);
}
