#include "torture/windows/imports.h"

#include "torture/outside_call.h"

#include <windows.h>
// After windows.h.
#include <commctrl.h>
#include <commdlg.h>
#include <objbase.h>
#include <oleauto.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <unordered_set>

#include <fcntl.h>
#include <io.h>

namespace vellumo::torture
{
namespace
{

// `value`: what the function returns when it fails, with `error` as the reason.
template <Kind kind, auto function, auto value, DWORD error = ERROR_NOT_ENOUGH_MEMORY>
struct Led;

template <Kind kind, class Result, class... Arguments, Result(WINAPI* function)(Arguments...), auto value, DWORD error>
struct Led<kind, function, value, error>
{
    static Result WINAPI Call(Arguments... arguments)
    {
        if (FailsInside(kind))
        {
            SetLastError(error);
            errno = ENOSPC;
            return Result(value);
        }
        return function(arguments...);
    }
};

// Memory that the DLL has taken at work and not given back.
std::unordered_set<void*>& Blocks()
{
    static auto* const blocks = new std::unordered_set<void*>();
    return *blocks;
}

void* Taken(void* block)
{
    if (IsInLibrary() && block != nullptr && Blocks().insert(block).second)
    {
        ++Seen().blocks;
    }
    return block;
}

void GivenBack(void* block)
{
    if (Blocks().erase(block) != 0)
    {
        --Seen().blocks;
    }
}

// Handles are told from addresses, since both may be small numbers.
void* Marked(void* handle)
{
    return reinterpret_cast<void*>(reinterpret_cast<std::uintptr_t>(handle) | std::uintptr_t(1) << 63);
}

// An object of the system's that is the DLL's to delete.
template <Kind kind, auto function>
struct Made;

template <Kind kind, class Result, class... Arguments, Result(WINAPI* function)(Arguments...)>
struct Made<kind, function>
{
    static Result WINAPI Call(Arguments... arguments)
    {
        const auto made = Led<kind, function, nullptr>::Call(arguments...);
        if (made != nullptr)
        {
            Taken(Marked(made));
        }
        return made;
    }
};

template <auto function>
struct Deleted;

template <class Object, BOOL(WINAPI* function)(Object)>
struct Deleted<function>
{
    static BOOL WINAPI Call(Object object)
    {
        GivenBack(Marked(object));
        return function(object);
    }
};

void* Malloc(std::size_t size)
{
    return FailsInside(Kind::Memory) ? nullptr : Taken(std::malloc(size));
}

void* Calloc(std::size_t count, std::size_t size)
{
    return FailsInside(Kind::Memory) ? nullptr : Taken(std::calloc(count, size));
}

void* Realloc(void* block, std::size_t size)
{
    if (FailsInside(Kind::Memory))
    {
        return nullptr;
    }
    const bool counted = Blocks().erase(block) != 0;
    Seen().blocks -= counted ? 1 : 0;
    return Taken(std::realloc(block, size));
}

void Free(void* block)
{
    GivenBack(block);
    std::free(block);
}

// Open functions with an argument that is there only when a file may be made.
template <class Name, int (*function)(const Name*, int, ...)>
int Open(const Name* file, int flags, int mode)
{
    if (FailsInside(Kind::OpenFile))
    {
        errno = EACCES;
        return -1;
    }
    return function(file, flags, mode);
}

// A queue that is emptied is one call, however many messages happen to be in it.
BOOL WINAPI Peek(MSG* message, HWND window, UINT first, UINT last, UINT how)
{
    static bool wasThere = false;
    wasThere = (wasThere || !FailsInside(Kind::Message)) && PeekMessageW(message, window, first, last, how) != FALSE;
    return wasThere ? TRUE : FALSE;
}

struct Import
{
    const char* name;
    void* ours;
};

template <class Function>
void* Address(Function* function)
{
    return reinterpret_cast<void*>(function);
}

const auto& Imports()
{
    static const std::array imports = {
        Import{"SysAllocStringLen", Address(Led<Kind::Bstr, &SysAllocStringLen, nullptr>::Call)},
        Import{"VariantCopy", Address(Led<Kind::Variant, &VariantCopy, E_OUTOFMEMORY>::Call)},
        Import{"VariantCopyInd", Address(Led<Kind::Variant, &VariantCopyInd, E_OUTOFMEMORY>::Call)},
        Import{"SafeArrayCreateVector", Address(Led<Kind::Array, &SafeArrayCreateVector, nullptr>::Call)},
        Import{"CoCreateInstance", Address(Led<Kind::Create, &CoCreateInstance, REGDB_E_CLASSNOTREG>::Call)},
        Import{"CLSIDFromProgID", Address(Led<Kind::Create, &CLSIDFromProgID, CO_E_CLASSSTRING>::Call)},
        Import{"CreateErrorInfo", Address(Led<Kind::Create, &CreateErrorInfo, E_OUTOFMEMORY>::Call)},
        Import{"LoadTypeLibEx", Address(Led<Kind::Create, &LoadTypeLibEx, TYPE_E_CANTLOADLIBRARY>::Call)},
        Import{"RegOpenKeyExW", Address(Led<Kind::ReadSetting, &RegOpenKeyExW, ERROR_ACCESS_DENIED>::Call)},
        Import{"RegGetValueW", Address(Led<Kind::ReadSetting, &RegGetValueW, ERROR_ACCESS_DENIED>::Call)},
        Import{"RegSetValueExW", Address(Led<Kind::WriteSetting, &RegSetValueExW, ERROR_ACCESS_DENIED>::Call)},
        Import{"CreateWindowExW", Address(Led<Kind::Window, &CreateWindowExW, nullptr>::Call)},
        Import{"DialogBoxIndirectParamW", Address(Led<Kind::Window, &DialogBoxIndirectParamW, -1>::Call)},
        Import{"MessageBoxW", Address(Led<Kind::Window, &MessageBoxW, 0>::Call)},
        Import{"GetOpenFileNameW", Address(Led<Kind::Window, &GetOpenFileNameW, FALSE>::Call)},
        Import{"RegisterClassExW", Address(Led<Kind::Window, &RegisterClassExW, 0>::Call)},
        Import{"RedrawWindow", Address(Led<Kind::Draw, &RedrawWindow, FALSE>::Call)},
        Import{"CreateFontW", Address(Made<Kind::Font, &CreateFontW>::Call)},
        Import{"GetDC", Address(Led<Kind::Picture, &GetDC, nullptr>::Call)},
        Import{"CreateCompatibleDC", Address(Made<Kind::Picture, &CreateCompatibleDC>::Call)},
        Import{"CreateCompatibleBitmap", Address(Made<Kind::Picture, &CreateCompatibleBitmap>::Call)},
        Import{"LoadImageW", Address(Led<Kind::Picture, &LoadImageW, nullptr>::Call)},
        Import{"ImageList_Create", Address(Led<Kind::Picture, &ImageList_Create, nullptr>::Call)},
        Import{"DeleteObject", Address(Deleted<&DeleteObject>::Call)},
        Import{"DeleteDC", Address(Deleted<&DeleteDC>::Call)},
        Import{"SetTimer", Address(Led<Kind::Timer, &SetTimer, 0>::Call)},
        Import{"PeekMessageW", Address(&Peek)},
        Import{"PostMessageW", Address(Led<Kind::Message, &PostMessageW, FALSE, ERROR_NOT_ENOUGH_QUOTA>::Call)},
        Import{"CreateFileW", Address(Led<Kind::OpenFile, &CreateFileW, -1, ERROR_ACCESS_DENIED>::Call)},
        Import{"_wfopen", Address(Led<Kind::OpenFile, &_wfopen, nullptr>::Call)},
        Import{"_wopen", Address(&Open<wchar_t, &_wopen>)},
        Import{"_open", Address(&Open<char, &_open>)},
        Import{"_wfindfirst64", Address(Led<Kind::OpenFile, &_wfindfirst64, -1>::Call)},
        Import{"ReadFile", Address(Led<Kind::ReadFile, &ReadFile, FALSE, ERROR_READ_FAULT>::Call)},
        Import{"_read", Address(Led<Kind::ReadFile, &_read, -1>::Call)},
        Import{"WriteFile", Address(Led<Kind::WriteFile, &WriteFile, FALSE, ERROR_DISK_FULL>::Call)},
        Import{"_write", Address(Led<Kind::WriteFile, &_write, -1>::Call)},
        Import{"FlushFileBuffers", Address(Led<Kind::WriteFile, &FlushFileBuffers, FALSE, ERROR_DISK_FULL>::Call)},
        Import{"_wmkdir", Address(Led<Kind::MakeFolder, &_wmkdir, -1>::Call)},
        Import{"malloc", Address(&Malloc)},
        Import{"calloc", Address(&Calloc)},
        Import{"realloc", Address(&Realloc)},
        Import{"free", Address(&Free)},
    };
    return imports;
}

void Lead(void** place, const char* name)
{
    for (const auto& [known, ours] : Imports())
    {
        if (std::strcmp(known, name) == 0 && *place != ours)
        {
            DWORD before = 0;
            VirtualProtect(place, sizeof *place, PAGE_READWRITE, &before);
            *place = ours;
            VirtualProtect(place, sizeof *place, before, &before);
        }
    }
}

} // namespace

void LeadImports(HMODULE library)
{
    auto* const base = reinterpret_cast<char*>(library);
    const auto* const dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto* const head = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
    const auto& folder = head->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    for (const auto* from = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + folder.VirtualAddress);
         from->Name != 0; ++from)
    {
        const auto* name = reinterpret_cast<const IMAGE_THUNK_DATA*>(base + from->OriginalFirstThunk);
        auto* place = reinterpret_cast<void**>(base + from->FirstThunk);
        for (; name->u1.AddressOfData != 0; ++name, ++place)
        {
            if (!IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal))
            {
                const auto* const byName = reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(base + name->u1.AddressOfData);
                Lead(place, reinterpret_cast<const char*>(&byName->Name[0]));
            }
        }
    }
}

} // namespace vellumo::torture
