#include "platform/windows/forms/system_look.h"

namespace vellumo::windows
{
namespace
{

// 0 to 255, as the eye weighs the three.
int Lightness(COLORREF colour) noexcept
{
    return (GetRValue(colour) * 30 + GetGValue(colour) * 59 + GetBValue(colour) * 11) / 100;
}

bool IsContrastScheme() noexcept
{
    HIGHCONTRASTW contrast{};
    contrast.cbSize = sizeof contrast;
    return SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0) != FALSE &&
           (contrast.dwFlags & HCF_HIGHCONTRASTON) != 0;
}

} // namespace

bool OwnColoursFit() noexcept
{
    constexpr int light = 200;
    constexpr int dark = 80;
    return Lightness(GetSysColor(COLOR_WINDOW)) >= light && Lightness(GetSysColor(COLOR_WINDOWTEXT)) <= dark &&
           !IsContrastScheme();
}

COLORREF GridLineColour() noexcept
{
    const COLORREF face = GetSysColor(COLOR_3DFACE);
    return face != GetSysColor(COLOR_WINDOW) ? face : GetSysColor(COLOR_3DSHADOW);
}

} // namespace vellumo::windows
