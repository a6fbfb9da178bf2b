#include "patient/reference_data.h"

#include "environment/ansi_text.h"
#include "host/fault.h"

namespace vellumo::patient
{
namespace
{

constexpr std::size_t aslCodePart = 3;

template <class Find>
std::int32_t Once(std::unordered_map<std::string, std::int32_t>& known, const std::string& key, Find&& find)
{
    if (const auto found = known.find(key); found != known.end())
    {
        return found->second;
    }
    const std::int32_t id = find();
    known.emplace(key, id);
    return id;
}

} // namespace

std::string RegionCodeOf(std::string_view siglaAsl)
{
    return environment::FirstCharacters(siglaAsl, aslCodePart);
}

std::string AslNumberOf(std::string_view siglaAsl)
{
    return environment::LastCharacters(siglaAsl, aslCodePart);
}

std::int32_t ReferenceData::TownOf(const std::string& name)
{
    return Once(m_towns, name,
                [&]
                {
                    return m_context.services.RequireUtils()
                        .SingleValue("SELECT IDComune FROM Norda..Comune WHERE Comune = {0}", {name})
                        .ToInteger();
                });
}

std::int32_t ReferenceData::RegionOf(const std::string& code)
{
    return Once(m_regions, code,
                [&]
                {
                    return m_context.services.RequireUtils()
                        .SingleValue("SELECT IDRegione FROM Norda..Regione WHERE CodiceRegione = {0}", {code})
                        .ToInteger();
                });
}

std::int32_t ReferenceData::AslOf(const std::string& sigla, const std::string& description)
{
    const auto found = m_asls.find(sigla);
    if (found != m_asls.end() && found->second.description == description)
    {
        return found->second.id;
    }
    const std::int32_t region = RegionOf(RegionCodeOf(sigla));
    const std::int32_t id = region == 0 ? 0 : WriteAsl(AslNumberOf(sigla), region, description);
    m_asls.insert_or_assign(sigla, Asl{id, description});
    return id;
}

std::int32_t ReferenceData::WriteAsl(const std::string& number, std::int32_t region,
                                     const std::string& description) const
{
    const auto known =
        m_context.services.RequireUtils()
            .SingleValue("SELECT IDAsl FROM Norda..Asl WHERE NumeroASL = {0} AND IDRegione = {1}", {number, region})
            .ToInteger();
    const auto asl = m_context.objects.CreateRecord(host::RecordKind::Asl, m_context.services);
    if (known == 0)
    {
        asl->StartNew();
    }
    else if (!asl->Load(known))
    {
        throw host::Fault("Impossibile leggere l'ASL del paziente.");
    }
    asl->Set("ASL", description);
    asl->Set("NumeroASL", number);
    asl->Set("IDRegione", region);
    if (!asl->Save())
    {
        throw host::Fault("Impossibile salvare l'ASL del paziente.");
    }
    return asl->Id();
}

} // namespace vellumo::patient
