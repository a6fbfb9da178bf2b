// Where a program with windows writes what its command line asked for: the file or pipe that its output was sent to, as
// UTF-8, else the console that started it, else nowhere.
#pragma once

#include <windows.h>

#include <streambuf>
#include <string>

namespace vellumo::diagnosi
{

class Output final : public std::streambuf
{
public:
    Output();
    ~Output() override;
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

protected:
    int_type overflow(int_type character) override;
    std::streamsize xsputn(const char* text, std::streamsize count) override;
    int sync() override;

private:
    void Write(const std::string& text) const;

    HANDLE m_handle = nullptr;
    bool m_isConsole = false;
    std::string m_line; // not yet written
};

} // namespace vellumo::diagnosi
