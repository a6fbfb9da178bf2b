#include "platform/windows/forms/form_placement.h"

#include "platform/windows/forms/form_layout.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace vellumo::windows
{
namespace
{

constexpr int margin = 11; // at 96 dots an inch
constexpr int gap = 7;

FormLayout LayOut(const std::vector<ControlView*>& views, const Surface& surface)
{
    std::vector<LayoutItem> items;
    items.reserve(views.size());
    for (const ControlView* view : views)
    {
        items.push_back(view->Needs());
    }
    return {std::move(items), surface.Pixels(margin), surface.Pixels(gap)};
}

} // namespace

SIZE FormPlacement::NeededFrame() const
{
    const SIZE needed = LayOut(m_controls.Visible(), m_surface).NeededSize();
    return m_surface.FrameAround({std::max<LONG>(needed.cx, m_surface.PixelsOfTwips(m_form.DesignSize().width)),
                                  std::max<LONG>(needed.cy, m_surface.PixelsOfTwips(m_form.DesignSize().height))});
}

void FormPlacement::PlaceWindow(HWND owner) const
{
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    GetMonitorInfoW(MonitorFromWindow(owner, MONITOR_DEFAULTTOPRIMARY), &monitor);
    const RECT& work = monitor.rcWork;
    RECT around = work;
    if (owner != nullptr && IsIconic(owner) == FALSE)
    {
        GetWindowRect(owner, &around);
    }
    const SIZE frame = NeededFrame();
    const LONG width = std::min(frame.cx, work.right - work.left);
    const LONG height = std::min(frame.cy, work.bottom - work.top);
    const LONG left = std::clamp((around.left + around.right - width) / 2, work.left, work.right - width);
    const LONG top = std::clamp((around.top + around.bottom - height) / 2, work.top, work.bottom - height);
    SetWindowPos(m_surface.Window(), nullptr, left, top, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
    PlaceControls();
}

void FormPlacement::MoveTo(const RECT& suggested) const
{
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    GetMonitorInfoW(MonitorFromRect(&suggested, MONITOR_DEFAULTTONEAREST), &monitor);
    const RECT& work = monitor.rcWork;
    const SIZE frame = NeededFrame();
    const LONG width = std::min(std::max(frame.cx, suggested.right - suggested.left), work.right - work.left);
    const LONG height = std::min(std::max(frame.cy, suggested.bottom - suggested.top), work.bottom - work.top);
    const LONG left = std::clamp(suggested.left, work.left, work.right - width);
    const LONG top = std::clamp(suggested.top, work.top, work.bottom - height);
    SetWindowPos(m_surface.Window(), nullptr, left, top, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
    PlaceControls();
}

void FormPlacement::PlaceControls() const
{
    RECT inner{};
    GetClientRect(m_surface.Window(), &inner);
    const std::vector<ControlView*> views = m_controls.Visible();
    const std::vector<RECT> places = LayOut(views, m_surface).Place({inner.right, inner.bottom});
    for (std::size_t i = 0; i < views.size(); ++i)
    {
        views[i]->Place(places[i]);
    }
    InvalidateRect(m_surface.Window(), nullptr, TRUE);
}

void FormPlacement::Limit(MINMAXINFO& limits) const
{
    const SIZE frame = NeededFrame();
    limits.ptMinTrackSize = {std::min(frame.cx, limits.ptMaxSize.x), std::min(frame.cy, limits.ptMaxSize.y)};
}

} // namespace vellumo::windows
