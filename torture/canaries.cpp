#include "torture/canaries.h"

#include "diagnosi/checks/checks.h"
#include "diagnosi/support/package.h"
#include "host/clock.h"
#include "player/written.h"
#include "simulator/norda/platform.h"
#include "torture/outside_call.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>

namespace vellumo::torture
{
namespace
{

namespace fs = std::filesystem;

struct PersonalColumn
{
    std::string_view table;
    std::string_view column;
};

// Of the host's tables.
constexpr std::array personalColumns = {
    PersonalColumn{"Paziente", "CodiceFiscale"},
    PersonalColumn{"Paziente", "Cognome"},
    PersonalColumn{"Paziente", "Nome"},
    PersonalColumn{"Paziente", "NumTesseraSanitaria"},
    PersonalColumn{"Paziente", "Note"},
    PersonalColumn{"Residenza", "Indirizzo"},
    PersonalColumn{"Ricetta", "Annotazioni"},
    PersonalColumn{"Ricetta", "MotivoRicetta"},
    PersonalColumn{"Ricetta", "Farmaco_1"},
    PersonalColumn{"Ricetta", "Farmaco_2"},
    PersonalColumn{"RicettaPrestazione", "Prestazione"},
    PersonalColumn{"CertificatoMalattia", "IndirizzoDomicilio"},
    PersonalColumn{"CertificatoMalattia", "IndirizzoResidenza"},
    PersonalColumn{"CertificatoMalattia", "CodicePatologia"},
    PersonalColumn{"CertificatoMalattia", "Annotazioni"},
};

// Of what SISS has of a citizen.
constexpr std::array personalElements = {"cognomeCittadino", "nomeCittadino", "codiceSanitarioCittadino",
                                         "indirizzoResidenzaCittadino", "indirizzoDomicilioCittadino"};

constexpr std::size_t shortest = 5; // a shorter one is found in all kinds of texts

// Small letters, digits and what is beyond ASCII; all else separates words.
std::vector<std::string> Words(std::string_view text)
{
    std::vector<std::string> words(1);
    for (const char character : text)
    {
        const auto byte = static_cast<unsigned char>(character);
        const bool isCapital = byte >= 'A' && byte <= 'Z';
        if (isCapital || (byte >= 'a' && byte <= 'z') || (byte >= '0' && byte <= '9') || byte >= 0x80)
        {
            words.back() += static_cast<char>(isCapital ? byte + 32 : byte);
        }
        else if (!words.back().empty())
        {
            words.emplace_back();
        }
    }
    if (words.back().empty())
    {
        words.pop_back();
    }
    return words;
}

std::string Without(std::string text, std::string_view part)
{
    for (auto place = text.find(part); place != std::string::npos; place = text.find(part))
    {
        text.erase(place, part.size());
    }
    return text;
}

std::string TextOf(const fs::path& file)
{
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

// The practice as it would be installed here.
class Installed final : public host::SettingsStore
{
public:
    explicit Installed(const norda::Practice& practice)
        : m_practice(practice)
    {
    }

    std::optional<std::string> ReadMachineText(std::string_view, std::string_view name) override
    {
        return name == "Path" ? std::optional(m_practice.HostFolder().string()) : std::nullopt;
    }
    std::optional<std::string> ReadUserText(std::string_view, std::string_view name) override
    {
        return name == "Path" ? std::optional(m_practice.SissFolder().string()) : std::nullopt;
    }
    void WriteMachineText(std::string_view, std::string_view, std::string_view) override {}

private:
    const norda::Practice& m_practice;
};

} // namespace

void Canaries::Take(const norda::Snapshot& rows, const siss::Network& network)
{
    Add(quotedByServer);
    for (const auto& [row, texts] : rows)
    {
        for (const auto& personal : personalColumns)
        {
            if (row.table == personal.table)
            {
                Add(texts.at(std::string(personal.column)));
            }
        }
    }
    for (const auto& [codiceFiscale, citizen] : network.People().All())
    {
        Add(codiceFiscale);
        for (const auto* const element : personalElements)
        {
            Add(citizen.Get(element));
        }
    }
}

void Canaries::Add(std::string_view text)
{
    const auto words = Words(text);
    if (auto phrase = host::Joined(words, " "); phrase.size() >= shortest)
    {
        m_phrases[words.front()].insert(std::move(phrase));
    }
}

std::vector<std::string> Canaries::FindAstray(player::Run& run, const norda::Snapshot& now) const
{
    std::vector<std::string> findings;
    for (const auto& [row, texts] : now)
    {
        if (row.table == norda::journalTable)
        {
            LookInto("the journal", texts.at("Riga"), findings);
        }
    }
    for (const auto& outcome : run.Outcomes())
    {
        // What the host itself said, it is told again.
        LookInto("the host's error", Without(outcome.fault.value_or(""), quotedByServer), findings);
    }
    auto& practice = run.GetStage().Practice();
    std::error_code none;
    for (const auto& file : fs::directory_iterator(practice.TraceFolder(), none))
    {
        LookInto("a file of traces", file.path().filename().string() + '\n' + TextOf(file.path()), findings);
    }
    const auto package =
        diagnosi::MakePackage({practice.LogFolder().string(), practice.TraceFolder().string(), {}, "", {}});
    for (const auto& file : package.files)
    {
        LookInto("the package for support, " + file.name, file.name + '\n' + file.bytes, findings);
    }
    return findings;
}

std::vector<std::string> Canaries::FindInReport(const norda::Practice& practice) const
{
    Installed settings(practice);
    const host::SystemClock clock;
    const auto database = [&](const char* file)
    { return "Driver=SQLite3;Database=" + norda::DriverPath(practice.Folder() / file); };
    const auto checked =
        diagnosi::RunChecks({settings, clock, {.practice = database("studio.db"), .shared = database("norda.db")}});
    std::vector<std::string> findings;
    LookInto("the report of the installation", diagnosi::ReportOf(checked), findings);
    return findings;
}

void Canaries::LookInto(const std::string& place, std::string_view text, std::vector<std::string>& findings) const
{
    const auto words = Words(text);
    for (auto word = words.begin(); word != words.end(); ++word)
    {
        const auto phrases = m_phrases.find(*word);
        if (phrases == m_phrases.end())
        {
            continue;
        }
        for (const auto& phrase : phrases->second)
        {
            const auto length = 1 + std::ranges::count(phrase, ' ');
            if (words.end() - word >= length && host::Joined({word, word + length}, " ") == phrase)
            {
                findings.push_back(host::Joined({place, "has", phrase}, " "));
                return;
            }
        }
    }
}

} // namespace vellumo::torture
