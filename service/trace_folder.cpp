#include "service/trace_folder.h"

#include "environment/ansi_text.h"
#include "environment/files.h"
#include "environment/siss_configuration.h"
#include "environment/siss_date_time.h"
#include "host/fault.h"
#include "host/trace_files.h"
#include "host/version.h"

#include <array>
#include <charconv>
#include <optional>
#include <utility>
#include <vector>

namespace vellumo::service
{
namespace
{

using environment::JoinPath;
using host::LeftCode;

constexpr char open = '*';
constexpr char settled = '-';
constexpr std::string_view heading =
    "# Codici del SISS. Con * davanti: non ancora salvati; con -: salvati o nel registro del programma.\r\n";

std::string LineOf(const LeftCode& code)
{
    const std::string text = open + std::to_string(code.studio) + '\t' + code.machine + '\t' +
                             std::to_string(code.user) + '\t' + code.time + '\t' + code.subject + '\t' + code.code;
    return environment::ToAnsi(text) + "\r\n";
}

// Null for anything else than a line with an open code.
std::optional<LeftCode> ParseLine(std::string_view line)
{
    constexpr std::size_t fieldCount = 6;
    if (!line.starts_with(open) || !line.ends_with('\r'))
    {
        return std::nullopt;
    }
    line = line.substr(1, line.size() - 2);
    std::vector<std::string> fields;
    for (std::size_t end = 0; end != std::string_view::npos; line.remove_prefix(end == line.npos ? 0 : end + 1))
    {
        end = line.find('\t');
        fields.push_back(environment::FromAnsi(line.substr(0, end)));
    }
    const auto number = [&](std::size_t field)
    {
        std::int32_t value = 0;
        const std::string& text = fields[field];
        std::from_chars(text.data(), text.data() + text.size(), value);
        return value;
    };
    if (fields.size() != fieldCount)
    {
        return std::nullopt;
    }
    return LeftCode{{number(0), number(2), fields[4], fields[5]}, fields[1], fields[3]};
}

std::vector<std::string> CodeFilesIn(const std::string& folder)
{
    std::vector<std::string> paths;
    for (const auto& name : host::NamesIn(folder))
    {
        if (name.starts_with(codeFilePrefix))
        {
            paths.push_back(JoinPath(folder, name));
        }
    }
    return paths;
}

// Returns whether an open code is left, or may be: of a file that cannot be read nobody knows.
bool TellLeft(host::ExclusiveFile& file, std::int32_t studio, const host::Traces::Tell& tell)
{
    const auto bytes = file.Read();
    bool left = !bytes;
    for (std::size_t begin = 0; bytes && begin < bytes->size();)
    {
        const std::size_t end = std::min(bytes->find('\n', begin), bytes->size());
        if (const auto code = ParseLine(std::string_view(*bytes).substr(begin, end - begin)))
        {
            const bool told = code->studio == studio && tell(*code);
            left = !(told && file.Overwrite(begin, settled)) || left;
        }
        begin = end + 1;
    }
    return left;
}

} // namespace

class TraceFolder::CodeFile
{
public:
    explicit CodeFile(std::unique_ptr<host::ExclusiveFile> file)
        : m_file(std::move(file))
    {
    }
    CodeFile(const CodeFile&) = delete;
    CodeFile& operator=(const CodeFile&) = delete;
    ~CodeFile()
    {
        if (m_open == 0)
        {
            host::PassOver([&] { m_file->Delete(); });
        }
    }

    // Where the line stands; null when it could not be written.
    [[nodiscard]] std::optional<std::uint64_t> Add(std::string_view line)
    {
        const std::uint64_t position = m_size;
        if (!m_file->Append(line))
        {
            return std::nullopt;
        }
        m_size += line.size();
        m_open += line.starts_with(open) ? 1U : 0U;
        return position;
    }
    void Settle(std::uint64_t position) { m_open -= m_file->Overwrite(position, settled) ? 1U : 0U; }

private:
    std::unique_ptr<host::ExclusiveFile> m_file;
    std::uint64_t m_size = 0;
    std::size_t m_open = 0;
};

namespace
{

class Entry final : public host::OpenCodeEntry
{
public:
    Entry(std::shared_ptr<TraceFolder::CodeFile> file, std::uint64_t position)
        : m_file(std::move(file))
        , m_position(position)
    {
    }

    void Settle() noexcept override
    {
        if (const auto file = std::exchange(m_file, nullptr))
        {
            host::PassOver([&] { file->Settle(m_position); });
        }
    }

private:
    std::shared_ptr<TraceFolder::CodeFile> m_file; // null when settled
    std::uint64_t m_position;
};

} // namespace

TraceFolder::TraceFolder(host::SettingsStore& settings, const host::Clock& clock)
    : m_settings(settings)
    , m_clock(clock)
{
}

std::string TraceFolder::Folder() const
{
    return JoinPath(JoinPath(environment::HostProgramFolder(m_settings), "SISS"), "Tracce");
}

// Where each user may change only what he made, another user's file is passed by.
bool TraceFolder::Append(std::string_view line) noexcept
{
    return host::Trap(false,
                      [&]
                      {
                          const std::string folder = Folder();
                          if (!environment::CreateFolder(folder))
                          {
                              return false;
                          }
                          const std::string now = environment::Stamp(m_clock.Now());
                          const std::string text =
                              now + " Vellumo " + std::string(host::version) + ' ' + std::string(line) + "\r\n";
                          constexpr std::size_t month = 7; // "yyyy-MM"
                          constexpr int users = 9;         // of one machine, in one month
                          bool written = false;
                          for (int user = 1; !written && user <= users; ++user)
                          {
                              const std::string number = user == 1 ? "" : ' ' + std::to_string(user);
                              const std::string name =
                                  std::string(lineFilePrefix) + now.substr(0, month) + number + ".txt";
                              written = host::AppendShared(JoinPath(folder, name), environment::ToAnsi(text));
                          }
                          return written;
                      });
}

std::shared_ptr<host::OpenCodeEntry> TraceFolder::Keep(const host::OpenCode& code) noexcept
{
    return host::Trap(std::shared_ptr<host::OpenCodeEntry>(),
                      [&]() -> std::shared_ptr<host::OpenCodeEntry>
                      {
                          if (!m_codes)
                          {
                              m_codes = MakeCodeFile();
                          }
                          const LeftCode entry{code, host::MachineName(), environment::Stamp(m_clock.Now())};
                          const auto position = m_codes ? m_codes->Add(LineOf(entry)) : std::nullopt;
                          if (!position)
                          {
                              m_codes = nullptr; // what was written in part ends the file
                              return nullptr;
                          }
                          return std::make_shared<Entry>(m_codes, *position);
                      });
}

std::shared_ptr<TraceFolder::CodeFile> TraceFolder::MakeCodeFile() const
{
    const std::string folder = Folder();
    if (!environment::CreateFolder(folder))
    {
        return nullptr;
    }
    const std::string name = JoinPath(folder, std::string(codeFilePrefix) + environment::Stamp(m_clock.Now()) + ' ' +
                                                  host::MachineName() + '-');
    for (int number = 1;; ++number)
    {
        const std::string path = name + std::to_string(number) + ".txt";
        if (auto file = host::ExclusiveFile::Create(path))
        {
            auto codes = std::make_shared<CodeFile>(std::move(file));
            return codes->Add(heading) ? codes : nullptr;
        }
        if (!environment::FileExists(path))
        {
            return nullptr;
        }
    }
}

void TraceFolder::Recover(std::int32_t studio, const Tell& tell) noexcept
{
    host::PassOver(
        [&]
        {
            for (const auto& path : CodeFilesIn(Folder()))
            {
                const auto file = host::ExclusiveFile::Take(path);
                if (file && !TellLeft(*file, studio, tell))
                {
                    file->Delete();
                }
            }
        });
}

} // namespace vellumo::service
