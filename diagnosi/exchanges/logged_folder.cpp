#include "diagnosi/exchanges/logged_folder.h"

#include "environment/ansi_text.h"
#include "environment/declared_encoding.h"
#include "environment/files.h"
#include "host/clock.h"
#include "host/path.h"
#include "host/text.h"
#include "host/trace_files.h"

#include <charconv>
#include <chrono>
#include <filesystem>
#include <map>
#include <system_error>
#include <utility>

namespace vellumo::diagnosi
{
namespace
{

using environment::JoinPath;

struct FileName
{
    std::int32_t number = 0;
    bool isRequest = false;
    std::string service;
};

// Empty for any other name than "4 - Richiesta …" and "4 - Risposta …".
std::optional<FileName> ParseName(std::string_view name)
{
    FileName parsed;
    const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), parsed.number);
    std::string_view rest = name.substr(static_cast<std::size_t>(end - name.data()));
    parsed.isRequest = rest.starts_with(" - Richiesta ");
    if (error != std::errc() || parsed.number < 1 || !(parsed.isRequest || rest.starts_with(" - Risposta ")))
    {
        return std::nullopt;
    }
    rest.remove_prefix(rest.find(' ', 3) + 1);
    parsed.service = rest;
    return rest.empty() ? std::nullopt : std::optional(std::move(parsed));
}

std::optional<host::Date> FileTime(const std::string& path)
{
    std::error_code error;
    const auto written = std::filesystem::last_write_time(host::NativePath(path), error);
    if (error)
    {
        return std::nullopt;
    }
    const auto system = std::chrono::file_clock::to_sys(written);
    return host::LocalTime(std::chrono::system_clock::to_time_t(
        std::chrono::time_point_cast<std::chrono::system_clock::duration>(system)));
}

// The log is 8-bit text whatever encoding a message names: the library got it as text and wrote it anew. Only a byte
// order mark shows that somebody has stored the file in another way since.
std::optional<std::string> ReadText(const std::string& path)
{
    auto bytes = environment::ReadFile(path);
    if (!bytes)
    {
        return std::nullopt;
    }
    if (bytes->starts_with(host::utf8Mark))
    {
        return bytes->substr(host::utf8Mark.size());
    }
    const bool isUtf16 = bytes->starts_with("\xFF\xFE") || bytes->starts_with("\xFE\xFF");
    return isUtf16 ? environment::DecodeXml(std::move(*bytes)) : environment::FromAnsi(*bytes);
}

} // namespace

std::vector<Call> ReadFolder(std::string_view logFolder, const std::string& name, std::vector<std::string>& skipped)
{
    const std::string folder = JoinPath(logFolder, name);
    std::map<std::pair<std::int32_t, std::string>, Call> calls;
    for (const auto& file : host::NamesIn(folder))
    {
        const std::string path = JoinPath(folder, file);
        const auto parsed = ParseName(file);
        if (!parsed || !environment::FileExists(path))
        {
            skipped.push_back(JoinPath(name, file) + ": non è un file del registro");
            continue;
        }
        Call& call = calls[{parsed->number, parsed->service}];
        call.number = parsed->number;
        call.service = parsed->service;
        call.folder = name;
        auto& text = parsed->isRequest ? call.request : call.reply;
        (parsed->isRequest ? call.requestTime : call.replyTime) = FileTime(path);
        text = ReadText(path);
        if (!text)
        {
            skipped.push_back(JoinPath(name, file) + ": non può essere letto");
        }
    }
    std::vector<Call> inOrder;
    for (auto& [key, call] : calls)
    {
        call.outcome = OutcomeOf(call.service, call.reply);
        inOrder.push_back(std::move(call));
    }
    return inOrder;
}

} // namespace vellumo::diagnosi
