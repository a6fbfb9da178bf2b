// A window of the library as it stands on the screen, read from its Windows controls when it is made and worked through
// messages and keys, with no knowledge of the form behind it. It may outlive the window, and then finds nothing.
#pragma once

#include "simulator/screen/window.h"

#include <windows.h>

#include <map>
#include <memory>

namespace vellumo::screen
{

class RealWindow final : public Window
{
public:
    explicit RealWindow(HWND window);

    // Whether this is a window that the library, not the host, has opened.
    [[nodiscard]] static bool IsLibraryWindow(HWND window);
    // Whether it has something that the operator could press or fill in, and is not busy with a job of its own.
    [[nodiscard]] bool IsWaiting() const noexcept { return m_waits; }

    [[nodiscard]] std::string Title() const override;
    [[nodiscard]] ui::Control* Keyboard() const override;
    // The colours are those on the screen.
    [[nodiscard]] ui::Cell Cell(const ui::Grid& grid, std::size_t row, std::size_t column) const override;
    void Press(ui::Control& control) override;
    void Select(ui::Control& control, std::size_t place) override;
    void DoubleClick(ui::Grid& grid, std::size_t row) override;
    void Type(ui::TextBox& box, const std::string& text) override;
    // Keys go where real ones go: through the system, to whatever has the keyboard.
    bool Key(const std::string& key) override;
    void CloseByFrame() override;
    void ChooseFile(const std::filesystem::path& file) override;

private:
    HWND m_window;
    bool m_waits = false;
    std::vector<std::unique_ptr<ui::Control>> m_read;
    std::map<const ui::Control*, HWND> m_handles;
};

} // namespace vellumo::screen
