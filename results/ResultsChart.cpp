// Machines as rows of a chart. The caller gives the scale and goes on below with y.
#include "results/ComparisonChart.h"
#include "results/Results.h"

#include <Font.h>
#include <View.h>

#include <cstdio>

namespace {

constexpr float kRowHeight = ComparisonChart::kRowHeight;
constexpr float kDevicesTop = 10;
constexpr float kDeviceHeight = 13;

constexpr rgb_color kBlack = { 0, 0, 0, 255 };
constexpr rgb_color kBlue = { 0, 0, 255, 255 };

// The trailing blanks are part of the labels.
const char* DeviceLabel(int32 type)
{
    switch (type) {
        case -1: return "Screen";
        case 0: return "Early";
        case 1: return "Storage";
        case 2: return "Network";
        case 3: return "Display";
        case 4: return "M Media";
        case 5: return "Memory";
        case 6: return "Bridge ";
        case 7: return "S. Comm";
        case 8: return "Periphl";
        case 9: return "Input";
        case 10: return "DockSta";
        case 11: return "Procesr";
        case 12: return "Serial ";
        case 255: return "Undefin";
        default: return "";
    }
}

// Beyond the view's edge, where nobody sees it: this is what a screen reader says for the bars.
void WriteRates(BView* view, const Metric& metric, float y, float ratioBase)
{
    for (int slot = 0; slot < metric.Slots(); slot++) {
        const double rate = metric.Rate(slot);
        LibString text;
        text.Formatted("%d CPU ", metric.Slots() - slot);
        text.Concat(FormatRate(ratioBase > 0 ? 100 * rate / static_cast<double>(ratioBase) : rate));
        text.Concat(ratioBase > 0 ? "%" : "");
        view->DrawString(text, BPoint(view->Bounds().right + 1, y + 12));
    }
}

} // namespace

void Metric::Draw(BView* view, const float& scale, const float& left, const rgb_color* colours,
    float& y, const float& ratioBase)
{
    SetDrawn(false);
    int slot = -1;
    auto rate = static_cast<float>(MaxRate(slot));
    if (slot >= 0)
        SetDrawn(slot, true);
    // From the longest to the shortest, so that each covers a part of the one before.
    for (; slot >= 0; slot = NextSmallestRate(rate)) {
        const float value = ratioBase > 0 ? 100 * rate / ratioBase : rate;
        const float width = (view->Bounds().Width() - left) * value / scale;
        view->SetHighColor(colours[Slots() - 1 - slot]);
        view->FillRect(BRect(left + 1, y + 3, left + width, y + 13));
    }
    y += kRowHeight;
}

float Results::RowHeight() const
{
    return expanded ? kRowHeight + kDevicesTop + kDeviceHeight * static_cast<float>(devices.Size())
                    : kRowHeight;
}

void Results::Place(float& y)
{
    frame.Set(2, y, 17, y + 15);
    y += RowHeight();
}

void Results::Draw(BView* view, BRect update, const float& left, const float& scale,
    const rgb_color* colours, float& y, const bool& selected, const float& ratioBase)
{
    const float top = y;
    Place(y);
    // A row that is not drawn has its place too, and rows below it.
    if (top > update.bottom || y < update.top)
        return;
    DrawLabel(view, left, top, selected);
    float below = top;
    if (Metric* metric = Current()) {
        metric->Draw(view, scale, left, colours, below, ratioBase);
        WriteRates(view, *metric, top, ratioBase);
    } else {
        fprintf(stderr, "No metric is current in Results::Draw\n");
    }
    if (expanded)
        DrawDevices(view, top + kRowHeight + kDevicesTop);
}

void Results::DrawLabel(BView* view, float left, float y, bool selected)
{
    BFont font;
    view->GetFont(&font);
    LibString text(description);
    BRect extent;
    text.Truncate(
        font, static_cast<int>(left - ComparisonChart::kNamesX), extent); // the bars begin there
    view->SetHighColor(selected ? kBlue : kBlack);
    view->DrawString(text, BPoint(ComparisonChart::kNamesX, y + 12));
    view->DrawBitmap(icon.get(), frame);
}

void Results::DrawDevices(BView* view, float baseline) const
{
    view->SetHighColor(kBlack);
    for (const RelatedDevices& device : devices) {
        view->DrawString(DeviceLabel(device.type), BPoint(30, baseline));
        view->DrawString(device.description, BPoint(75, baseline));
        baseline += kDeviceHeight;
    }
}
