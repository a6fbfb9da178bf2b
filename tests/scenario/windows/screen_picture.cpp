#include "tests/scenario/windows/screen_picture.h"

#include "platform/windows/com_ptr.h"

#include <windows.h>
// After windows.h.
#include <wincodec.h>

#include <memory>

namespace vellumo::scenario
{
namespace
{

using windows::ComPtr;

struct DeleteBitmap
{
    void operator()(HBITMAP bitmap) const noexcept { DeleteObject(bitmap); }
};
using Bitmap = std::unique_ptr<std::remove_pointer_t<HBITMAP>, DeleteBitmap>;

// Copies the screen as it is: what covers what, frames, everything.
Bitmap CopyScreen()
{
    const int width = GetSystemMetrics(SM_CXSCREEN);
    const int height = GetSystemMetrics(SM_CYSCREEN);
    const HDC screen = GetDC(nullptr);
    const HDC copy = CreateCompatibleDC(screen);
    Bitmap bitmap(CreateCompatibleBitmap(screen, width, height));
    const HGDIOBJ before = SelectObject(copy, bitmap.get());
    const BOOL copied = BitBlt(copy, 0, 0, width, height, screen, 0, 0, SRCCOPY | CAPTUREBLT);
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
    const Bitmap bitmap = CopyScreen();
    return bitmap && WritePng(bitmap.get(), file);
}

} // namespace vellumo::scenario
