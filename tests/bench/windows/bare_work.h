// What bare programs do beside their windows and calls.
#pragma once

#include <windows.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace vellumo::bench
{

// MSXML reads the text, and nobody listens. The text is UTF-8, whatever it says.
void ReadXml(std::string_view text);

// The system's file dialog; faults when it is cancelled.
void AskFile();

// What a window with a bar needs while a job reports: it draws at most twenty times a second, and messages are
// processed at every report.
class BareProgress
{
public:
    BareProgress(HWND window, std::size_t maximum);

    void Report(std::size_t position, const std::string& text);

private:
    HWND m_window;
    HWND m_bar;
    HWND m_label;
    ULONGLONG m_drawn = 0;
};

} // namespace vellumo::bench
