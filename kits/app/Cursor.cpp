#include "Cursor.h"

#include <cstring>

#include "AppDefs.h"
#include "CursorState.h"
#include "LeafLock.h"

namespace {

constexpr size_t kImageSize = sizeof(CursorState::image);

bool IsImage(const void* data)
{
    const auto* bytes = static_cast<const uint8*>(data);
    return bytes && bytes[0] == 16 && bytes[1] == 1 && bytes[2] < 16 && bytes[3] < 16;
}

Mutex gLock;
CursorState gState GUARDED_BY(gLock);
void (*gHook)() GUARDED_BY(gLock) = nullptr;

// The hook is called without the lock, so that it may read the state; of several calls at once the
// last one finds the last state.
template <typename Change>
void ChangeState(Change change)
{
    void (*hook)() = nullptr;
    {
        const LeafLock lock(gLock);
        change(gState);
        hook = gHook;
    }
    if (hook)
        hook();
}

} // namespace

// clang-format off
const unsigned char B_HAND_CURSOR[] = {
    16, 1, 1, 4,
    0x00, 0x00, 0x0c, 0x00, 0x12, 0x00, 0x12, 0x00, 0x13, 0x80, 0x12, 0x70, 0x12, 0x4c, 0x72, 0x4a,
    0x90, 0x0a, 0x88, 0x01, 0x48, 0x01, 0x20, 0x01, 0x10, 0x02, 0x08, 0x02, 0x04, 0x04, 0x07, 0xfc,
    0x00, 0x00, 0x0c, 0x00, 0x1e, 0x00, 0x1e, 0x00, 0x1f, 0x80, 0x1f, 0xf0, 0x1f, 0xfc, 0x7f, 0xfe,
    0xff, 0xfe, 0xff, 0xff, 0x7f, 0xff, 0x3f, 0xff, 0x1f, 0xfe, 0x0f, 0xfe, 0x07, 0xfc, 0x07, 0xfc,
};

const unsigned char B_I_BEAM_CURSOR[] = {
    16, 1, 7, 7,
    0x00, 0x00, 0x0c, 0x60, 0x02, 0x80, 0x01, 0x00, 0x01, 0x00, 0x01, 0x00, 0x01, 0x00, 0x01, 0x00,
    0x01, 0x00, 0x01, 0x00, 0x01, 0x00, 0x01, 0x00, 0x01, 0x00, 0x02, 0x80, 0x0c, 0x60, 0x00, 0x00,
    0x00, 0x00, 0x0c, 0x60, 0x02, 0x80, 0x01, 0x00, 0x01, 0x00, 0x01, 0x00, 0x01, 0x00, 0x01, 0x00,
    0x01, 0x00, 0x01, 0x00, 0x01, 0x00, 0x01, 0x00, 0x01, 0x00, 0x02, 0x80, 0x0c, 0x60, 0x00, 0x00,
};
// clang-format on

static_assert(sizeof(B_HAND_CURSOR) == kImageSize && sizeof(B_I_BEAM_CURSOR) == kImageSize);

namespace {

const BCursor gHand(B_HAND_CURSOR);
const BCursor gBeam(B_I_BEAM_CURSOR);

} // namespace

const BCursor* const B_CURSOR_SYSTEM_DEFAULT = &gHand;
const BCursor* const B_CURSOR_I_BEAM = &gBeam;

BCursor::BCursor(const void* data)
{
    if (IsImage(data))
        memcpy(fData, data, sizeof(fData));
}

const uint8* BCursor::Data() const
{
    return fData[0] != 0 ? fData : nullptr;
}

CursorState CurrentCursor()
{
    const LeafLock lock(gLock);
    return gState;
}

void SetCursorHook(void (*changed)())
{
    {
        const LeafLock lock(gLock);
        gHook = changed;
    }
    if (changed)
        changed();
}

void SetCursorImage(const void* data)
{
    if (!IsImage(data))
        return;
    ChangeState([data](CursorState& state) {
        state.isSet = true;
        memcpy(state.image, data, kImageSize);
    });
}

void SetCursorHidden(bool hidden)
{
    ChangeState([hidden](CursorState& state) { state.isHidden = hidden; });
}
