#include "diagnosi/checks/template_checks.h"

#include "diagnosi/checks/delivered_templates.h"
#include "environment/declared_encoding.h"
#include "environment/files.h"
#include "xml/document.h"
#include "xml/engine.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

namespace vellumo::diagnosi
{
namespace
{

// All elements and attributes of a text that is known to be good, by their absolute paths.
class Paths final : public xml::Builder
{
public:
    [[nodiscard]] static std::vector<std::string> Of(std::string_view text)
    {
        Paths paths;
        static_cast<void>(xml::Read(text, paths));
        return std::move(paths.m_all);
    }

    void StartElement(std::string_view name) override
    {
        m_current.append("/").append(name);
        m_all.push_back(m_current);
    }
    void Attribute(std::string_view name, std::string_view) override
    {
        if (!name.starts_with("xmlns"))
        {
            m_all.push_back(m_current + "/@" + std::string(name));
        }
    }
    void Text(std::string_view) override {}
    void EndElement() override { m_current.erase(m_current.rfind('/')); }

private:
    std::string m_current;
    std::vector<std::string> m_all;
};

// The names at the ends of the paths that the document lacks; of an element that is missing, not what stands below it.
std::string MissingIn(const xml::Document& document, std::string_view delivered)
{
    std::string names;
    std::string above;
    for (const auto& path : Paths::Of(delivered))
    {
        if (document.Select(path) || (!above.empty() && path.starts_with(above + '/')))
        {
            continue;
        }
        above = path;
        names += (names.empty() ? "" : ", ") + path.substr(path.rfind('/') + 1);
    }
    return names;
}

std::optional<xml::Document> Load(const std::string& path, bool& isRead)
{
    auto bytes = environment::ReadFile(path);
    isRead = bytes.has_value();
    const auto text = bytes ? environment::DecodeXml(std::move(*bytes)) : std::nullopt;
    return text ? xml::Document::FromText(*text) : std::nullopt;
}

Finding CheckTemplate(const DeliveredTemplate& delivered, const std::string& path)
{
    const std::string name(delivered.file);
    if (!environment::FileExists(path))
    {
        return {State::Error, "Manca il modello " + name + ": le richieste di questo tipo non vengono inviate.",
                "Installare di nuovo Vellumo: rimette i modelli mancanti."};
    }
    const std::string restore =
        "Spostare altrove il modello " + name + " e installare di nuovo Vellumo, che lo rimette.";
    bool isRead = false;
    const auto document = Load(path, isRead);
    if (!isRead)
    {
        return {State::Error, "Il modello " + name + " non può essere letto da questo utente.",
                "Dare agli utenti il permesso di leggere " + path + "."};
    }
    if (!document)
    {
        return {State::Error, "Il modello " + name + " non è un documento XML corretto.", restore};
    }
    const auto missing = MissingIn(*document, delivered.text);
    if (!missing.empty())
    {
        return {State::Error, "Nel modello " + name + " manca: " + missing + ". Questi dati non vengono inviati.",
                restore};
    }
    return {};
}

Finding CheckNewer(const std::string& path, const std::string& name)
{
    return environment::FileExists(path + ".nuovo")
               ? Finding{State::Attention,
                         "Accanto al modello " + name + ", modificato dallo studio, c'è quello della nuova versione (" +
                             name + ".nuovo).",
                         "Confrontare i due file, tenere quello giusto con il nome " + name +
                             " ed eliminare quello che finisce per .nuovo."}
               : Finding{};
}

} // namespace

Finding CheckTemplates(const Machine& machine)
{
    const std::string count = std::to_string(DeliveredTemplates().size());
    if (!environment::FolderExists(TemplatesFolder(machine)))
    {
        return {State::Error,
                "Manca la cartella dei " + count + " modelli, " + TemplatesFolder(machine) +
                    ": al SISS non viene inviato nulla.",
                "Installare di nuovo Vellumo: rimette i modelli."};
    }
    Findings findings;
    for (const auto& delivered : DeliveredTemplates())
    {
        const std::string path = environment::JoinPath(TemplatesFolder(machine), delivered.file);
        findings.Add(CheckTemplate(delivered, path));
        findings.Add(CheckNewer(path, std::string(delivered.file)));
    }
    return findings.Sum("I " + count + " modelli di " + TemplatesFolder(machine) +
                        " ci sono e hanno tutti gli elementi.");
}

} // namespace vellumo::diagnosi
