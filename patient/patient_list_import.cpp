#include "patient/patient_list_import.h"

#include "environment/declared_encoding.h"
#include "environment/files.h"
#include "host/connection.h"
#include "host/fault.h"
#include "patient/patient_writer.h"
#include "ui/form_progress.h"

#include <algorithm>
#include <any>
#include <exception>
#include <utility>

namespace vellumo::patient
{
namespace
{

constexpr const char* jobName = "sincronizza_pazienti";
constexpr const char* listElement = "assistiti";
constexpr const char* citizenElement = "assistito";

// A citizen takes about a kilobyte and 22 elements; a doctor has two thousand, a group of practices fifty times as
// many.
constexpr xml::Limits limits = {.bytes = std::size_t{96} * 1024 * 1024, .nodes = 2'500'000};

// An empty one is a list, too: it revokes everybody. One that says of nobody who he is would do the same by mistake.
bool IsList(const xml::Document& document)
{
    const xml::Node root = document.Root();
    return root.Name() == listElement &&
           (!root.FirstChildElement() || std::ranges::any_of(root.SelectAll(citizenElement), [](const xml::Node& node)
                                                             { return ReadListed(node).person.CanBeFound(); }));
}

// Imports one citizen after the other; towns and ASLs are looked up once for all of them.
class ListedPatients
{
public:
    explicit ListedPatients(const service::ProviderContext& context)
        : m_context(context)
        , m_references(context)
        , m_writer(context, m_references)
    {
    }

    void Store(const Citizen& citizen)
    {
        host::Transaction transaction(m_context.services.RequireConnection());
        const auto patient = m_context.objects.CreateRecord(host::RecordKind::Patient, m_context.services);
        const std::int32_t matched = m_writer.FindPatient(citizen.person).id;
        if (matched == 0 || !patient->Load(matched))
        {
            patient->StartNew();
        }
        m_writer.Fill(citizen, *patient);
        // Whoever is on the list is alive, whatever the practice thought.
        patient->Set("Deceduto", std::int32_t{0});
        PatientWriter::Save(*patient);
        m_writer.WriteAddresses(citizen, patient->Id());
        transaction.Commit();
    }

private:
    const service::ProviderContext& m_context;
    ReferenceData m_references;
    PatientWriter m_writer;
};

} // namespace

bool PatientListImport::Run() const noexcept
{
    return host::Trap(
        false,
        [&]
        {
            const auto path = m_context.desktop.AskFile("Selezionare il file contenente l'elenco assistiti",
                                                        "Elenco assistiti (*.xml)|*.xml");
            return path && RunOnFile(*path);
        },
        [&](const std::exception& fault)
        { m_context.journal.Write("Importazione dell'elenco assistiti: " + service::WhyOf(fault)); });
}

bool PatientListImport::RunOnFile(const std::string& path) const
{
    // What is too large for a list is not even read: there may not be memory for it.
    const bool fits = environment::FileSize(path).value_or(0) <= limits.bytes;
    auto bytes = fits ? environment::ReadFile(path) : std::nullopt;
    if (fits && !bytes)
    {
        ShowError("Il file di importazione selezionato non è valido.");
        return false;
    }
    const auto list = fits ? ReadList(std::move(*bytes)) : std::nullopt;
    if (!list)
    {
        ShowError("Si è verificato un errore in fase di apertura del documento selezionato.");
        return false;
    }

    ui::FormProgress progress;
    progress.Load();
    progress.Tag = jobName;
    progress.OnActivate[jobName] = [&](ui::FormProgress& window, const std::any&, std::any& result)
    {
        Course course;
        try
        {
            Import(*list, window, course);
            result = true;
            host::PassOver([&] { Tell(course, nullptr); });
        }
        catch (const std::exception& fault)
        {
            result = std::string(fault.what());
            host::PassOver([&] { Tell(course, &fault); });
        }
    };
    progress.InitializeProgress("Sincronizzazione", "Importazione pazienti");
    progress.MeasurePace(m_context.clock, "pazienti");
    m_context.desktop.ShowModal(progress);

    if (std::any_cast<bool>(&progress.Result()) != nullptr)
    {
        m_context.desktop.Show(
            {"Sincronizzazione dati effettuata con successo.", "Informazione!!", ui::Icon::Information});
        return true;
    }
    const auto* description = std::any_cast<std::string>(&progress.Result());
    ShowError("Si è verificato un errore in fase di importazione:\r\n" +
              (description == nullptr ? std::string() : *description));
    return false;
}

std::optional<xml::Document> PatientListImport::ReadList(std::string bytes)
{
    return host::Trap( // memory may run out
        std::optional<xml::Document>(),
        [&]
        {
            const auto text = environment::DecodeXml(std::move(bytes));
            auto document = text ? xml::Document::FromText(*text, limits) : std::nullopt;
            // Any other document has nobody in it, and all patients would be revoked.
            return document && IsList(*document) ? std::move(document) : std::nullopt;
        });
}

void PatientListImport::Import(const xml::Document& list, ui::FormProgress& progress, Course& course) const
{
    const auto citizens = list.Root().SelectAll(citizenElement);
    course.count = citizens.size();
    Revoke();
    course.revoked = true;
    ListedPatients patients(m_context);
    const auto count = static_cast<std::int32_t>(citizens.size());
    std::int32_t position = 0;
    for (const xml::Node& node : citizens)
    {
        const Citizen citizen = ReadListed(node);
        progress.SetProgressValue(++position, count);
        progress.SetProgressInformation("Importazione paziente...", citizen.person.cognome + ' ' + citizen.person.nome);
        if (!citizen.person.CanBeFound())
        {
            ++course.passedOver;
            continue;
        }
        patients.Store(citizen);
        ++course.imported;
    }
}

// `fault` null: it has come to its end.
void PatientListImport::Tell(const Course& course, const std::exception* fault) const
{
    if (fault == nullptr && course.passedOver == 0)
    {
        return;
    }
    std::string line = "Importazione dell'elenco assistiti ";
    line += fault == nullptr ? "terminata" : "interrotta";
    line += ": importati " + std::to_string(course.imported) + " di " + std::to_string(course.count) + ".";
    if (course.passedOver != 0)
    {
        line += " Senza codice fiscale, codice sanitario e cognome, quindi non importati: " +
                std::to_string(course.passedOver) + ".";
    }
    if (fault != nullptr)
    {
        line += course.revoked ? " Gli altri pazienti restano revocati." : " Nessun paziente è stato revocato.";
        line += " L'importazione si può ripetere. Motivo: " + service::WhyOf(*fault);
    }
    m_context.journal.WriteToCheck(line);
}

// Of every practice: the list is the region's, not one studio's.
void PatientListImport::Revoke() const
{
    host::Connection& connection = m_context.services.RequireConnection();
    host::Transaction transaction(connection);
    static_cast<void>(connection.Open("UPDATE Paziente SET Revocato = 1 WHERE Deceduto = 0"));
    transaction.Commit();
}

void PatientListImport::ShowError(const std::string& text) const
{
    m_context.desktop.Show({text, "Errore!!", ui::Icon::Critical});
}

} // namespace vellumo::patient
