#include "ui/AboutSysWindow.h"

#include "sysinfo/LibDeviceInfo.h"
#include "sysinfo/LibSysInfo.h"
#include "sysinfo/TypedPciNames.h"
#include "toolkit/LibControls.h"

#include <Looper.h>
#include <MachineDetails.h>
#include <StringView.h>

#include <algorithm>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

constexpr float kLeft = 5;
constexpr float kRight = 150;
constexpr float kUpper = 5;
constexpr float kLower = 25;
constexpr float kFontSize = 10; // the right column has room for the longest date

// One of the tabs, with lines of text.
class SystemPage : public BView {
public:
    SystemPage(BRect frame, const char* name)
        : BView(frame, name, B_FOLLOW_LEFT | B_FOLLOW_TOP, B_WILL_DRAW)
    {
        SetViewColor(ui_color(B_PANEL_BACKGROUND_COLOR));
    }

    void AddLine(const char* name, float left, float top, const char* text)
    {
        const BRect frame(left, top, left + 190, top + 15);
        BStringView* line = new BStringView(frame, name, text);
        line->SetFontSize(kFontSize);
        AddChild(line);
    }
    // Also of its lines, where screen readers look for them.
    void SetToolTips(const std::string& text)
    {
        SetToolTip(text.c_str());
        for (int32 i = 0; i < CountChildren(); i++)
            ChildAt(i)->SetToolTip(text.c_str());
    }
};

LibString Line(const char* label, const char* value)
{
    LibString text;
    // What the system does not say is no text at all: null, which cannot be formatted.
    text.Formatted("%s : %s", label, value ? value : "");
    return text;
}

LibString Line(const char* label, int32 value, const char* unit = "")
{
    LibString text;
    text.Formatted("%s : %d%s", label, value, unit);
    return text;
}

SystemPage* MachinePage(BRect frame, const LibSysInfo& info)
{
    SystemPage* page = new SystemPage(frame, "machine_view");
    // Only what the call refuses is taken for a name, as it always has been.
    char host[1024] = "";
    LibString hostLine;
    if (gethostname(host, sizeof host) != 0)
        hostLine = Line("Host Name", host);
    LibString version;
    LibGetOSVersion(version);
    page->AddLine("hostname", kLeft, kUpper, hostLine);
    page->AddLine("platform", kLeft, kLower, Line("Platform", info.platform));
    page->AddLine("kernel_built", kRight, kUpper, Line("OS Built", info.kernelBuild));
    page->AddLine("kernel_version", kRight, kLower, Line("OS Version", version));
    return page;
}

SystemPage* ScreenPage(BRect frame, const LibSysInfo& info)
{
    SystemPage* page = new SystemPage(frame, "monitor_view");
    LibString size;
    size.Formatted("%s : %d x %d", "Size", info.screenWidth, info.screenHeight);
    page->AddLine("color_bits", kLeft, kUpper, Line("Color", info.ScreenDepthStr()));
    page->AddLine("screen_size", kRight, kUpper, size);
    return page;
}

SystemPage* CpuPage(BRect frame, const LibSysInfo& info)
{
    SystemPage* page = new SystemPage(frame, "advanced_view");
    page->AddLine("nbr_cpu", kLeft, kUpper, Line("Quantity", info.cpuCount));
    page->AddLine("cpu_type", kLeft, kLower, Line("Type", info.cpuType));
    page->AddLine("cpu_revision", kRight, kUpper, Line("Revision", info.cpuRevision));
    page->AddLine("cpu_clock_speed", kRight, kLower, Line("Clock Speed", info.cpuClockMHz, " MHz"));
    return page;
}

// The devices that have a name by the user, a line each.
std::string NamedDevices()
{
    constexpr size_t kMost = 20; // a tip has no scroll bar
    LibDeviceInfo devices;
    const std::vector<std::string> named = TypedPciNames().GiveTo(devices);
    std::string text;
    for (size_t i = 0; i < std::min(named.size(), kMost); i++)
        text += "\n" + named[i];
    return named.size() > kMost ? text + "\nand " + std::to_string(named.size() - kMost) + " more"
                                : text;
}

} // namespace

AboutSysWindow::AboutSysWindow(BLooper* looper)
    : LibWindow(LibFitInScreen(BRect(100, 50, 430, 130)), "About BeOS System", B_TITLED_WINDOW_LOOK,
        B_NORMAL_WINDOW_FEEL, B_NOT_RESIZABLE | B_NOT_ZOOMABLE),
      target(looper)
{
    SetName("AboutSysWindow");
    CloseOnEscape();
    const LibSysInfo info;
    BView* background = new BView(Bounds(), "view", B_FOLLOW_ALL_SIDES, B_WILL_DRAW);
    background->SetViewColor(ui_color(B_PANEL_BACKGROUND_COLOR));
    LibTabView* tabs = new LibTabView(
        Bounds().InsetByCopy(2, 2), "tab_view", B_WIDTH_FROM_WIDEST, B_FOLLOW_LEFT | B_FOLLOW_TOP);
    tabs->SetViewColor(ui_color(B_PANEL_BACKGROUND_COLOR));
    const BRect frame = tabs->ContentFrame();
    SystemPage* machine = MachinePage(frame, info);
    SystemPage* cpu = CpuPage(frame, info);
    const std::string text = LibMachineText(ReadMachineDetails());
    machine->SetToolTips(text + NamedDevices());
    cpu->SetToolTips(text);
    tabs->AddTab(machine, "Machine");
    tabs->AddTab(ScreenPage(frame, info), "Screen");
    tabs->AddTab(cpu, "CPU");
    background->AddChild(tabs);
    AddChild(background);
}

bool AboutSysWindow::QuitRequested()
{
    target->PostMessage('SYSQ', nullptr, this);
    return true;
}
