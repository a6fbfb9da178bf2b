// An operator for tests of one window: what is done and looked at, step by step.
#pragma once

#include "simulator/screen/window.h"

#include <doctest.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace vellumo::screen
{

// Does one step each time a window waits. When none is left the window should be gone; it is closed after a while.
class Steps final : public Operator
{
public:
    using Step = std::function<void(Window&)>;
    explicit Steps(std::vector<Step> steps)
        : m_steps(std::move(steps))
    {
    }

    void OnScreen(Window& window) noexcept override
    {
        if (m_next < m_steps.size())
        {
            m_steps[m_next++](window);
        }
        else if (m_idle++ == patience)
        {
            FAIL_CHECK("still open: " << window.Title());
            window.CloseByFrame();
        }
    }
    [[nodiscard]] bool Done() const { return m_next == m_steps.size(); }

private:
    static constexpr int patience = 20;

    std::vector<Step> m_steps;
    std::size_t m_next = 0;
    int m_idle = 0;
};

inline Steps::Step Key(const std::string& key)
{
    return [key](Window& window) { CHECK(window.Key(key)); };
}

inline std::vector<Steps::Step> Keys(const std::vector<std::string>& keys)
{
    std::vector<Steps::Step> steps;
    for (const std::string& key : keys)
    {
        steps.push_back(Key(key));
    }
    return steps;
}

// Of the first grid.
inline ui::Cell CellOf(const Window& window, std::size_t row, std::size_t column)
{
    return window.Cell(*window.All<ui::Grid>().at(0), row, column);
}

} // namespace vellumo::screen
