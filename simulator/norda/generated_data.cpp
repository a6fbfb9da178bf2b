#include "simulator/norda/generated_data.h"

#include "host/fault.h"
#include "host/text.h"
#include "simulator/norda/ansi_file.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <fstream>

namespace vellumo::norda
{
namespace
{

struct Town
{
    const char* name;
    const char* code;
    const char* cap;
};

constexpr std::array<Town, 35> towns = {{
    {"Milano", "F205", "20121"},    {"Monza", "F704", "20900"},     {"Bergamo", "A794", "24121"},
    {"Brescia", "B157", "25121"},   {"Como", "C933", "22100"},      {"Cremona", "D150", "26100"},
    {"Lecco", "E507", "23900"},     {"Lodi", "E648", "26900"},      {"Mantova", "E897", "46100"},
    {"Pavia", "G388", "27100"},     {"Sondrio", "I829", "23100"},   {"Varese", "L682", "21100"},
    {"Muggiò", "F797", "20835"},    {"Cantù", "B639", "22063"},     {"Meda", "F078", "20821"},
    {"Legnano", "E514", "20025"},   {"Rho", "H264", "20017"},       {"Abbiategrasso", "A010", "20081"},
    {"Crema", "D142", "26013"},     {"Vigevano", "L872", "27029"},  {"Saronno", "I441", "21047"},
    {"Gallarate", "D869", "21013"}, {"Treviglio", "L400", "24047"}, {"Voghera", "M109", "27058"},
    {"Merate", "F133", "23807"},    {"Seregno", "I625", "20831"},   {"Desio", "D286", "20832"},
    {"Magenta", "E801", "20013"},   {"Napoli", "F839", "80121"},    {"Palermo", "G273", "90121"},
    {"Torino", "L219", "10121"},    {"Roma", "H501", "00118"},      {"Bari", "A662", "70121"},
    {"Catania", "C351", "95121"},   {"Genova", "D969", "16121"},
}};

constexpr std::array surnames = {
    "Rossi",   "Bianchi",  "Ferrari",   "Colombo",   "Brambilla",  "Fumagalli", "Villa",      "Sala",      "Riva",
    "Galli",   "Lombardi", "Conti",     "Esposito",  "Russo",      "Marchetti", "Testa",      "Locatelli", "Pozzi",
    "Moretti", "Barbieri", "Rinaldi",   "Gatti",     "Monti",      "Vitali",    "Pellegrini", "Fontana",   "Caruso",
    "Serra",   "Costa",    "Valsecchi", "Mazza",     "Bernasconi", "Corti",     "Perego",     "Zanetti",   "Longoni",
    "Greco",   "D'Angelo", "De Luca",   "Dell'Orto", "Cantù",      "Forlì",     "Nicolò",     "Viganò",    "Magrì",
    "Sanna",   "Ferri",    "Fo",        "Re",        "Orsini",     "Castelli",  "Beretta",    "Maggi",     "Porta"};
constexpr std::array maleNames = {"Mario",  "Luca",      "Niccolò",   "Giuseppe", "Carlo",  "Ambrogio",
                                  "Pietro", "Salvatore", "Bruno",     "Davide",   "Angelo", "Matteo",
                                  "Luigi",  "Tommaso",   "Francesco", "Andrea",   "Ugo",    "Gian Paolo"};
constexpr std::array femaleNames = {"Anna",         "Giulia", "Chiara",   "Sofia",   "Lucia",  "Elena",
                                    "Maria Teresa", "Rosa",   "Concetta", "Noè Lia", "Teresa", "Federica",
                                    "Silvia",       "Irene",  "Rosalia",  "Bianca",  "Emma",   "Ada"};
constexpr std::array streets = {"Via Roma",       "Via Garibaldi", "Corso Unità d'Italia", "Viale Monza",
                                "Piazza Mazzini", "Via Manzoni",   "Via Libertà",          "Via XXV Aprile"};
constexpr std::array mappedExemptions = {"E01", "048", "M28", "M29", "M30", "M31", "M32", "M33"};
constexpr std::array words = {"attività",   "terapeutica",   "esenzione", "patologia", "cronica",     "età",
                              "invalidità", "specialistica", "visita",    "controllo", "diagnostica", "prestazione"};

// The same for the same number on every machine.
class Dice
{
public:
    explicit Dice(std::uint64_t seed)
        : m_state(seed * 0x9E3779B97F4A7C15U + 0x2545F4914F6CDD1DU)
    {
    }

    std::size_t Below(std::size_t bound)
    {
        m_state ^= m_state >> 12U;
        m_state ^= m_state << 25U;
        m_state ^= m_state >> 27U;
        return static_cast<std::size_t>((m_state * 0x2545F4914F6CDD1DU) >> 33U) % bound;
    }
    template <class List>
    const auto& OneOf(const List& list)
    {
        return list[Below(list.size())];
    }

private:
    std::uint64_t m_state;
};

std::string Padded(std::size_t number, std::size_t width)
{
    const auto digits = std::to_string(number);
    return std::string(width - std::min(width, digits.size()), '0') + digits;
}

// Letters only, in capitals and without accents.
std::string PlainLetters(std::string_view text)
{
    constexpr std::array<std::pair<std::string_view, char>, 6> accents = {
        {{"à", 'A'}, {"è", 'E'}, {"é", 'E'}, {"ì", 'I'}, {"ò", 'O'}, {"ù", 'U'}}};
    std::string plain;
    for (std::size_t at = 0; at < text.size(); ++at)
    {
        const auto* const accent =
            std::find_if(accents.begin(), accents.end(),
                         [&](const auto& each) { return text.substr(at).substr(0, 2) == each.first; });
        if (accent != accents.end())
        {
            plain += accent->second;
            ++at;
        }
        else if (host::IsLetter(text[at]))
        {
            plain += host::Upper(text[at]);
        }
    }
    return plain;
}

// Consonants, then vowels, then X; a given name with more than three consonants leaves its second one out.
std::string ThreeLetters(std::string_view text, bool isGivenName)
{
    std::string consonants;
    std::string vowels;
    for (const char letter : PlainLetters(text))
    {
        (std::string_view("AEIOU").find(letter) == std::string_view::npos ? consonants : vowels) += letter;
    }
    if (isGivenName && consonants.size() > 3)
    {
        consonants.erase(1, 1);
    }
    return (consonants + vowels + "XXX").substr(0, 3);
}

char CheckLetter(std::string_view code)
{
    constexpr std::array<int, 26> oddValues = {1,  0,  5, 7, 9, 13, 15, 17, 19, 21, 2,  4,  18,
                                               20, 11, 3, 6, 8, 12, 14, 16, 10, 22, 25, 24, 23};
    int sum = 0;
    for (std::size_t at = 0; at < code.size(); ++at)
    {
        const int value = code[at] <= '9' ? code[at] - '0' : code[at] - 'A'; // digits count as the letters A to J
        sum += at % 2 == 0 ? oddValues.at(static_cast<std::size_t>(value)) : value;
    }
    return static_cast<char>('A' + sum % 26);
}

std::string Words(Dice& dice, std::size_t count)
{
    std::string text;
    for (std::size_t i = 0; i < count; ++i)
    {
        text.append(i == 0 ? "" : " ").append(dice.OneOf(words));
    }
    return text;
}

std::string Day(Dice& dice)
{
    return std::to_string(1990 + dice.Below(25)) + '-' + Padded(1 + dice.Below(12), 2) + '-' +
           Padded(1 + dice.Below(28), 2);
}

void Element(std::ostream& out, const char* name, std::string_view text)
{
    out << "    <" << name << '>' << text << "</" << name << ">\n";
}

void Address(std::ostream& out, Dice& dice, const std::string& kind)
{
    const Town& town = dice.OneOf(towns);
    Element(out, ("indirizzo" + kind).c_str(), dice.OneOf(streets));
    Element(out, ("civico" + kind).c_str(), std::to_string(1 + dice.Below(200)));
    Element(out, ("cap" + kind).c_str(), town.cap);
    Element(out, ("comune" + kind).c_str(), town.name);
}

void WriteCitizen(std::ostream& out, std::size_t number)
{
    Dice dice(number);
    const Town& birthTown = dice.OneOf(towns);
    Person person;
    person.isFemale = dice.Below(2) == 0;
    person.surname = dice.OneOf(surnames);
    person.name = person.isFemale ? dice.OneOf(femaleNames) : dice.OneOf(maleNames);
    // A day of his own for each of some thirty thousand, from 1925 on.
    person.birth = host::Date::FromOle(9133.0 + static_cast<double>(number * 7919 % 32003));
    person.birthTownCode = birthTown.code;
    const auto card = "03" + Padded(10000000 + number, 8);
    const auto asl = std::to_string(301 + dice.Below(15));
    out << "  <assistito>\n";
    Element(out, "codiceFiscale", FiscalCodeOf(person));
    Element(out, "cognome", person.surname);
    Element(out, "nome", person.name);
    Element(out, "sesso", person.isFemale ? "F" : "M");
    Element(out, "dataNascita", person.birth.ToSissText());
    Element(out, "comuneNascita", birthTown.name);
    Element(out, "codiceSanitario", card);
    Element(out, "dataInizioSceltaMedico", "20100115");
    Element(out, "dataFineSceltaMedico", "");
    Element(out, "dataDecorrenzaIscrizione", "20100101");
    Element(out, "dataScadenzaIscrizione", "99991231");
    Element(out, "siglaAslAppartenenza", "030" + asl);
    Element(out, "descAslAppartenenza", "ASL " + asl);
    Address(out, dice, "Domicilio");
    Address(out, dice, "Residenza");
    out << "  </assistito>\n";
}

} // namespace

std::string FiscalCodeOf(const Person& person)
{
    const auto day = person.birth.ToCalendar();
    std::string code = ThreeLetters(person.surname, false) + ThreeLetters(person.name, true);
    code += Padded(static_cast<std::size_t>(day.year % 100), 2);
    code += std::string_view("ABCDEHLMPRST")[static_cast<std::size_t>(day.month - 1)];
    code += Padded(static_cast<std::size_t>(day.day) + (person.isFemale ? 40 : 0), 2);
    code += person.birthTownCode;
    return code + CheckLetter(code);
}

std::string MakeTable(RegionalTable table, std::size_t rows)
{
    Dice dice(static_cast<std::uint64_t>(table) + 1);
    std::string text;
    switch (table)
    {
    case RegionalTable::Esenzioni:
        text = "ID_ESENZIONE|CD_APPLICATIVO|DS_ESENZIONE_SISS|DT_INIZIO_VALIDITA|DT_FINE_VALIDITA\n";
        break;
    case RegionalTable::BrancheSpecialistiche:
        text = "ID_BRANCA|CD_BRANCA_SPECIALISTICA|DS_BRANCA_SPECIALISTICA|FL_STATO\n";
        break;
    case RegionalTable::MappingRegionale:
        text = "ID_MAPPING|CD_APPLICATIVO|DS_PRESTAZIONE_SISS|CD_CATALOGO\n";
        break;
    }
    for (std::size_t row = 1; row <= rows; ++row)
    {
        text += std::to_string(row) + '|';
        switch (table)
        {
        case RegionalTable::Esenzioni:
            text += row % 10 == 0 ? dice.OneOf(mappedExemptions) : "X" + Padded(row, 5);
            text += '|' + Words(dice, 6) + '|' + Day(dice) + '|' + (dice.Below(3) == 0 ? Day(dice) : "\\N");
            break;
        case RegionalTable::BrancheSpecialistiche:
            text += Padded(row % 100, 2) + '|' + Words(dice, 4) + "|A";
            break;
        case RegionalTable::MappingRegionale:
            text += Padded(row, 7) + '|' + Words(dice, 5) + '|' + Padded(dice.Below(100000), 5);
            break;
        }
        text += '\n';
    }
    return text;
}

void WriteTables(const std::filesystem::path& folder, std::size_t rows)
{
    std::filesystem::create_directories(folder);
    WriteAnsiFile(folder / "master.txt", "ID_CENTRALE|DS_NOME_FILE|DT_AGGIORNAMENTO|FL_STATO\n"
                                         "ESENZIONI|esenzioni|2014-01-15|A\n"
                                         "BRANCHE_SPECIALISTICHE|branche|2013-11-04|A\n"
                                         "MAPPING_REGIONALE|mapping|2014-02-03|A\n");
    WriteAnsiFile(folder / "esenzioni.txt", MakeTable(RegionalTable::Esenzioni, rows));
    WriteAnsiFile(folder / "branche.txt", MakeTable(RegionalTable::BrancheSpecialistiche, rows));
    WriteAnsiFile(folder / "mapping.txt", MakeTable(RegionalTable::MappingRegionale, rows));
}

void WritePatientList(const std::filesystem::path& file, std::size_t citizens, std::size_t first)
{
    std::ofstream out(file, std::ios::binary | std::ios::trunc);
    out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<assistiti>\n";
    for (std::size_t number = first; number < first + citizens; ++number)
    {
        WriteCitizen(out, number);
    }
    out << "</assistiti>\n";
    out.close();
    if (!out)
    {
        throw host::Fault("Impossibile scrivere l'elenco degli assistiti.");
    }
}

} // namespace vellumo::norda
