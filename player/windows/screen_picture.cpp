#include "player/windows/screen_picture.h"

#include "platform/windows/adapters/com_ptr.h"

#include <windows.h>
// After windows.h.
#include <wincodec.h>

#include <memory>

namespace vellumo::player
{
namespace
{

using windows::ComPtr;

struct DeleteBitmap
{
    void operator()(HBITMAP bitmap) const noexcept { DeleteObject(bitmap); }
};
using Bitmap = std::unique_ptr<std::remove_pointer_t<HBITMAP>, DeleteBitmap>;

BOOL CALLBACK AddOwnWindow(HWND window, LPARAM around) noexcept
{
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    RECT place{};
    if (process == GetCurrentProcessId() && IsWindowVisible(window) != FALSE && GetWindowRect(window, &place) != FALSE)
    {
        auto& all = *reinterpret_cast<RECT*>(around);
        UnionRect(&all, &all, &place);
    }
    return TRUE;
}

// Empty when this process shows nothing.
RECT AroundOwnWindows()
{
    constexpr int margin = 12; // pixels
    RECT around{};
    EnumWindows(&AddOwnWindow, reinterpret_cast<LPARAM>(&around));
    if (IsRectEmpty(&around) == FALSE)
    {
        const RECT screen{0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
        InflateRect(&around, margin, margin);
        IntersectRect(&around, &around, &screen);
    }
    return around;
}

// Brings to the screen what this thread's windows have drawn so far, by a look for a message that nobody sends, and
// gives the desktop the time to paint over windows that have just gone.
void LetScreenSettle()
{
    constexpr UINT never = 0xBFFF;
    constexpr DWORD pause = 50; // milliseconds
    MSG message;
    PeekMessageW(&message, nullptr, never, never, PM_NOREMOVE);
    Sleep(pause);
}

// Copies the screen as it is: what covers what, frames, everything.
Bitmap CopyScreen(const RECT& area)
{
    const int width = area.right - area.left;
    const int height = area.bottom - area.top;
    const HDC screen = GetDC(nullptr);
    const HDC copy = CreateCompatibleDC(screen);
    Bitmap bitmap(CreateCompatibleBitmap(screen, width, height));
    const HGDIOBJ before = SelectObject(copy, bitmap.get());
    const BOOL copied = BitBlt(copy, 0, 0, width, height, screen, area.left, area.top, SRCCOPY | CAPTUREBLT);
    SelectObject(copy, before);
    DeleteDC(copy);
    ReleaseDC(nullptr, screen);
    return copied != FALSE ? std::move(bitmap) : Bitmap();
}

template <class Interface, class Call>
ComPtr<Interface> Made(Call&& call)
{
    Interface* made = nullptr;
    return SUCCEEDED(call(&made)) ? ComPtr<Interface>::Attach(made) : ComPtr<Interface>();
}

bool WriteFrame(IWICBitmapEncoder& encoder, IWICBitmapSource& picture)
{
    const auto frame = Made<IWICBitmapFrameEncode>([&](auto made) { return encoder.CreateNewFrame(made, nullptr); });
    return frame && SUCCEEDED(frame->Initialize(nullptr)) && SUCCEEDED(frame->WriteSource(&picture, nullptr)) &&
           SUCCEEDED(frame->Commit()) && SUCCEEDED(encoder.Commit());
}

bool WritePng(HBITMAP bitmap, const std::filesystem::path& file)
{
    const auto factory = Made<IWICImagingFactory>(
        [](auto made)
        {
            return CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER, IID_IWICImagingFactory,
                                    reinterpret_cast<void**>(made));
        });
    if (!factory)
    {
        return false;
    }
    const auto picture = Made<IWICBitmap>(
        [&](auto made) { return factory->CreateBitmapFromHBITMAP(bitmap, nullptr, WICBitmapIgnoreAlpha, made); });
    const auto stream = Made<IWICStream>([&](auto made) { return factory->CreateStream(made); });
    const auto encoder = Made<IWICBitmapEncoder>(
        [&](auto made) { return factory->CreateEncoder(GUID_ContainerFormatPng, nullptr, made); });
    return picture && stream && encoder &&
           SUCCEEDED(stream->InitializeFromFilename(file.wstring().c_str(), GENERIC_WRITE)) &&
           SUCCEEDED(encoder->Initialize(stream.Get(), WICBitmapEncoderNoCache)) && WriteFrame(*encoder, *picture);
}

} // namespace

bool SaveScreenPicture(const std::filesystem::path& file)
{
    const RECT area = AroundOwnWindows();
    if (IsRectEmpty(&area) != FALSE)
    {
        return false;
    }
    LetScreenSettle();
    const Bitmap bitmap = CopyScreen(area);
    return bitmap && WritePng(bitmap.get(), file);
}

} // namespace vellumo::player
