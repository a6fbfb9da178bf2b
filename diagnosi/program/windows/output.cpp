#include "diagnosi/program/windows/output.h"

#include "diagnosi/program/command.h"
#include "platform/windows/system/text.h"

#include <utility>

namespace vellumo::diagnosi
{

Output::Output()
    : m_handle(GetStdHandle(STD_OUTPUT_HANDLE))
{
    if (GetFileType(m_handle) == FILE_TYPE_UNKNOWN && AttachConsole(ATTACH_PARENT_PROCESS))
    {
        m_handle = CreateFileW(L"CONOUT$", GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                               OPEN_EXISTING, 0, nullptr);
    }
    DWORD mode = 0;
    m_isConsole = GetConsoleMode(m_handle, &mode) != FALSE;
}

Output::~Output()
{
    sync();
}

Output::int_type Output::overflow(int_type character)
{
    if (!traits_type::eq_int_type(character, traits_type::eof()))
    {
        const char one = traits_type::to_char_type(character);
        xsputn(&one, 1);
    }
    return traits_type::not_eof(character);
}

std::streamsize Output::xsputn(const char* text, std::streamsize count)
{
    m_line.append(text, static_cast<std::size_t>(count));
    if (m_line.ends_with('\n'))
    {
        sync();
    }
    return count;
}

int Output::sync()
{
    Write(WithWindowsLines(std::exchange(m_line, {})));
    return 0;
}

void Output::Write(const std::string& text) const
{
    DWORD written = 0;
    if (m_isConsole)
    {
        const auto wide = windows::ToWide(text);
        WriteConsoleW(m_handle, wide.data(), static_cast<DWORD>(wide.size()), &written, nullptr);
    }
    else if (!text.empty())
    {
        WriteFile(m_handle, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
    }
}

} // namespace vellumo::diagnosi
