// A control other than a grid, and the texts and pictures beside them, as screen readers get them.
#pragma once

#include "platform/windows/forms/accessible.h"
#include "ui/controls.h"

#include <string>

namespace vellumo::windows
{

// "&Conferma" as it is read, "Conferma", and its keys, "Alt+C"; a mark is no part of either.
[[nodiscard]] std::wstring NameOf(const std::string& caption);
[[nodiscard]] std::wstring ShortcutOf(const std::string& caption);

class AccessibleControl final : public Accessible
{
public:
    // A control without text is named by what stands before it. Both outlive the connection.
    AccessibleControl(HWND window, ui::Control& control, const ui::Control& namedBy)
        : Accessible(window)
        , m_control(control)
        , m_namedBy(namedBy)
    {
    }

protected:
    [[nodiscard]] AccessibleFacts Facts(LONG part) const override;
    void Act() override;

private:
    ~AccessibleControl() override = default;

    ui::Control& m_control;
    const ui::Control& m_namedBy;
};

// A text or picture that is no control of the form by itself.
class AccessibleStatic final : public Accessible
{
public:
    AccessibleStatic(HWND window, ui::Image image)
        : Accessible(window)
        , m_image(image)
    {
    }

protected:
    [[nodiscard]] AccessibleFacts Facts(LONG part) const override;

private:
    ~AccessibleStatic() override = default;

    ui::Image m_image; // none: a text
};

} // namespace vellumo::windows
