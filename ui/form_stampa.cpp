#include "ui/form_stampa.h"

#include <array>
#include <cstddef>

namespace vellumo::ui
{
namespace
{

using host::OpzioniRicetta;

struct Entry
{
    const char* text;
    std::int32_t modalitaStampa;
};

constexpr std::array<Entry, 2> paperEntries = {{
    {"Stampa da SISS", OpzioniRicetta::printedBySiss},
    {"Stampa da Norda!", OpzioniRicetta::printedByHost},
}};
constexpr int usualPaperEntry = 1;

constexpr std::array<Entry, 2> electronicEntries = {{
    {"Stampa promemoria", host::oreStampaPromemoria},
    {"Non stampare promemoria!", host::oreNessuna},
}};
constexpr int usualElectronicEntry = 0;

void Fill(ComboBox& list, const std::array<Entry, 2>& entries, int index)
{
    for (const Entry& entry : entries)
    {
        list.entries.emplace_back(entry.text);
    }
    list.index = index;
    list.sameLine = true;
}

void Take(const ComboBox& list, const std::array<Entry, 2>& entries, std::int32_t type, OpzioniRicetta& opzioni)
{
    opzioni.TipoRicetta = type;
    if (list.index >= 0 && static_cast<std::size_t>(list.index) < entries.size())
    {
        opzioni.ModalitaStampa = entries.at(static_cast<std::size_t>(list.index)).modalitaStampa;
    }
}

} // namespace

FormStampa::FormStampa(OpzioniRicetta& opzioni)
    : Form("Modalità di stampa")
    , m_opzioni(opzioni)
    , m_rur("RUR")
    , m_elettronica("Ricetta elettronica")
    , m_ok("&OK")
    , m_annulla("&Annulla")
{
    Fill(m_comboStampaRUR, paperEntries, usualPaperEntry);
    Fill(m_comboStampaRE, electronicEntries, usualElectronicEntry);
    m_rur.selected = opzioni.TipoRicetta == OpzioniRicetta::paperForm;
    m_elettronica.selected = opzioni.TipoRicetta == OpzioniRicetta::electronic;
    EnableLists();
    m_ok.isDefault = true;
    m_annulla.sameLine = true;
    m_annulla.isCancel = true;
    m_controls = {&m_rur, &m_comboStampaRUR, &m_elettronica, &m_comboStampaRE, &m_ok, &m_annulla};
    m_initialFocus = m_elettronica.selected ? &m_elettronica : &m_rur;
    m_designSize = {5600, 1900};
}

void FormStampa::EnableLists()
{
    m_comboStampaRUR.enabled = m_rur.selected;
    m_comboStampaRE.enabled = m_elettronica.selected;
}

void FormStampa::Clicked(Control& control)
{
    if (&control == &m_rur || &control == &m_elettronica)
    {
        EnableLists();
    }
    else if (&control == &m_ok)
    {
        Confirm();
    }
    else if (&control == &m_annulla)
    {
        Close();
    }
}

void FormStampa::Confirm()
{
    if (m_rur.selected)
    {
        Take(m_comboStampaRUR, paperEntries, OpzioniRicetta::paperForm, m_opzioni);
    }
    else if (m_elettronica.selected)
    {
        Take(m_comboStampaRE, electronicEntries, OpzioniRicetta::electronic, m_opzioni);
    }
    m_result = Decision::Confirmed;
    Close();
}

} // namespace vellumo::ui
