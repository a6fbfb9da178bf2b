// The host operation SincronizzaPazienti: imports the list of the doctor's patients, an XML file of the region that the
// operator chooses, inside the progress window. Every living patient is marked revoked first, of all practices; each
// citizen of the list is then matched, updated or made, and is active again. Nothing is asked for single patients, and
// exemptions are left alone.
//
// The revocation is one transaction, each patient with his ASL and addresses another, so that a fault or a program
// that ends in between leaves whole patients: those before it imported, the rest revoked.
#pragma once

#include "service/provider_context.h"
#include "xml/document.h"

#include <cstddef>
#include <exception>
#include <optional>
#include <string>

namespace vellumo::ui
{
class FormProgress;
}

namespace vellumo::patient
{

class PatientListImport
{
public:
    explicit PatientListImport(const service::ProviderContext& context)
        : m_context(context)
    {
    }

    // True only when the import came to its end. Otherwise the operator has seen why, or has chosen no file. Traps its
    // faults. A line in the journal tells of an import that broke off, and of elements that it passed over.
    [[nodiscard]] bool Run() const noexcept;

private:
    [[nodiscard]] bool RunOnFile(const std::string& path) const;
    // The list, when the text is one; empty for anything else.
    [[nodiscard]] static std::optional<xml::Document> ReadList(std::string bytes);
    // How far an import has come.
    struct Course
    {
        bool revoked = false;
        std::size_t count = 0; // of the list
        std::size_t imported = 0;
        std::size_t passedOver = 0; // nobody could tell who they are
    };
    void Import(const xml::Document& list, ui::FormProgress& progress, Course& course) const;
    void Tell(const Course& course, const std::exception* fault) const;
    void Revoke() const;
    void ShowError(const std::string& text) const;

    const service::ProviderContext& m_context;
};

} // namespace vellumo::patient
