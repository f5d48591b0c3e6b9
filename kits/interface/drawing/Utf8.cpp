#include "drawing/Utf8.h"

namespace {

// Bytes that follow a lead byte; -1 for one that leads nothing.
int FollowingBytes(uint8 lead)
{
    if (lead < 0x80)
        return 0;
    if (lead >= 0xc2 && lead < 0xe0)
        return 1;
    if (lead >= 0xe0 && lead < 0xf0)
        return 2;
    return lead >= 0xf0 && lead < 0xf5 ? 3 : -1;
}

bool IsShortestForm(uint32 character, int following)
{
    constexpr uint32 smallest[] = { 0, 0x80, 0x800, 0x10000 };
    const bool surrogate = character >= 0xd800 && character < 0xe000;
    return character >= smallest[following] && character < 0x110000 && !surrogate;
}

} // namespace

uint32 NextCharacter(const char*& text, const char* end)
{
    const auto lead = static_cast<uint8>(*text++);
    const int following = FollowingBytes(lead);
    if (following == 0)
        return lead;
    if (following < 0 || end - text < following)
        return kReplacementCharacter;
    uint32 character = lead & (0x3f >> following);
    for (int i = 0; i < following; i++) {
        const auto byte = static_cast<uint8>(text[i]);
        if ((byte & 0xc0) != 0x80)
            return kReplacementCharacter;
        character = character << 6 | (byte & 0x3f);
    }
    if (!IsShortestForm(character, following))
        return kReplacementCharacter;
    text += following;
    return character;
}
