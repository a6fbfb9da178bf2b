// What has to be given back after drawing, each with an owner: drawing may throw, and the system has few of them.
#pragma once

#include <windows.h>

#include <algorithm>

namespace vellumo::windows
{

// The answer to WM_PAINT.
class WindowPaint
{
public:
    explicit WindowPaint(HWND window) noexcept
        : m_window(window)
        , m_context(BeginPaint(window, &m_paint))
    {
    }
    ~WindowPaint() { EndPaint(m_window, &m_paint); }
    WindowPaint(const WindowPaint&) = delete;
    WindowPaint& operator=(const WindowPaint&) = delete;
    [[nodiscard]] HDC Context() const noexcept { return m_context; }

private:
    HWND m_window;
    PAINTSTRUCT m_paint{};
    HDC m_context;
};

// Like the screen, to measure texts on.
class MeasuringContext
{
public:
    MeasuringContext() noexcept
        : m_context(CreateCompatibleDC(nullptr))
    {
    }
    ~MeasuringContext() { DeleteDC(m_context); }
    MeasuringContext(const MeasuringContext&) = delete;
    MeasuringContext& operator=(const MeasuringContext&) = delete;
    [[nodiscard]] HDC Context() const noexcept { return m_context; }

private:
    HDC m_context;
};

// A picture in memory like those of `model`.
class MemoryPicture
{
public:
    MemoryPicture(HDC model, int width, int height) noexcept
        : m_context(CreateCompatibleDC(model))
        , m_picture(CreateCompatibleBitmap(model, std::max(1, width), std::max(1, height)))
        , m_before(SelectObject(m_context, m_picture))
    {
    }
    ~MemoryPicture()
    {
        SelectObject(m_context, m_before);
        DeleteObject(m_picture);
        DeleteDC(m_context);
    }
    MemoryPicture(const MemoryPicture&) = delete;
    MemoryPicture& operator=(const MemoryPicture&) = delete;
    [[nodiscard]] HDC Context() const noexcept { return m_context; }

private:
    HDC m_context;
    HBITMAP m_picture;
    HGDIOBJ m_before;
};

} // namespace vellumo::windows
