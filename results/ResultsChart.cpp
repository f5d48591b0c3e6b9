// Machines as rows of a chart. The caller gives the scale and goes on below with y.
#include "results/ComparisonChart.h"
#include "results/Results.h"

#include <Font.h>
#include <View.h>

#include <cstdio>

namespace {

// Indices of the system's colours: greys from 0 (black) to 31, then 32 + 36 red + 6 green + blue.
constexpr uint8 ColorIndex(char letter)
{
    switch (letter) {
        case 'K': return 0; // black
        case 'd': return 12; // dark, middle and light grey
        case 'm': return 20;
        case 'l': return 28;
        case 'p': return 32 + 36 * 4 + 6 * 3; // gold of the pins and wires
        case 'b': return 32 + 6 * 1 + 3; // blue of the print
        case 'g': return 32 + 6 * 3; // green of the board
        case 'r': return 32 + 36 * 5; // red of the core
        default: return B_TRANSPARENT_8_BIT;
    }
}

constexpr std::array<uint8, 256> Picture(const char (&letters)[257])
{
    std::array<uint8, 256> pixels {};
    for (size_t i = 0; i < pixels.size(); i++)
        pixels[i] = ColorIndex(letters[i]);
    return pixels;
}

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

// clang-format off
constinit const std::array<uint8, 256> Processor = Picture(
    "................"
    "....p.p..p.p...."
    "..KKKKKKKKKKKK.."
    "..KllllllllldK.."
    ".pKlmmmmmmmmdKp."
    "..KlmmmmmmmmdK.."
    ".pKlmbbbbbbmdKp."
    "..KlmmmmmmmmdK.."
    "..KlmbbbbmmmdK.."
    ".pKlmmmmmmmmdKp."
    "..KlmmmmmmmmdK.."
    ".pKlmmmmmmmrdKp."
    "..KddddddddddK.."
    "..KKKKKKKKKKKK.."
    "....p.p..p.p...."
    "................");

constinit const std::array<uint8, 256> ProcessorOpen = Picture(
    "................"
    "....p.p..p.p...."
    "..KKKKKKKKKKKK.."
    "..KggggggggggK.."
    ".pKgpgpggpgpgKp."
    "..KggppppppggK.."
    ".pKgppKKKKppgKp."
    "..KggpKrrKpggK.."
    "..KggpKrrKpggK.."
    ".pKgppKKKKppgKp."
    "..KggppppppggK.."
    ".pKgpgpggpgpgKp."
    "..KggggggggggK.."
    "..KKKKKKKKKKKK.."
    "....p.p..p.p...."
    "................");
// clang-format on

void Results::UpdateIcon()
{
    const auto& picture = expanded ? ProcessorOpen : Processor;
    icon->SetBits(picture.data(), static_cast<int32>(picture.size()), 0, B_CMAP8);
}

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
