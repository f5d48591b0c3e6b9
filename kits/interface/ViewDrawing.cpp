// What a BView draws with, and its drawing.
#include "Bitmap.h"
#include "Check.h"
#include "drawing/DrawConnection.h"
#include "drawing/DrawContext.h"
#include "drawing/PictureRecord.h"
#include "Picture.h"
#include "server/Accessibility.h"
#include "server/DisplayServer.h"
#include "server/ViewWidget.h"
#include "TextCoding.h"
#include "View.h"
#include "Window.h"

#include <algorithm>
#include <cstring>

namespace {

// A window manager that has to read all fonts first, as on a new machine, takes seconds to show the
// first window.
constexpr bigtime_t kShownLimit = 20'000'000;
constexpr bigtime_t kHiddenLimit = 2'000'000;

void Note(DrawnText& text, const BFont& font, const char* string, BPoint point)
{
    font_height height;
    font.GetHeight(&height);
    const float right = point.x + font.StringWidth(string);
    text.Add(string, BRect(point.x, point.y - height.ascent, right, point.y + height.descent));
}

using Form = DrawnShape::Form;
using Ink = DrawnShape::Ink;

// A view without a context: it may be drawing into a picture. Cold and apart: within the drawing
// calls its code would only be in the usual case's way.
[[gnu::cold, gnu::noinline]] void Record(
    const DrawState& state, Form form, Ink ink, std::array<BPoint, 3> points, pattern p)
{
    if (state.record)
        state.record->AddShape(state, { form, ink, points }, p);
}

} // namespace

// Null where there is nothing to draw on. In front of every drawing call, so it must stay cheap.
DrawContext* BView::Context()
{
    CheckLocked();
    DrawContext* context = fDraw->context.get();
    if (!context) [[unlikely]]
        context = OpenContext();
    if (context) [[likely]]
        context->SetBounds(Bounds());
    return context;
}

DrawContext* BView::OpenContext()
{
    if (DrawnText::Noting())
        return nullptr;
    const NativeSurface surface = MakeNative();
    if (surface.window == 0)
        return nullptr;
    auto& connection = fWindow->fConnection;
    if (!connection)
        connection = DrawConnection::Open();
    if (!connection)
        return nullptr;
    const PixelFormat* format = connection->FormatOf(surface.window);
    if (!format)
        return nullptr;
    connection->WaitUntilViewable(surface.window, fWindow->IsHidden() ? kHiddenLimit : kShownLimit);
    auto& context = fDraw->context;
    context = std::make_unique<DrawContext>(*connection, surface.window, *format, surface.scale);
    context->SetBounds(Bounds());
    context->Clear(*fDraw);
    // It is first drawn to in the middle of an update: the rest of that goes to the pixmap too.
    if (fDraw->updateRect.IsValid())
        context->BeginUpdate(*fDraw, fDraw->updateRect);
    return context.get();
}

void BView::DetachDrawing()
{
    fDraw->context.reset();
    fDraw->updateRect = BRect();
}

// A view that has never drawn is painted by its widget; the pixmap is for those that do.
void BView::BeginUpdate(BRect rect)
{
    fDraw->updateRect = rect;
    if (fDraw->context && rect.IsValid())
        Context()->BeginUpdate(*fDraw, rect);
}

void BView::EndUpdate()
{
    if (fDraw->context && fDraw->updateRect.IsValid())
        fDraw->context->EndUpdate();
    fDraw->updateRect = BRect();
    if (!fDraw->context || !IsRead())
        return;
    // All of it once more, with nothing to draw on.
    constexpr float kFar = 1e6;
    const auto widget = static_cast<ViewWidget*>(fPeer->widget);
    std::unique_ptr<DrawContext> context = std::move(fDraw->context);
    {
        DrawnText text(fOrigin);
        Draw(BRect(-kFar, -kFar, kFar, kFar));
        // Not waited for, and yet safe: the end of the widget is a later Call.
        display::Post([widget, lines = text.Lines()] { widget->SetLines(lines); });
    }
    fDraw->context = std::move(context);
}

void BView::BeginPicture(BPicture* picture)
{
    TARVEX_CHECK(fWindow == nullptr) << "view <" << (Name() ? Name() : "") << "> is in a window";
    fDraw->record = picture->fRecord.get();
    fDraw->record->Begin(Bounds());
}

void BView::EndPicture()
{
    fDraw->record = nullptr;
}

void BView::SetViewColor(rgb_color color)
{
    fDraw->viewColor = color;
    ViewColorChanged();
}

rgb_color BView::ViewColor() const
{
    return fDraw->viewColor;
}

void BView::SetHighColor(rgb_color color)
{
    fDraw->highColor = color;
}

rgb_color BView::HighColor() const
{
    return fDraw->highColor;
}

void BView::SetLowColor(rgb_color color)
{
    fDraw->lowColor = color;
}

rgb_color BView::LowColor() const
{
    return fDraw->lowColor;
}

void BView::SetPenSize(float size)
{
    fDraw->penSize = size;
}

void BView::SetDrawingMode(drawing_mode mode)
{
    fDraw->mode = mode;
}

void BView::StrokeLine(BPoint from, BPoint to, pattern p)
{
    if (DrawContext* context = Context())
        context->StrokeLine(*fDraw, from, to, p);
    else
        Record(*fDraw, Form::kLine, Ink::kStroke, { from, to }, p);
}

void BView::StrokeRect(BRect rect, pattern p)
{
    if (DrawContext* context = Context())
        context->StrokeRect(*fDraw, rect, p);
    else
        Record(*fDraw, Form::kBox, Ink::kStroke, { rect.LeftTop(), rect.RightBottom() }, p);
}

void BView::FillRect(BRect rect, pattern p)
{
    if (DrawContext* context = Context())
        context->FillRect(*fDraw, rect, p);
    else
        Record(*fDraw, Form::kBox, Ink::kFill, { rect.LeftTop(), rect.RightBottom() }, p);
}

void BView::StrokeEllipse(BRect rect, pattern p)
{
    if (DrawContext* context = Context())
        context->StrokeEllipse(*fDraw, rect, p);
    else
        Record(*fDraw, Form::kEllipse, Ink::kStroke, { rect.LeftTop(), rect.RightBottom() }, p);
}

void BView::FillEllipse(BRect rect, pattern p)
{
    if (DrawContext* context = Context())
        context->FillEllipse(*fDraw, rect, p);
    else
        Record(*fDraw, Form::kEllipse, Ink::kFill, { rect.LeftTop(), rect.RightBottom() }, p);
}

void BView::StrokeTriangle(BPoint a, BPoint b, BPoint c, pattern p)
{
    if (DrawContext* context = Context())
        context->StrokeTriangle(*fDraw, a, b, c, p);
    else
        Record(*fDraw, Form::kTriangle, Ink::kStroke, { a, b, c }, p);
}

void BView::FillTriangle(BPoint a, BPoint b, BPoint c, pattern p)
{
    if (DrawContext* context = Context())
        context->FillTriangle(*fDraw, a, b, c, p);
    else
        Record(*fDraw, Form::kTriangle, Ink::kFill, { a, b, c }, p);
}

void BView::InvertRect(BRect rect)
{
    if (DrawContext* context = Context())
        context->InvertRect(rect);
}

void BView::DrawString(const char* string, BPoint point, escapement_delta* delta)
{
    DrawContext* context = Context();
    if (!string)
        return;
    if (!context) [[unlikely]] {
        if (DrawnText* text = DrawnText::Noting())
            Note(*text, fDraw->font, string, point);
        else if (fDraw->record)
            fDraw->record->AddString(*fDraw, string, point);
        return;
    }
    const char* end = string + strlen(string);
    if (!delta) {
        context->DrawString(*fDraw, point, string, end - string);
        return;
    }
    // With spacing each letter is drawn by itself, at a place of its own.
    while (string < end) {
        const char* next = string;
        const uint32 character = NextCharacter(next, end);
        point.x += context->DrawString(*fDraw, point, string, next - string)
            + (character == ' ' ? delta->space : delta->nonspace);
        string = next;
    }
}

float BView::StringWidth(const char* string) const
{
    return fDraw->font.StringWidth(string);
}

void BView::SetFont(const BFont* font, uint32 mask)
{
    if (!font)
        return;
    BFont& own = fDraw->font;
    font_family family;
    font_style style;
    font->GetFamilyAndStyle(&family, &style);
    if ((mask & B_FONT_FAMILY_AND_STYLE) != 0)
        own.SetFamilyAndStyle(family, style);
    if ((mask & B_FONT_SIZE) != 0)
        own.SetSize(font->Size());
    // After family and style, which set a face as well.
    if ((mask & B_FONT_FACE) != 0)
        own.SetFace(font->Face());
    if (fDraw->context)
        fDraw->context->FontChanged();
    FontChanged();
}

void BView::GetFont(BFont* font) const
{
    *font = fDraw->font;
}

void BView::SetFontSize(float size)
{
    BFont font;
    font.SetSize(size);
    SetFont(&font, B_FONT_SIZE);
}

void BView::DrawBitmap(const BBitmap* bitmap, BRect destination)
{
    if (bitmap)
        DrawBitmap(bitmap, bitmap->Bounds(), destination);
}

void BView::DrawBitmap(const BBitmap* bitmap, BRect source, BRect destination)
{
    if (!bitmap)
        return;
    if (DrawContext* context = Context())
        context->DrawBitmap(*fDraw, *bitmap, source, destination);
    else if (fDraw->record)
        fDraw->record->AddBitmap(*fDraw, *bitmap, source, destination);
}

void BView::Flush() const
{
    CheckLocked();
    if (fWindow)
        fWindow->FlushDrawing();
}

void BView::Sync() const
{
    CheckLocked();
    if (fWindow)
        fWindow->SyncDrawing();
}

std::optional<bool> BView::ShowsOnly(rgb_color color)
{
    CheckLocked();
    if (!fDraw->context)
        return {};
    fDraw->context->SetBounds(Bounds());
    return fDraw->context->ShowsOnly(color);
}
