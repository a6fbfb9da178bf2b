#include "diagnosi/checks/windows/program_file.h"

#include "host/path.h"
#include "platform/windows/system/text.h"

#include <windows.h>

#include <cstring>
#include <fstream>
#include <vector>

namespace vellumo::diagnosi
{
namespace
{

#ifdef _WIN64
constexpr WORD ours = IMAGE_FILE_MACHINE_AMD64;
#else
constexpr WORD ours = IMAGE_FILE_MACHINE_I386;
#endif

template <class Part>
bool ReadAt(std::ifstream& in, std::streamoff place, Part& part)
{
    in.seekg(place);
    return static_cast<bool>(in.read(reinterpret_cast<char*>(&part), sizeof part));
}

} // namespace

ProgramKind KindOf(const std::string& path)
{
    std::ifstream in(host::NativePath(path), std::ios::binary);
    if (!in)
    {
        return ProgramKind::NotThere;
    }
    IMAGE_DOS_HEADER dos{};
    struct
    {
        DWORD signature;
        IMAGE_FILE_HEADER file;
    } header{};
    if (!ReadAt(in, 0, dos) || dos.e_magic != IMAGE_DOS_SIGNATURE || !ReadAt(in, dos.e_lfanew, header) ||
        header.signature != IMAGE_NT_SIGNATURE)
    {
        return ProgramKind::NoProgram;
    }
    return header.file.Machine == ours ? ProgramKind::Loads : ProgramKind::OtherBitness;
}

std::optional<std::string> FileVersion(const std::string& path)
{
    const auto wide = windows::ToWide(path);
    DWORD ignored = 0;
    std::vector<char> block(GetFileVersionInfoSizeW(wide.c_str(), &ignored));
    void* found = nullptr;
    UINT size = 0;
    if (block.empty() || !GetFileVersionInfoW(wide.c_str(), 0, static_cast<DWORD>(block.size()), block.data()) ||
        !VerQueryValueW(block.data(), L"\\", &found, &size) || size < sizeof(VS_FIXEDFILEINFO))
    {
        return std::nullopt;
    }
    VS_FIXEDFILEINFO info{};
    std::memcpy(&info, found, sizeof info);
    return std::to_string(HIWORD(info.dwFileVersionMS)) + '.' + std::to_string(LOWORD(info.dwFileVersionMS)) + '.' +
           std::to_string(HIWORD(info.dwFileVersionLS)) + '.' + std::to_string(LOWORD(info.dwFileVersionLS));
}

} // namespace vellumo::diagnosi
