// A window of the library as it stands on the screen, read from its Windows controls and worked through messages and
// keys, with no knowledge of the form behind it. A handle; it may outlive the window, and then finds nothing.
#pragma once

#include "player/screen.h"

#include <windows.h>

namespace vellumo::player
{

class RealWindow final : public Window
{
public:
    explicit RealWindow(HWND window)
        : m_window(window)
    {
    }

    // Whether this is a window that the library, not the host, has opened.
    [[nodiscard]] static bool IsLibraryWindow(HWND window);
    // Whether it has something that the operator could press or fill in, and is not busy with a job of its own.
    [[nodiscard]] bool IsWaiting() const;

    [[nodiscard]] std::uint64_t Id() const override;
    [[nodiscard]] WindowKind Kind() const override;
    [[nodiscard]] std::string Title() const override;
    [[nodiscard]] ui::Icon Icon() const override;
    [[nodiscard]] std::string Text() const override;
    [[nodiscard]] std::vector<ControlSeen> Controls() const override;
    // The colours are those on the screen.
    [[nodiscard]] CellSeen Cell(std::size_t grid, std::size_t row, std::size_t column) const override;

    void Press(std::size_t button) override;
    void SelectRow(std::size_t grid, std::size_t row) override;
    void DoubleClickRow(std::size_t grid, std::size_t row) override;
    void Type(std::size_t textBox, const std::string& text) override;
    void SetToggle(std::size_t toggle, bool on) override;
    void ChooseEntry(std::size_t list, std::size_t entry) override;
    // Keys go where real ones go: through the system, to whatever has the keyboard.
    bool Key(const std::string& key) override;
    void CloseByFrame() override;
    void ChooseFile(const std::filesystem::path& file) override;

private:
    HWND m_window;
};

} // namespace vellumo::player
