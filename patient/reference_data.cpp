#include "patient/reference_data.h"

#include "host/fault.h"

namespace vellumo::patient
{
namespace
{

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

std::int32_t ReferenceData::AslOf(const Asl& asl)
{
    const std::string key = asl.RegionCode() + '/' + asl.Number();
    const auto found = m_asls.find(key);
    if (found != m_asls.end() && (asl.descrizione.empty() || asl.descrizione == found->second.description))
    {
        return found->second.id;
    }
    const std::int32_t region = RegionOf(asl.RegionCode());
    const std::int32_t id = region == 0 ? 0 : WriteAsl(asl, region);
    m_asls.insert_or_assign(key, StoredAsl{id, asl.descrizione});
    return id;
}

std::int32_t ReferenceData::WriteAsl(const Asl& asl, std::int32_t region) const
{
    const std::string number = asl.Number();
    const auto known =
        m_context.services.RequireUtils()
            .SingleValue("SELECT IDAsl FROM Norda..Asl WHERE NumeroASL = {0} AND IDRegione = {1}", {number, region})
            .ToInteger();
    const auto record = m_context.objects.CreateRecord(host::RecordKind::Asl, m_context.services);
    if (known == 0)
    {
        record->StartNew();
    }
    else if (!record->Load(known))
    {
        throw host::Fault("Impossibile leggere l'ASL del paziente.");
    }
    if (known == 0 || !asl.descrizione.empty())
    {
        record->Set("ASL", asl.descrizione);
    }
    record->Set("NumeroASL", number);
    record->Set("IDRegione", region);
    if (!record->Save())
    {
        throw host::Fault("Impossibile salvare l'ASL del paziente.");
    }
    return record->Id();
}

} // namespace vellumo::patient
