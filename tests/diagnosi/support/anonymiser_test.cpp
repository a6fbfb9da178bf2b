#include "diagnosi/support/anonymiser.h"
#include "diagnosi/support/package.h"
#include "tests/support/installation.h"

#include <doctest.h>

#include <algorithm>
#include <string>

using namespace vellumo;
using namespace vellumo::diagnosi;

namespace
{

Random Counting()
{
    return [next = 0U]() mutable { return next++; };
}

bool Has(const std::string& text, std::string_view part)
{
    return text.find(part) != std::string::npos;
}

} // namespace

TEST_CASE("A message keeps what is harmless, and nothing else")
{
    Anonymiser anonymiser(Counting());
    const auto masked = [&](const std::string& message)
    {
        anonymiser.Learn(message);
        return anonymiser.Message(message);
    };
    CHECK(
        masked(
            "<m:x xmlns:m=\"urn:siss:ICCE\" dataSetVersion=\"2.0\" note=\"Rossi\"><a><codiceErrore>PDCAR001"
            "</codiceErrore><esitoServizio>signor Rossi</esitoServizio></a><nuovo>Verdi</nuovo><descErrore/></m:x>") ==
        "<m:x xmlns:m=\"urn:siss:ICCE\" dataSetVersion=\"2.0\" note=\"[mascherato]\"><a><codiceErrore>PDCAR001"
        "</codiceErrore><esitoServizio>[mascherato]</esitoServizio></a><nuovo>[mascherato]</nuovo><descErrore/></m:x>");
    CHECK(masked("<m:x xmlns:m=\"urn:mario.rossi\">Mario<a>Rossi</a></m:x>") ==
          "<m:x xmlns:m=\"urn:mascherato\">[mascherato]</m:x>");
    CHECK(masked("<x><idModulo>RSSMRA45C12F205C</idModulo><protocolloINPS>RSSMRAQRC12F205C</protocolloINPS></x>") ==
          "<x><idModulo>[mascherato]</idModulo><protocolloINPS>[mascherato]</protocolloINPS></x>");
    CHECK(masked("<x><!-- Rossi --><dataNascita>12/03/1945</dataNascita><dataNascita>ieri</dataNascita></x>") ==
          "<x><dataNascita>19450101</dataNascita><dataNascita>[mascherato]</dataNascita></x>");
    CHECK(masked("<x><RSSMRA45C12F205C/></x>") == "[testo mascherato, 26 caratteri]");
    CHECK(masked("ERRORE di Mario Rossi") == "[testo mascherato, 21 caratteri]");
    CHECK(masked("<x><descErrore>l'operatore non è autenticato al SISS o manca la carta operatore</descErrore></x>") ==
          "<x><descErrore>l'operatore non è autenticato al SISS o manca la carta operatore</descErrore></x>");
    CHECK(masked("").empty());
    CHECK(anonymiser.Tally().Count(Mask::Whole) == 2);
}

TEST_CASE("The same person has the same pseudonym wherever he is named")
{
    Anonymiser anonymiser(Counting());
    const std::string byName = "<x><cognome>ROSSI</cognome><nome>mario</nome></x>";
    const std::string byCode =
        "<x><codiceFiscaleCittadino>RSSMRA45C12F205C</codiceFiscaleCittadino><cognomeCittadino>Rossi</cognomeCittadino>"
        "<nomeCittadino>Mario</nomeCittadino><codiceSanitarioCittadino>0310467778</codiceSanitarioCittadino></x>";
    const std::string namesake = "<x><codiceFiscale>RSSMRA80A01H501U</codiceFiscale></x>";
    const std::string byCard = "<x><idAssistito>0310467778</idAssistito></x>";
    for (const auto& message : {byName, byCode, namesake, byCard})
    {
        anonymiser.Learn(message);
    }
    const std::string tag = anonymiser.Message(byName).substr(12, 6);
    const std::string other = anonymiser.Message(namesake).substr(18, 6);
    CHECK(tag != other);
    CHECK(anonymiser.Message(byCode) ==
          "<x><codiceFiscaleCittadino>" + tag + "00A00Z000X</codiceFiscaleCittadino><cognomeCittadino>" + tag +
              "</cognomeCittadino><nomeCittadino>PERSONA</nomeCittadino><codiceSanitarioCittadino>" + tag +
              "0000</codiceSanitarioCittadino></x>");
    CHECK(anonymiser.Message(byCard) == "<x><idAssistito>" + tag + "0000</idAssistito></x>");
    CHECK(anonymiser.Message("<x><valoreCampo>rssmra45c12f205c</valoreCampo></x>") ==
          "<x><valoreCampo>" + tag + "00A00Z000X</valoreCampo></x>");
    CHECK(anonymiser.PersonCount() == 2);
    // A second person of that name: from then on the name alone is neither of them.
    const std::string twin =
        "<x><codiceFiscale>RSSMRA01A01F205X</codiceFiscale><cognome>Rossi</cognome><nome>Mario</nome></x>";
    anonymiser.Learn(twin);
    CHECK(!Has(anonymiser.Message(byName), tag));
    CHECK(anonymiser.Message(byName) == anonymiser.Message(byName));
    // One that is mistyped shows.
    CHECK(
        Has(anonymiser.Message("<x><codiceFiscale>RSSMRA45C12F20</codiceFiscale></x>"), "[non valido, 14 caratteri]"));
}

TEST_CASE("Lines keep codes and identifiers")
{
    Anonymiser anonymiser(Counting());
    anonymiser.Learn("<x><cognome>Dell'Acqua</cognome><nome>Niccolò</nome><comune>Monza</comune></x>");
    const std::string begin = "2026-11-22 12.09.35 Vellumo 0.9.0.233 ";
    const auto masked = [&](const std::string& text) { return anonymiser.Line(begin + text).substr(begin.size()); };
    const std::string kept =
        "DA CONTROLLARE: codici del SISS non salvati (IUP 0300A4000000002, protocollo 030000000000005): "
        "Ricetta farmaci 101, numero 1.";
    CHECK(masked(kept) == kept);
    CHECK(masked("(SEBC00077) Il signor Rossi non esiste.") == "(SEBC00077) [testo del SISS, 27 caratteri]");
    CHECK(masked("errore 0x80040E14: colonna 'Rossi Mario' non valida") == "errore 0x80040E14: colonna '…' non valida");
    CHECK(masked("paziente NICCOLò DELL'ACQUA di Monza, RSSMRA45C12F205C") ==
          "paziente [mascherato] [mascherato] di [mascherato], [mascherato]");
    CHECK(anonymiser.Line("Appunti su Rossi, e altro") == "[riga mascherata, 25 caratteri]");
    CHECK(anonymiser.Report("C:\\Users\\rossi\\AppData: ok") == "C:\\Users\\[mascherato]\\AppData: ok");
    CHECK(anonymiser.Machine("PC-ROSSI") == anonymiser.Machine("pc-rossi"));
}

TEST_CASE("A package has the library's own files, and of the others their number")
{
    tests::Installation installation;
    installation.Write("Log\\2026-11-22 10.00.00\\1 - Richiesta Identifica Cittadino GUI", "<x><nome>Anna</nome></x>");
    installation.Write("Log\\2026-11-22 10.00.00\\1 - Risposta Identifica Cittadino GUI", "");
    installation.Write("Log\\2026-11-22 10.00.00\\2 - Richiesta di Mario Rossi", "<x/>");
    installation.Write("Log\\appunti su Rossi.txt", "Rossi");
    installation.Write("Tracce\\tracce 2026-11.txt",
                       "2026-11-22 10.00.01 Vellumo 1.0 Uno.\r\n2020-01-01 10.00.01 Vellumo "
                       "1.0 Due.\r\n");
    installation.Write("Tracce\\codici 2026-11-22 10.15.00 PC-ROSSI-1.txt",
                       "# Codici\r\n*1\tPC-ROSSI\t5\t2026-11-22 10.15.00\tRicetta farmaci 101, numero 1\tIUP 03\r\n");
    installation.Write("Tracce\\Rossi.txt", "Rossi");
    PackageSource source{installation.Path("Log"), installation.Path("Tracce"), {}, "Tutto ok", installation.clock.now};
    source.period.firstDay = *host::Date::FromCalendar(2026, 1, 1);
    const Package package = MakePackage(source, Counting());

    std::string all;
    for (const PackageFile& file : package.files)
    {
        all += file.name + '\n' + file.bytes + '\n';
    }
    CHECK(!Has(all, "Rossi"));
    CHECK(!Has(all, "ROSSI"));
    CHECK(!Has(all, "Anna"));
    CHECK(Has(all, "Log/2026-11-22 10.00.00/2 - Richiesta Servizio sconosciuto"));
    CHECK(Has(all,
              "Tracce/codici 2026-11-22 10.15.00 postazione1-1.txt\n*1\tpostazione1\t5\t2026-11-22 10.15.00\tRicetta "
              "farmaci 101, numero 1\tIUP 03\r\n"));
    CHECK(Has(all, "Vellumo 1.0 Uno."));
    CHECK(!Has(all, "Due"));
    CHECK(package.page == package.files.back().bytes);
    CHECK(Has(package.page, "Tutto ok"));
    CHECK(Has(package.page, "1 file o cartelle, che restano nello studio"));
    CHECK(package.files.size() == 7);
    CHECK(ZipOf(package).starts_with("PK\x03\x04"));
}
