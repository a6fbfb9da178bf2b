// norda [--nuovo] [CARTELLA]
//
// Opens the practice in the folder (by default "studio" beside the program), made when there is none, and reads
// commands.
#include "host/version.h"
#include "simulator/norda/platform.h"
#include "simulator/norda/practice.h"
#include "simulator/norda/program/console.h"
#include "simulator/norda/program/platform_workstation.h"

#include <exception>
#include <filesystem>
#include <iostream>
#include <string>

int main(int count, char** words)
{
    using namespace vellumo::norda;
    try
    {
        auto folder = ProgramFolder() / "studio";
        bool isNew = false;
        for (int i = 1; i < count; ++i)
        {
            const std::string word = words[i];
            if (word == "--nuovo")
            {
                isNew = true;
            }
            else if (word == "--version")
            {
                std::cout << "norda " << vellumo::host::fullVersion << '\n';
                return 0;
            }
            else if (word.empty() || word.front() == '-')
            {
                std::cout
                    << "uso: norda [--nuovo] [CARTELLA]\n     norda --version\n"
                       "Apre lo studio nella CARTELLA (\"studio\" accanto al programma) e legge comandi; \"aiuto\"\n"
                       "li elenca. --nuovo lo rifà come al primo avvio.\n";
                return word == "--aiuto" || word == "--help" ? 0 : 2;
            }
            else
            {
                folder = std::filesystem::u8path(word);
            }
        }
        const Practice practice(folder);
        if (isNew || !practice.Exists())
        {
            practice.Create();
        }
        const auto workstation = MakeWorkstation(folder);
        Desk desk(practice, *workstation, std::cin, std::cout);
        Console(desk).Run();
        return 0;
    }
    catch (const std::exception& fault)
    {
        std::cerr << "norda: " << fault.what() << '\n';
        return 1;
    }
}
