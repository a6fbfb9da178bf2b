// VellumoDiagnosi at a terminal, for tests and for whoever develops it. The settings that are the registry's on Windows
// come from a file (platform/native/file_settings_store.h):
//
//   VellumoDiagnosi --impostazioni FILE COMANDO [OPZIONI]
//   VellumoDiagnosi --impostazioni FILE                      the window, as text
#include "diagnosi/program/command.h"
#include "diagnosi/program/form_diagnosi.h"
#include "host/clock.h"
#include "platform/native/console_desktop.h"
#include "platform/native/file_settings_store.h"

#include <iostream>
#include <string>
#include <vector>

int main(int count, char** arguments)
{
    using namespace vellumo;
    std::vector<std::string> words(arguments + 1, arguments + count);
    std::string file;
    if (words.size() >= 2 && words.front() == "--impostazioni")
    {
        file = words.at(1);
        words.erase(words.begin(), words.begin() + 2);
    }
    platform::FileSettingsStore settings(file);
    const host::SystemClock clock;
    diagnosi::Machine machine{settings, clock};
    if (words.empty())
    {
        native::ConsoleDesktop desktop(std::cin, std::cout);
        diagnosi::FormDiagnosi form(machine, desktop, [](const std::string& path) { std::cout << path << '\n'; });
        desktop.ShowModal(form);
        return 0;
    }
    return static_cast<int>(diagnosi::Run(words, machine, std::cout));
}
