// The picture beside a machine, apart from the chart: every machine has it, also where none is
// drawn.
#include "results/Results.h"

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
