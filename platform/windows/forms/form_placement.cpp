#include "platform/windows/forms/form_placement.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace vellumo::windows
{
namespace
{

constexpr int margin = 11; // at 96 dots an inch
constexpr int gap = 7;

RECT WorkArea(HMONITOR monitor)
{
    MONITORINFO information{};
    information.cbSize = sizeof information;
    GetMonitorInfoW(monitor, &information);
    return information.rcWork;
}

} // namespace

const FormLayout& FormPlacement::Layout()
{
    std::vector<ControlView*> visible = m_controls.Visible();
    if (!m_layout || visible != m_laidOut)
    {
        m_laidOut = std::move(visible);
        std::vector<LayoutItem> items;
        for (const ControlView* view : m_laidOut)
        {
            items.push_back(view->Needs());
        }
        m_layout.emplace(std::move(items), m_surface.Pixels(margin), m_surface.Pixels(gap));
    }
    return *m_layout;
}

SIZE FormPlacement::NeededFrame()
{
    const SIZE needed = Layout().NeededSize();
    return m_surface.FrameAround({std::max<LONG>(needed.cx, m_surface.PixelsOfTwips(m_form.DesignSize().width)),
                                  std::max<LONG>(needed.cy, m_surface.PixelsOfTwips(m_form.DesignSize().height))});
}

void FormPlacement::Open(HWND owner)
{
    const RECT work = WorkArea(MonitorFromWindow(owner, MONITOR_DEFAULTTOPRIMARY));
    RECT around = work;
    if (owner != nullptr && IsIconic(owner) == FALSE)
    {
        GetWindowRect(owner, &around);
    }
    const SIZE frame = NeededFrame();
    const LONG left = (around.left + around.right - frame.cx) / 2;
    const LONG top = (around.top + around.bottom - frame.cy) / 2;
    Occupy({left, top, left + frame.cx, top + frame.cy}, work);
    m_controls.Make(Places());
    m_isOpen = true;
}

void FormPlacement::MoveTo(const RECT& suggested)
{
    Forget();
    const SIZE frame = NeededFrame();
    const LONG width = std::max(frame.cx, suggested.right - suggested.left);
    const LONG height = std::max(frame.cy, suggested.bottom - suggested.top);
    m_placedIn = {-1, -1};
    Occupy({suggested.left, suggested.top, suggested.left + width, suggested.top + height},
           WorkArea(MonitorFromRect(&suggested, MONITOR_DEFAULTTONEAREST)));
}

// As far as the screen has room.
void FormPlacement::Occupy(const RECT& wanted, const RECT& work)
{
    const LONG width = std::min(wanted.right - wanted.left, work.right - work.left);
    const LONG height = std::min(wanted.bottom - wanted.top, work.bottom - work.top);
    const LONG left = std::clamp(wanted.left, work.left, work.right - width);
    const LONG top = std::clamp(wanted.top, work.top, work.bottom - height);
    SetWindowPos(m_surface.Window(), nullptr, left, top, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
    RECT inner{};
    GetClientRect(m_surface.Window(), &inner);
    if (inner.right != m_placedIn.cx || inner.bottom != m_placedIn.cy) // another size has placed them already
    {
        PlaceControls();
    }
}

void FormPlacement::PlaceControls()
{
    if (!m_isOpen)
    {
        return;
    }
    const std::vector<RECT> places = Places();
    for (std::size_t i = 0; i < places.size(); ++i)
    {
        m_laidOut[i]->Place(places[i]);
    }
    InvalidateRect(m_surface.Window(), nullptr, TRUE);
}

std::vector<RECT> FormPlacement::Places()
{
    RECT inner{};
    GetClientRect(m_surface.Window(), &inner);
    m_placedIn = {inner.right, inner.bottom};
    return Layout().Place(m_placedIn);
}

void FormPlacement::Limit(MINMAXINFO& limits)
{
    const SIZE frame = NeededFrame();
    limits.ptMinTrackSize = {std::min(frame.cx, limits.ptMaxSize.x), std::min(frame.cy, limits.ptMaxSize.y)};
}

} // namespace vellumo::windows
