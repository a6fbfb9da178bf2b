#include "package/acceptance/players.h"

#include "host/fault.h"
#include "platform/windows/system/text.h"

#include <windows.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <sstream>

namespace vellumo::acceptance
{
namespace
{

namespace fs = std::filesystem;

constexpr DWORD timeForAFile = 15 * 60 * 1000; // milliseconds

std::wstring Quoted(const std::wstring& word)
{
    return L"\"" + word + L"\"";
}

// Each of its own name: what a player has started may hold the file beyond the player's end.
class OutputFile
{
public:
    OutputFile()
        : m_path(fs::temp_directory_path() / ("vellumo-prova-" + std::to_string(GetCurrentProcessId()) + '-' +
                                              std::to_string(GetTickCount64()) + ".txt"))
    {
        SECURITY_ATTRIBUTES inherited{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
        m_handle = CreateFileW(m_path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                               &inherited, CREATE_ALWAYS, FILE_ATTRIBUTE_TEMPORARY, nullptr);
    }
    ~OutputFile()
    {
        Close();
        std::error_code ignored;
        fs::remove(m_path, ignored);
    }
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    [[nodiscard]] HANDLE Get() const noexcept { return m_handle; }
    [[nodiscard]] std::string Text()
    {
        Close();
        std::ifstream in(m_path, std::ios::binary);
        std::string text{std::istreambuf_iterator<char>(in), {}};
        std::erase(text, '\r');
        return text;
    }

private:
    void Close()
    {
        if (m_handle != INVALID_HANDLE_VALUE)
        {
            CloseHandle(m_handle);
            m_handle = INVALID_HANDLE_VALUE;
        }
    }

    fs::path m_path;
    HANDLE m_handle = INVALID_HANDLE_VALUE;
};

} // namespace

Player::Player(fs::path program, std::string database)
    : m_program(std::move(program))
    , m_database(std::move(database))
{
}

Player::Ended Player::Run(const std::vector<std::string>& words) const
{
    std::wstring line = Quoted(m_program.wstring());
    for (const auto& word : words)
    {
        line += L' ' + Quoted(windows::ToWide(word));
    }
    if (!m_database.empty())
    {
        line += L" --database " + Quoted(windows::ToWide(m_database));
    }
    OutputFile output;
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESTDHANDLES;
    start.hStdOutput = output.Get();
    start.hStdError = output.Get();
    PROCESS_INFORMATION process{};
    if (CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start, &process) == FALSE)
    {
        throw host::Fault("Non si avvia " + windows::FromWide(m_program.c_str()));
    }
    Ended ended;
    ended.inTime = WaitForSingleObject(process.hProcess, timeForAFile) == WAIT_OBJECT_0;
    if (!ended.inTime)
    {
        TerminateProcess(process.hProcess, 1);
        WaitForSingleObject(process.hProcess, INFINITE);
    }
    DWORD code = 0;
    GetExitCodeProcess(process.hProcess, &code);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    ended.code = code;
    ended.output = output.Text();
    return ended;
}

std::vector<std::pair<std::string, std::string>> Player::Facts() const
{
    const auto ended = Run({"--facts"});
    std::vector<std::pair<std::string, std::string>> facts;
    std::istringstream lines(ended.output);
    for (std::string line; std::getline(lines, line);)
    {
        if (const auto tab = line.find('\t'); tab != std::string::npos)
        {
            facts.emplace_back(line.substr(0, tab), line.substr(tab + 1));
        }
        else if (ended.code != 0)
        {
            facts.emplace_back("Errore", line);
        }
    }
    return facts;
}

FileOutcome Player::Play(const fs::path& file) const
{
    FileOutcome outcome{windows::FromWide(file.stem().c_str()), {}, {}, {}, {}};
    const auto ended = Run({"--outcomes", windows::FromWide(file.c_str())});
    std::istringstream lines(ended.output);
    constexpr std::string_view failed = "FAILED: ";
    constexpr std::string_view held = "HELD: ";
    for (std::string line; std::getline(lines, line);)
    {
        if (line.starts_with(failed))
        {
            outcome.failed.push_back(line.substr(failed.size()));
            outcome.titles.push_back(outcome.failed.back());
        }
        else if (line.starts_with(held))
        {
            outcome.titles.push_back(line.substr(held.size()));
        }
    }
    if (!ended.inTime)
    {
        outcome.broken = "interrotto: non è finito in un quarto d'ora";
    }
    else if (ended.code > 1 || (ended.code == 1) == outcome.failed.empty())
    {
        std::ostringstream code;
        code << "terminato con codice 0x" << std::hex << ended.code;
        outcome.broken = code.str();
    }
    outcome.output = outcome.Holds() ? "" : ended.output;
    return outcome;
}

} // namespace vellumo::acceptance
