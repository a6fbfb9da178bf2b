#include "simulator/norda/program/console.h"

#include "host/text.h"
#include "simulator/norda/program/command.h"

#include <array>
#include <exception>
#include <ostream>
#include <utility>

namespace vellumo::norda
{
namespace
{

using Section = std::pair<const char*, const Commands*>;
constexpr std::array<Section, 3> sections = {
    {{"Norda", &practiceCommands}, {"Le chiamate alla libreria", &callCommands}, {"Il SISS simulato", &sissCommands}}};

std::string Usage(const Command& command)
{
    return std::string(command.name) + (command.arguments.empty() ? "" : " ") + std::string(command.arguments);
}

} // namespace

void Console::Run()
{
    m_desk.Out() << "Norda, cartella clinica simulata. Studio in " << m_desk.ThePractice().Folder().string()
                 << "\nUtente: " << m_desk.TheUser().fullName
                 << ". \"aiuto\" elenca i comandi, \"esci\" chiude il programma.\n";
    for (std::string line; line != "esci" && !m_desk.IsAtEnd();)
    {
        line = m_desk.ReadLine(m_desk.TheUser().logOn + "> ");
        if (line == "aiuto")
        {
            Help();
        }
        else if (!line.empty() && line.front() != '#' && line != "esci")
        {
            Obey(line);
        }
    }
}

void Console::Obey(const std::string& line)
{
    const auto word = line.substr(0, line.find(' '));
    const std::string behind(host::Trimmed(std::string_view(line).substr(word.size())));
    std::string usages;
    for (const auto& [title, commands] : sections)
    {
        for (const auto& command : *commands)
        {
            if (command.name != word)
            {
                continue;
            }
            if (const auto given = Fit(command, behind))
            {
                try
                {
                    command.run(m_desk, *given);
                }
                catch (const std::exception& fault)
                {
                    m_desk.Out() << "Errore: " << fault.what() << '\n';
                }
                return;
            }
            usages += "Si scrive: " + Usage(command) + '\n';
        }
    }
    m_desk.Out() << (usages.empty() ? "Comando sconosciuto: " + word + ". \"aiuto\" elenca i comandi.\n" : usages);
}

void Console::Help()
{
    for (const auto& [title, commands] : sections)
    {
        m_desk.Out() << '\n' << title << '\n';
        for (const auto& command : *commands)
        {
            m_desk.Out() << "  " << Usage(command) << "\n      " << command.help << '\n';
        }
    }
    m_desk.Out() << "\n# sta per un numero, … per il resto della riga; tra [ ] ciò che si può tralasciare.\n"
                    "Una riga che comincia con # è un commento.\n";
}

} // namespace vellumo::norda
