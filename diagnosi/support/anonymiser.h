// Takes out of the messages and lines of one package whatever says who somebody is or what he suffers from. The same
// person is called the same in all of them. First everything is learned, then everything is written.
#pragma once

#include "diagnosi/support/known_values.h"
#include "diagnosi/support/mask_table.h"
#include "diagnosi/support/persons.h"
#include "xml/document.h"

#include <map>
#include <string>
#include <string_view>

namespace vellumo::diagnosi
{

class Anonymiser
{
public:
    // By lot of the system when none is given.
    explicit Anonymiser(Random random = {});

    // Who and what a message speaks of. Of a text that is no XML nothing is learned.
    void Learn(const std::string& message);
    // A name that no line or report may show.
    void LearnName(std::string_view name) { m_known.Add(name, "[mascherato]", 3); }

    // A request or reply, UTF-8. XML stays XML, laid out as the library writes it; any other text becomes a note of
    // its length. "" stays "".
    [[nodiscard]] std::string Message(const std::string& message);

    // A line that the library wrote, without its end: identifiers, codes and their parentheses stay; quoted values,
    // what SISS wrote behind a code, fiscal codes and whatever a message had of somebody are replaced. A line that does
    // not begin with time and version is no line of the library's and becomes a note.
    [[nodiscard]] std::string Line(std::string_view line);
    // A text about the installation: names of users in paths, and what `WithoutKnown` takes out.
    [[nodiscard]] std::string Report(std::string_view text);
    // What a line, a name or a harmless element may have of somebody is replaced, nothing else.
    [[nodiscard]] std::string WithoutKnown(std::string_view text);

    // "postazione1" and so on.
    [[nodiscard]] std::string Machine(const std::string& name);

    [[nodiscard]] const MaskTally& Tally() const noexcept { return m_tally; }
    [[nodiscard]] std::size_t PersonCount() const noexcept { return m_persons.Count(); }

private:
    void LearnElement(const xml::Node& element);
    void LearnValue(const std::string& name, const std::string& value);
    void MaskElement(const xml::Node& element, const PersonData& person);
    void MaskAttributes(const xml::Node& element);
    [[nodiscard]] std::string Masked(Mask mask, const std::string& value, const PersonData& person);
    [[nodiscard]] std::string PersonText(Mask mask, const std::string& value, const PersonData& person);
    [[nodiscard]] std::string WithoutFiscalCodes(std::string_view text);

    Persons m_persons;
    KnownValues m_known;
    MaskTally m_tally;
    std::map<std::string, std::string> m_machines;
};

} // namespace vellumo::diagnosi
