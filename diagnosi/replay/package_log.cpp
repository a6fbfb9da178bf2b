#include "diagnosi/replay/package_log.h"

#include "diagnosi/exchanges/exchange_record.h"
#include "environment/files.h"
#include "environment/siss_date_time.h"
#include "host/fault.h"

#include <zlib.h>

#include <algorithm>
#include <cstdint>
#include <random>

namespace vellumo::diagnosi
{
namespace
{

constexpr std::string_view fileSignature = "PK\3\4";
constexpr std::string_view entrySignature = "PK\1\2";
constexpr std::string_view endSignature = "PK\5\6";
constexpr std::string_view logFolder = "Log/";
// A request or reply has some kilobytes; a package of a year some hundred megabytes.
constexpr std::size_t mostBytes = std::size_t{1} << 30U;

[[noreturn]] void Refuse()
{
    throw host::Fault("Il pacchetto è danneggiato o non è un pacchetto per l'assistenza.");
}

std::string_view Part(std::string_view zip, std::size_t at, std::size_t size)
{
    return at <= zip.size() && size <= zip.size() - at ? zip.substr(at, size) : (Refuse(), zip);
}

// Little-endian.
std::uint32_t Number(std::string_view zip, std::size_t at, std::size_t size)
{
    std::uint32_t number = 0;
    const auto bytes = Part(zip, at, size);
    for (std::size_t i = size; i-- > 0;)
    {
        number = number << 8U | static_cast<unsigned char>(bytes[i]);
    }
    return number;
}

std::string Inflated(std::string_view packed, std::size_t size)
{
    std::string bytes(size, '\0');
    z_stream stream{};
    if (inflateInit2(&stream, -MAX_WBITS) != Z_OK)
    {
        Refuse();
    }
    // zlib does not change what it reads, but its oldest users did not know const.
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(packed.data()));
    stream.avail_in = static_cast<uInt>(packed.size());
    stream.next_out = reinterpret_cast<Bytef*>(bytes.data());
    stream.avail_out = static_cast<uInt>(bytes.size());
    const int ended = inflate(&stream, Z_FINISH);
    const bool whole = ended == Z_STREAM_END && stream.avail_out == 0;
    inflateEnd(&stream);
    return whole ? bytes : (Refuse(), bytes);
}

struct Entry
{
    std::string_view name;
    bool isDeflated = false;
    std::size_t packed = 0;
    std::size_t size = 0;
    std::size_t at = 0; // of its local header
};

// Steps over it.
Entry ReadEntry(std::string_view zip, std::size_t& at)
{
    constexpr std::size_t fixed = 46;
    if (Part(zip, at, fixed).substr(0, entrySignature.size()) != entrySignature)
    {
        Refuse();
    }
    const auto nameSize = Number(zip, at + 28, 2);
    const Entry entry = {Part(zip, at + fixed, nameSize), Number(zip, at + 10, 2) != 0, Number(zip, at + 20, 4),
                         Number(zip, at + 24, 4), Number(zip, at + 42, 4)};
    at += fixed + nameSize + Number(zip, at + 30, 2) + Number(zip, at + 32, 2);
    return entry;
}

std::string Content(std::string_view zip, const Entry& entry)
{
    constexpr std::size_t fixed = 30;
    if (Part(zip, entry.at, fixed).substr(0, fileSignature.size()) != fileSignature)
    {
        Refuse();
    }
    const auto packed =
        Part(zip, entry.at + fixed + Number(zip, entry.at + 26, 2) + Number(zip, entry.at + 28, 2), entry.packed);
    return entry.isDeflated ? Inflated(packed, entry.size) : std::string(packed);
}

// "Log/2026-11-22 12.09.26/1 - Richiesta …": folder and file; "" for a name that is none of a log's.
std::pair<std::string_view, std::string_view> PlaceOf(std::string_view name)
{
    if (!name.starts_with(logFolder))
    {
        return {};
    }
    name.remove_prefix(logFolder.size());
    const auto slash = std::min(name.find('/'), name.size());
    const auto folder = name.substr(0, slash);
    const auto file = name.substr(std::min(slash + 1, name.size()));
    const bool isPlain = !file.empty() && file.find_first_of("/\\:") == std::string_view::npos && file.front() != '.';
    return environment::TimeOfStamp(folder) && isPlain ? std::pair(folder, file)
                                                       : std::pair<std::string_view, std::string_view>();
}

} // namespace

PackageLog::PackageLog(std::string_view zip)
    : m_folder(std::filesystem::temp_directory_path() / ("vellumo-pacchetto-" + std::to_string(std::random_device()())))
{
    const auto end = zip.rfind(endSignature);
    constexpr std::size_t endSize = 22;
    if (end == std::string_view::npos || Part(zip, end, endSize).empty())
    {
        Refuse();
    }
    std::size_t at = Number(zip, end + 16, 4);
    std::size_t bytes = 0;
    std::filesystem::create_directories(m_folder);
    try
    {
        for (auto count = Number(zip, end + 10, 2); count > 0; --count)
        {
            const Entry entry = ReadEntry(zip, at);
            const auto [folder, file] = PlaceOf(entry.name);
            if (folder.empty())
            {
                continue;
            }
            bytes += entry.size;
            if (bytes > mostBytes)
            {
                Refuse();
            }
            const auto path = environment::JoinPath(Folder(), folder);
            if (!environment::CreateFolder(path) ||
                !environment::WriteFile(environment::JoinPath(path, file), Content(zip, entry)))
            {
                throw host::Fault("Il pacchetto non può essere aperto nella cartella " + Folder() + ".");
            }
        }
    }
    catch (const std::exception&)
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_folder, ignored);
        throw;
    }
}

PackageLog::~PackageLog()
{
    std::error_code ignored;
    std::filesystem::remove_all(m_folder, ignored);
}

std::string PackageLog::Folder() const
{
    const auto text = m_folder.u8string();
    return {text.begin(), text.end()};
}

} // namespace vellumo::diagnosi
