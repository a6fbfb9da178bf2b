// Requests filled and written, read back by libxml2, held against the template filled in libxml2's own tree. The first
// byte of an input says which request; the rest are lines "N text": the text for the N-th element below the data, or
// behind "h" below the header.
#include "fuzz/bare_document.h"
#include "fuzz/kept_practice.h"
#include "fuzz/oracle.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

namespace vellumo::fuzz
{
namespace
{

constexpr int requests = 12;

// All elements from `element` on, in the order in which they begin.
void CollectElements(xmlNode* element, std::vector<xmlNode*>& elements)
{
    elements.push_back(element);
    for (xmlNode* child = element->children; child != nullptr; child = child->next)
    {
        if (child->type == XML_ELEMENT_NODE)
        {
            CollectElements(child, elements);
        }
    }
}

std::vector<xmlNode*> ElementsOf(const BareDocument& document)
{
    std::vector<xmlNode*> elements;
    CollectElements(document.Root(), elements);
    return elements;
}

// Absolute.
std::string PathOf(const xmlNode* element)
{
    return element->type == XML_ELEMENT_NODE ? PathOf(element->parent) + '/' + BareDocument::Name(element) : "";
}

// An element of a template that a request can fill.
struct Field
{
    std::string path;    // below the data or the header
    std::size_t element; // which of all elements of the document
};

// Read once, and copied for each input.
struct Template
{
    std::string text;
    std::unique_ptr<BareDocument> bare;
    std::string header; // absolute paths
    std::string data;
    std::vector<Field> inHeader;
    std::vector<Field> inData;
};

std::vector<Field> FieldsBelow(const std::string& above, const std::vector<std::string>& paths)
{
    std::vector<Field> fields;
    for (std::size_t element = 0; element < paths.size(); ++element)
    {
        if (paths[element].starts_with(above + '/'))
        {
            fields.push_back({paths[element].substr(above.size() + 1), element});
        }
    }
    return fields;
}

Template Read(const KeptPractice& practice, int number)
{
    const auto request = practice.parts.factory.GetRequest(static_cast<service::RequestTypes>(number));
    Require(request.has_value(), "each request has its template");
    Template made;
    made.text = request->ToString();
    made.bare = std::make_unique<BareDocument>(made.text);
    std::vector<std::string> paths;
    std::ranges::transform(ElementsOf(*made.bare), std::back_inserter(paths), PathOf);
    const auto endingWith = [&](const std::string& name)
    { return *std::ranges::find_if(paths, [&](const std::string& path) { return path.ends_with('/' + name); }); };
    made.header = endingWith(request->Header().Name());
    made.data = endingWith(request->Data().Name());
    made.inHeader = FieldsBelow(made.header, paths);
    made.inData = FieldsBelow(made.data, paths);
    return made;
}

const Template& TemplateOf(const KeptPractice& practice, int number)
{
    static std::array<Template, requests> all;
    Template& one = all.at(static_cast<std::size_t>(number));
    if (one.text.empty())
    {
        one = Read(practice, number);
    }
    return one;
}

struct Filling
{
    bool isHeader = false;
    std::size_t number = 0;
    std::string_view text;
};

Filling ReadLine(std::string_view line)
{
    Filling filling;
    filling.isHeader = line.starts_with('h');
    line.remove_prefix(filling.isHeader ? 1 : 0);
    while (!line.empty() && line.front() >= '0' && line.front() <= '9')
    {
        filling.number = (filling.number * 10 + static_cast<std::size_t>(line.front() - '0')) % 1000;
        line.remove_prefix(1);
    }
    filling.text = line.substr(line.starts_with(' ') ? 1 : 0);
    return filling;
}

void Fill(service::ServiceRequest& request, BareDocument& bare, const std::vector<xmlNode*>& elements,
          const Template& made, const Filling& filling)
{
    const auto& fields = filling.isHeader ? made.inHeader : made.inData;
    if (fields.empty())
    {
        return;
    }
    const auto& [path, element] = fields[filling.number % fields.size()];
    const host::Value value(filling.text);
    filling.isHeader ? request.SetHeader(path, value) : request.SetData(path, value);
    xmlNode* const node = elements[element];
    const bool isThere = BareDocument::IsWithin(node, bare.Root()); // else gone with what a text above it has replaced
    if (isThere)
    {
        bare.SetText(node, filling.text);
    }
    if (!filling.isHeader)
    {
        RequireSame(request.GetData(path), isThere ? BareDocument::Text(node) : "", "what was set");
    }
}

} // namespace
} // namespace vellumo::fuzz

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace vellumo;
    using namespace vellumo::fuzz;
    static KeptPractice practice;
    if (size == 0)
    {
        return 0;
    }
    const int number = data[0] % requests;
    const auto& made = TemplateOf(practice, number);
    service::ServiceRequest request("", made.data, made.header, xml::Document::FromText(made.text).value());
    BareDocument bare(*made.bare);
    const auto elements = ElementsOf(bare);
    auto rest = View(data, size).substr(1);
    while (!rest.empty())
    {
        const auto end = std::min(rest.find('\n'), rest.size());
        Fill(request, bare, elements, made, ReadLine(rest.substr(0, end)));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    const BareDocument back(request.ToString(), BareDocument::Reading::Exact);
    Require(back.HasTree(), "a request is XML");
    RequireSame(BareDocument::Canonical(back.Root()), BareDocument::Canonical(bare.Root()), "a filled request");
    return 0;
}
