#include "environment/siss_import_index.h"

#include "host/fault.h"
#include "host/text.h"

namespace vellumo::environment
{

const SISSImportIndex* SISSImportIndexs::Find(std::string_view name) const
{
    const auto place = m_places.find(host::WithoutCase(name));
    return place == m_places.end() ? nullptr : &m_entries[place->second];
}

void SISSImportIndexs::AddObject(SISSImportIndex index)
{
    if (!m_places.try_emplace(host::WithoutCase(index.Name), m_entries.size()).second)
    {
        throw host::Fault("La tabella \"" + index.Name + "\" è già presente nell'indice.");
    }
    m_entries.push_back(std::move(index));
}

const SISSImportIndex& SISSImportIndexs::Item(std::string_view name) const
{
    if (const auto* entry = Find(name))
    {
        return *entry;
    }
    throw host::Fault("La tabella \"" + std::string(name) + "\" non è presente nell'indice.");
}

const SISSImportIndex& SISSImportIndexs::Item(std::size_t position) const
{
    if (position < 1 || position > m_entries.size())
    {
        throw host::Fault("La posizione richiesta non è presente nell'indice.");
    }
    return m_entries[position - 1];
}

} // namespace vellumo::environment
