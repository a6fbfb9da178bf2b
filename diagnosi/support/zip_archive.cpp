#include "diagnosi/support/zip_archive.h"

#include "host/fault.h"

#include <zlib.h>

#include <limits>

namespace vellumo::diagnosi
{
namespace
{

constexpr std::uint32_t fileSignature = 0x04034B50;
constexpr std::uint32_t entrySignature = 0x02014B50;
constexpr std::uint32_t endSignature = 0x06054B50;
constexpr std::uint16_t version = 20; // folders and deflate
constexpr std::uint16_t namesAreUtf8 = 1U << 11U;
constexpr std::uint16_t deflated = 8;

// Little-endian, `size` bytes.
void Put(std::string& out, std::uint32_t value, int size)
{
    for (int i = 0; i < size; ++i)
    {
        out += static_cast<char>(value >> (8U * static_cast<unsigned>(i)) & 0xFFU);
    }
}

std::string Deflated(std::string_view bytes)
{
    z_stream stream{};
    constexpr int withoutHeader = -MAX_WBITS;
    constexpr int memory = 8;
    if (deflateInit2(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, withoutHeader, memory, Z_DEFAULT_STRATEGY) != Z_OK)
    {
        throw host::Fault("Il pacchetto non può essere compresso.");
    }
    std::string packed(deflateBound(&stream, static_cast<uLong>(bytes.size())), '\0');
    // zlib does not change what it reads, but its oldest users did not know const.
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
    stream.avail_in = static_cast<uInt>(bytes.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    const int ended = deflate(&stream, Z_FINISH);
    packed.resize(packed.size() - stream.avail_out);
    deflateEnd(&stream);
    if (ended != Z_STREAM_END)
    {
        throw host::Fault("Il pacchetto non può essere compresso.");
    }
    return packed;
}

// Date in the upper half, time in the lower one, in steps of two seconds.
std::uint32_t DosTime(host::Date time)
{
    const auto parts = time.ToCalendar();
    if (parts.year < 1980)
    {
        return 1U << 21U | 1U << 16U;
    }
    const auto bits = [](int value, unsigned shift) { return static_cast<std::uint32_t>(value) << shift; };
    return bits(parts.year - 1980, 25) | bits(parts.month, 21) | bits(parts.day, 16) | bits(parts.hour, 11) |
           bits(parts.minute, 5) | bits(parts.second / 2, 0);
}

} // namespace

void ZipArchive::Add(std::string_view name, std::string_view bytes, host::Date time)
{
    constexpr std::size_t largest = std::numeric_limits<std::int32_t>::max();
    const std::string packed = bytes.size() < largest ? Deflated(bytes) : std::string();
    if (bytes.size() >= largest || m_files.size() + packed.size() >= largest ||
        m_count == std::numeric_limits<std::uint16_t>::max() - 1)
    {
        throw host::Fault("Il pacchetto diventerebbe troppo grande: scegliere un periodo più breve.");
    }
    const auto* const data = reinterpret_cast<const Bytef*>(bytes.data());
    std::string common; // of the two places that tell of a file
    Put(common, version, 2);
    Put(common, namesAreUtf8, 2);
    Put(common, deflated, 2);
    Put(common, DosTime(time), 4);
    Put(common, static_cast<std::uint32_t>(crc32(0, data, static_cast<uInt>(bytes.size()))), 4);
    Put(common, static_cast<std::uint32_t>(packed.size()), 4);
    Put(common, static_cast<std::uint32_t>(bytes.size()), 4);
    Put(common, static_cast<std::uint32_t>(name.size()), 2);
    Put(common, 0, 2); // no further fields

    Put(m_directory, entrySignature, 4);
    Put(m_directory, version, 2);
    m_directory += common;
    Put(m_directory, 0, 2); // no comment
    Put(m_directory, 0, 2); // on the first disk
    Put(m_directory, 0, 2);
    Put(m_directory, 0, 4);
    Put(m_directory, static_cast<std::uint32_t>(m_files.size()), 4);
    m_directory += name;

    Put(m_files, fileSignature, 4);
    m_files.append(common).append(name).append(packed);
    ++m_count;
}

std::string ZipArchive::Finish()
{
    const auto begin = static_cast<std::uint32_t>(m_files.size());
    m_files += m_directory;
    Put(m_files, endSignature, 4);
    Put(m_files, 0, 4); // one disk
    Put(m_files, m_count, 2);
    Put(m_files, m_count, 2);
    Put(m_files, static_cast<std::uint32_t>(m_directory.size()), 4);
    Put(m_files, begin, 4);
    Put(m_files, 0, 2); // no comment
    return std::move(m_files);
}

} // namespace vellumo::diagnosi
