// Data of real shape and any size, made up: the regional tables as the SISS client leaves them, and lists of a doctor's
// patients as the region supplies them. The same numbers give the same data.
#pragma once

#include "host/date.h"

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>

namespace vellumo::norda
{

enum class RegionalTable
{
    Esenzioni,
    BrancheSpecialistiche,
    MappingRegionale
};

struct Person
{
    std::string surname; // UTF-8
    std::string name;
    bool isFemale = false;
    host::Date birth;
    std::string birthTownCode; // of the land register, "F205"
};

// The sixteen characters that the tax office would give the person.
[[nodiscard]] std::string FiscalCodeOf(const Person& person);

// The text of a table (UTF-8, lines ended by LF) with that many rows below its header. Every tenth exemption has a code
// that the seed of the practice knows.
[[nodiscard]] std::string MakeTable(RegionalTable table, std::size_t rows);

// Writes master.txt and the three tables into the folder, 8-bit with CR LF, each with that many rows.
void WriteTables(const std::filesystem::path& folder, std::size_t rows);

// Writes a list of that many citizens (UTF-8). `first` is the number of the first one, so that two lists may overlap.
void WritePatientList(const std::filesystem::path& file, std::size_t citizens, std::size_t first = 1);

} // namespace vellumo::norda
