#include "player/player.h"

#include "host/fault.h"
#include "player/cell.h"

#include <algorithm>
#include <exception>

namespace vellumo::player
{
namespace
{

// How often a window may be seen again, with nothing left to do in it, before it counts as still open. Its messages
// have been dispatched each time, so more than a few mean that it does not close.
constexpr int patience = 20;

} // namespace

void Player::Begin(const Place& call, std::vector<ExpectedWindow> windows, bool lenient)
{
    m_call = call;
    m_windows = std::move(windows);
    m_lenient = lenient;
    m_next = 0;
    m_current = nullptr;
    m_currentId = 0;
    m_seenId = 0;
    m_unexpected.clear();
    m_patience = patience;
}

void Player::End()
{
    if (m_current != nullptr && m_item < m_current->items.size() && !m_lenient)
    {
        m_report(m_current->items[m_item].place, "the window " + Quoted(m_current->title) + " was gone before this");
    }
    for (; m_next < m_windows.size() && !m_lenient; ++m_next)
    {
        const auto& missing = m_windows[m_next];
        m_report(missing.place, std::string(missing.kind == WindowKind::Box ? "the box " : "the window ") +
                                    Quoted(missing.title) + " did not appear");
    }
    m_windows.clear();
    m_current = nullptr;
}

void Player::OnScreen(Window& window) noexcept
{
    try
    {
        Play(window);
    }
    catch (const std::exception& fault)
    {
        host::PassOver([&] { m_report(m_call, std::string("the player failed: ") + fault.what()); });
        host::PassOver([&] { Dismiss(window); });
    }
}

void Player::OnBusy(const Window& window) noexcept
{
    host::PassOver([&] { m_onBusy(window); });
}

void Player::Play(Window& window)
{
    if (window.Id() != m_seenId)
    {
        m_seenId = window.Id();
        m_onWindow(window, m_known.insert(window.Id()).second);
    }
    if (m_current != nullptr && window.Id() == m_currentId && m_item < m_current->items.size())
    {
        Work(window);
        return;
    }
    const bool worked = window.Id() == m_currentId;
    // Any press ends a box, so one that has been worked is on its way out; a form may come back into play.
    if ((!worked || window.Kind() == WindowKind::Form) && Advance(window))
    {
        Work(window);
        return;
    }
    if (worked && m_patience-- > 0)
    {
        return;
    }
    Unexpected(window);
}

bool Player::Fits(const ExpectedWindow& expected, const Window& window)
{
    return expected.kind == window.Kind() && expected.title == window.Title();
}

bool Player::Advance(const Window& window)
{
    const auto fits = [&](const ExpectedWindow& expected) { return Fits(expected, window); };
    const auto begin = m_windows.begin() + static_cast<std::ptrdiff_t>(m_next);
    const auto found = m_lenient ? std::find_if(begin, m_windows.end(), fits) : begin;
    if (found == m_windows.end() || !fits(*found))
    {
        return false;
    }
    m_current = &*found;
    m_next = static_cast<std::size_t>(found - m_windows.begin()) + 1;
    m_item = 0;
    m_currentId = window.Id();
    m_patience = patience;
    return true;
}

void Player::Work(Window& window)
{
    while (m_item < m_current->items.size())
    {
        const auto& item = m_current->items[m_item++];
        if (item.IsAction())
        {
            m_onAction(window, item.told);
        }
        const auto difference = item.perform(window);
        if (difference)
        {
            m_report(item.place, *difference);
        }
        if (item.IsAction())
        {
            if (difference)
            {
                // What was to be done cannot be done, and what follows builds on it.
                m_item = m_current->items.size();
                Dismiss(window);
            }
            return;
        }
    }
}

void Player::Unexpected(Window& window)
{
    if (std::find(m_unexpected.begin(), m_unexpected.end(), window.Id()) == m_unexpected.end())
    {
        m_unexpected.push_back(window.Id());
        const bool stillOpen = window.Id() == m_currentId;
        const auto expected = m_next < m_windows.size() ? "expected now: " + Quoted(m_windows[m_next].title)
                                                        : std::string("no further window is expected");
        m_report(m_next < m_windows.size() ? m_windows[m_next].place : m_call,
                 Describe(window) + (stillOpen ? " is still open" : " appeared") + "; " + expected);
    }
    Dismiss(window);
}

// The way out that does least.
void Player::Dismiss(Window& window)
{
    if (window.Kind() != WindowKind::Box)
    {
        window.CloseByFrame();
        return;
    }
    const auto buttons = window.Buttons();
    for (const auto way : {ui::Answer::Cancel, ui::Answer::No, ui::Answer::Ok})
    {
        const auto found = std::find_if(buttons.begin(), buttons.end(),
                                        [way](const ButtonSeen& button) { return button.standard == way; });
        if (found != buttons.end())
        {
            window.Press(static_cast<std::size_t>(found - buttons.begin()));
            return;
        }
    }
}

} // namespace vellumo::player
