// A rectangle of a window that draws and receives input: the base of everything inside windows.
// Its coordinates count in pixels of a display at normal scale, from Bounds().LeftTop().
//
// A view may be built and put together anywhere. Once it is in a window (AttachedToWindow()), every
// call of it needs the window's lock. A parent owns its children; RemoveChild() gives one back.
#pragma once

#include "Font.h"
#include "GraphicsDefs.h"
#include "Handler.h"
#include "InterfaceDefs.h"
#include "Rect.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

class BBitmap;
class BMessage;
class BPicture;
class BScrollBar;
class BScrollView;
class BWindow;
class DrawContext;
struct DrawState;
struct escapement_delta;
struct NativeSurface;
struct ViewPeer;
struct WidgetPlacement;

class BView : public BHandler {
public:
    // frame: in the parent's coordinates. resizeMode: B_FOLLOW_...; flags: B_WILL_DRAW and so on.
    BView(BRect frame, const char* name, uint32 resizeMode, uint32 flags);
    ~BView() override; // deletes the children; a view in a window or parent takes itself out first
    BView(const BView&) = delete;
    BView& operator=(const BView&) = delete;

    // Hooks, called in the window's thread (the first two in the thread that adds the view), with
    // the window locked. AttachedToWindow() is called for a parent before its children,
    // AllAttached() when all of them are attached; the same on the way out.
    virtual void AttachedToWindow() { }
    virtual void AllAttached() { }
    virtual void DetachedFromWindow() { }
    virtual void AllDetached() { }
    virtual void Draw(BRect /*updateRect*/) { }
    virtual void MouseDown(BPoint /*where*/) { }
    virtual void MouseUp(BPoint /*where*/) { }
    virtual void MouseMoved(BPoint /*where*/, uint32 /*transit*/, const BMessage* /*dragged*/) { }
    virtual void KeyDown(const char* bytes, int32 numBytes); // the base hands it to the window
    virtual void WindowActivated(bool /*active*/) { }
    virtual void FrameMoved(BPoint /*newPosition*/) { }
    virtual void FrameResized(float /*newWidth*/, float /*newHeight*/) { }
    virtual void TargetedByScrollView(BScrollView* /*scroller*/) { }
    void MessageReceived(BMessage* message) override; // scrolls by the mouse wheel

    // The tree. child becomes this view's, in front of before or as the last; a child that already
    // has a parent is refused with a line on standard error.
    void AddChild(BView* child, BView* before = nullptr);
    bool RemoveChild(BView* child); // false if it is no child; true: it belongs to the caller now
    bool RemoveSelf(); // false if it has no parent
    int32 CountChildren() const { return static_cast<int32>(fChildren.size()); }
    BView* ChildAt(int32 index) const; // null beyond the last
    BView* NextSibling() const;
    BView* Parent() const; // null at a window's top
    BView* FindView(const char* name) const; // this one or the first below by that name, or null
    BWindow* Window() const { return fWindow; } // null outside windows

    // Geometry.
    BRect Frame() const { return fFrame; } // in the parent's coordinates
    BRect Bounds() const; // the same size in this view's own coordinates
    BPoint LeftTop() const { return fOrigin; } // of Bounds(); scrolling changes it
    void MoveTo(BPoint where); // in the parent's coordinates
    void MoveTo(float x, float y) { MoveTo(BPoint(x, y)); }
    void MoveBy(float dx, float dy) { MoveTo(fFrame.left + dx, fFrame.top + dy); }
    void ResizeTo(float width, float height); // as BRect counts; children follow by their modes
    void ResizeBy(float dx, float dy) { ResizeTo(fFrame.Width() + dx, fFrame.Height() + dy); }
    virtual void GetPreferredSize(float* width, float* height); // base: the present size
    virtual void ResizeToPreferred();
    void SetResizingMode(uint32 mode) { fResizingMode = mode; }
    uint32 ResizingMode() const { return fResizingMode; }
    void ConvertToParent(BPoint* point) const;
    BPoint ConvertToParent(BPoint point) const;
    BPoint ConvertToScreen(BPoint point) const; // unchanged outside windows
    BRect ConvertToScreen(BRect rect) const;

    // Scrolling: puts where, in view coordinates, at the view's left top.
    virtual void ScrollTo(BPoint where); // also sets the scroll bars that have it as target
    void ScrollTo(float x, float y) { ScrollTo(BPoint(x, y)); }
    void ScrollBy(float dx, float dy) { ScrollTo(fOrigin.x + dx, fOrigin.y + dy); }
    BScrollBar* ScrollBar(orientation direction) const; // whose target it is, or null

    // State.
    virtual void Show();
    virtual void Hide(); // nests: as many Show() as Hide() make it visible again
    bool IsHidden() const; // itself, a view above it or the window
    uint32 Flags() const { return fFlags; }
    virtual void SetFlags(uint32 flags);
    // Does nothing outside windows. A view that gets the focus is scrolled into sight.
    virtual void MakeFocus(bool focus = true);
    bool IsFocus() const;
    // Whether what is typed goes here: the view has the focus of the window that is active.
    bool HasKeyboard() const;
    void SetToolTip(const char* text); // appears where the pointer rests; null or empty: none
    const char* ToolTip() const { return fToolTip.c_str(); }
    // From here on the pointer over this view is the desktop's for links.
    void ShowLinkPointer();
    void Invalidate(); // asks for Draw() of all of it
    void Invalidate(BRect rect); // in view coordinates

    // Drawing (ViewDrawing.cpp).
    virtual void SetViewColor(rgb_color color); // the background; B_TRANSPARENT_COLOR: the parent's
    rgb_color ViewColor() const;
    virtual void SetHighColor(rgb_color color);
    rgb_color HighColor() const;
    virtual void SetLowColor(rgb_color color);
    rgb_color LowColor() const;
    virtual void SetPenSize(float size);
    virtual void SetDrawingMode(drawing_mode mode);

    void StrokeLine(BPoint from, BPoint to, pattern p = B_SOLID_HIGH);
    void StrokeRect(BRect rect, pattern p = B_SOLID_HIGH);
    void FillRect(BRect rect, pattern p = B_SOLID_HIGH);
    void StrokeEllipse(BRect rect, pattern p = B_SOLID_HIGH);
    void FillEllipse(BRect rect, pattern p = B_SOLID_HIGH);
    void StrokeTriangle(BPoint a, BPoint b, BPoint c, pattern p = B_SOLID_HIGH);
    void FillTriangle(BPoint a, BPoint b, BPoint c, pattern p = B_SOLID_HIGH);
    void InvertRect(BRect rect);

    // Text stands on point.
    void DrawString(const char* string, BPoint point, escapement_delta* delta = nullptr);
    float StringWidth(const char* string) const;
    virtual void SetFont(const BFont* font, uint32 mask = B_FONT_ALL);
    void GetFont(BFont* font) const;
    void SetFontSize(float size);

    void DrawBitmap(const BBitmap* bitmap, BRect destination);
    void DrawBitmap(const BBitmap* bitmap, BRect source, BRect destination);

    // Between the two, what the view draws is added to picture instead; for views outside windows.
    // Left out are what lies outside Bounds(), inverted rectangles and escapement.
    void BeginPicture(BPicture* picture);
    void EndPicture();

    void Flush() const; // sends what has been drawn
    void Sync() const; // the same, and waits until it is on the screen

    // Beside the platform's calls: whether all of the view's pixels have this colour on the display
    // server, once that has drawn what it was sent. Empty where nobody can tell: nothing was drawn
    // here yet, or the window is on no screen, or beyond its edge. Where another window covers it
    // the answer may be of that one's pixels, or of none.
    [[nodiscard]] std::optional<bool> ShowsOnly(rgb_color color);

protected:
    // A control's part on the display server; null outside windows. See server/ViewPeer.h.
    ViewPeer* Peer() const { return fPeer.get(); }
    // Makes peer.widget, with all the view's state, as a child of peer.parent. Called on the
    // display server's thread while the caller of AddChild() waits.
    virtual void MakeWidget(ViewPeer& peer);
    // The widget's report of a change the user made: in the window's thread, locked.
    virtual void WidgetChanged(BMessage* report);
    virtual void WidgetGoes() { } // last chance to take over what only the widget knows
    void GetWidgetSize(float* width, float* height); // that the widget would like; null: not asked
    void TakeParentsColor(); // as the view colour, unless the program has chosen one

private:
    friend class BScrollBar;
    friend class BWindow;
    friend class DrawConnection;
    friend class DrawContext;

#ifdef TARVEX_CHECKS
    void CheckLocked() const; // a view in a window is called with its lock
#else
    void CheckLocked() const { }
#endif
    // The tree.
    void AttachTree(BWindow* window);
    void DetachTree();
    void CallDetached();
    void LeaveWindow();
    BView* Sibling(int32 distance) const;
    void MakePeer();
    bool FillsBackground() const;
    // Geometry: recursion collects the widgets' new places, which one call hands over.
    void SetFrame(BRect frame, std::vector<WidgetPlacement>& places);
    WidgetPlacement Placement() const;
    static void Apply(const std::vector<WidgetPlacement>& places);
    BPoint OffsetInWindow() const; // of the bounds' (0, 0)
    // Input.
    bool HandleServerMessage(BMessage* message);
    void HandleMouse(BMessage* message);
    void HandleKeyDown(BMessage* message);
    void HandleFocused();
    void TellActivated(bool active);
    void ScrollByWheel(const BMessage& message, orientation direction, const char* field);

    // Drawing's half.
    DrawContext* Context();
    DrawContext* OpenContext();
    NativeSurface MakeNative();
    void ViewColorChanged();
    void FontChanged(); // SetFont() tells the widget
    void BeginUpdate(BRect rect);
    void EndUpdate();
    void DetachDrawing();

    BWindow* fWindow = nullptr;
    BView* fParent = nullptr;
    std::vector<BView*> fChildren;
    bool fIsTop = false; // the window's own, which holds the others
    BRect fFrame;
    BPoint fOrigin;
    uint32 fResizingMode;
    uint32 fFlags;
    int32 fHidden = 0;
    std::string fToolTip;
    bool fHasLinkPointer = false;
    BScrollBar* fHorizontalBar = nullptr;
    BScrollBar* fVerticalBar = nullptr;
    std::unique_ptr<ViewPeer> fPeer;
    std::unique_ptr<DrawState> fDraw; // made by the constructor
};
