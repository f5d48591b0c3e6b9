#include "ui/ResultItem.h"

#include "results/Metric.h"

#include <GraphicsDefs.h>
#include <View.h>

#include <algorithm>
#include <cstring>

namespace {

// From the row's left edge. The columns' titles in the results window stand above them.
constexpr float kDescriptionX = 5;
constexpr float kUnitsX = 190;
constexpr float kRatesX = 290;
constexpr float kRateWidth = 55;
constexpr float kColumnGap = 4; // at least
constexpr float kBaseline = 3; // above the row's bottom

// Draws in a column of that width, a wider text with its letters closer together.
void DrawFitted(BView* owner, const char* text, BPoint place, float width)
{
    const float excess = owner->StringWidth(text) - (width - kColumnGap);
    if (excess <= 0)
        return owner->DrawString(text, place);
    const float closer = -excess / static_cast<float>(strlen(text));
    escapement_delta delta { closer, closer };
    owner->DrawString(text, place, &delta);
}

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
    DrawFitted(owner, Description(), BPoint(frame.left + kDescriptionX, baseline),
        kUnitsX - kDescriptionX);
    owner->DrawString(Units(), BPoint(frame.left + kUnitsX, baseline));
    // Quantity() may have been told more than there is room for.
    for (int slot = 0; slot < std::min(quantity, kMaxRates); slot++) {
        const BPoint place(frame.left + kRatesX + kRateWidth * static_cast<float>(slot), baseline);
        DrawFitted(owner, FormatRate(static_cast<double>(rates[slot])), place, kRateWidth);
    }
    if (IsSelected())
        owner->InvertRect(frame);
}
