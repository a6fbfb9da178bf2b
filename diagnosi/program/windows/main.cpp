// VellumoDiagnosi on Windows: with arguments a command line, without any the window. It is a program with windows, so
// that none but its own opens when it is started from the menu; what it writes goes where its output was sent, else to
// the console that it was started from.
#include "diagnosi/program/command.h"
#include "diagnosi/program/form_diagnosi.h"
#include "diagnosi/program/windows/output.h"
#include "host/clock.h"
#include "platform/windows/adapters/registry_settings_store.h"
#include "platform/windows/forms/win32_desktop.h"
#include "platform/windows/system/text.h"

#include <windows.h>

#include <objbase.h>
#include <shellapi.h>

#include <ostream>
#include <string>
#include <vector>

namespace
{

std::vector<std::string> Words()
{
    int count = 0;
    wchar_t** const arguments = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> words;
    for (int i = 1; i < count; ++i)
    {
        words.push_back(vellumo::windows::FromWide(arguments[i]));
    }
    LocalFree(arguments);
    return words;
}

void Open(const std::string& path)
{
    ShellExecuteW(nullptr, L"open", vellumo::windows::ToWide(path).c_str(), nullptr, nullptr, SW_SHOWNORMAL);
}

} // namespace

int main()
{
    using namespace vellumo;
    CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    windows::RegistrySettingsStore settings;
    const host::SystemClock clock;
    diagnosi::Machine machine{settings, clock};
    const auto words = Words();
    auto code = diagnosi::ExitCode::Done;
    if (words.empty())
    {
        windows::Win32Desktop desktop;
        diagnosi::FormDiagnosi form(machine, desktop, Open);
        desktop.ShowModal(form);
    }
    else
    {
        diagnosi::Output buffer;
        std::ostream out(&buffer);
        code = diagnosi::Run(words, machine, out);
    }
    CoUninitialize();
    return static_cast<int>(code);
}
