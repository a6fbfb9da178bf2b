// Requests filled and written, read back by libxml2, held against the template filled in libxml2's own tree. The first
// byte of an input says which request; the rest are lines "N text": the text for the N-th element below the data, or
// behind "h" below the header.
#include "fuzz/bare_document.h"
#include "fuzz/kept_practice.h"
#include "fuzz/oracle.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

namespace vellumo::fuzz
{
namespace
{

constexpr int requests = 12;

// Paths of all elements below `node`, relative to it.
void CollectPaths(xmlNode* node, const std::string& prefix, std::vector<std::string>& paths)
{
    for (xmlNode* child = node->children; child != nullptr; child = child->next)
    {
        if (child->type == XML_ELEMENT_NODE)
        {
            const auto path = prefix + BareDocument::Name(child);
            paths.push_back(path);
            CollectPaths(child, path + '/', paths);
        }
    }
}

struct Template
{
    std::string text;
    std::string header; // absolute paths
    std::string data;
    std::vector<std::string> inData;
    std::vector<std::string> inHeader;
};

// Where the node stands, from its tree's root.
std::string PathOf(const BareDocument& document, const std::string& name, xmlNode* from, const std::string& path)
{
    for (xmlNode* child = from->children; child != nullptr; child = child->next)
    {
        if (child->type == XML_ELEMENT_NODE)
        {
            const auto below = path + '/' + BareDocument::Name(child);
            const auto found = BareDocument::Name(child) == name ? below : PathOf(document, name, child, below);
            if (!found.empty())
            {
                return found;
            }
        }
    }
    return {};
}

Template Read(const KeptPractice& practice, int number)
{
    const auto request = practice.parts.factory.GetRequest(static_cast<service::RequestTypes>(number));
    Require(request.has_value(), "each request has its template");
    Template made;
    made.text = request->ToString();
    const BareDocument document(made.text);
    const auto root = '/' + BareDocument::Name(document.Root());
    made.header = PathOf(document, request->Header().Name(), document.Root(), root);
    xmlNode* const header = document.Select(document.Root(), made.header);
    made.data = PathOf(document, request->Data().Name(), header, made.header);
    CollectPaths(document.Select(document.Root(), made.data), "", made.inData);
    CollectPaths(header, "", made.inHeader);
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

void Fill(service::ServiceRequest& request, BareDocument& bare, const Template& made, const Filling& filling)
{
    const auto& paths = filling.isHeader ? made.inHeader : made.inData;
    if (paths.empty())
    {
        return;
    }
    const auto& path = paths[filling.number % paths.size()];
    const host::Value value(filling.text);
    filling.isHeader ? request.SetHeader(path, value) : request.SetData(path, value);
    xmlNode* const above = bare.Select(bare.Root(), filling.isHeader ? made.header : made.data);
    xmlNode* const node = bare.Select(above, path);
    if (node != nullptr) // gone with what a text above it has replaced
    {
        bare.SetText(node, filling.text);
    }
    if (!filling.isHeader)
    {
        RequireSame(request.GetData(path), BareDocument::Text(node), "what was set");
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
    auto request = practice.parts.factory.GetRequest(static_cast<service::RequestTypes>(number));
    BareDocument bare(made.text);
    auto rest = View(data, size).substr(1);
    while (!rest.empty())
    {
        const auto end = std::min(rest.find('\n'), rest.size());
        Fill(*request, bare, made, ReadLine(rest.substr(0, end)));
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    const BareDocument back(request->ToString(), BareDocument::Reading::Exact);
    Require(back.HasTree(), "a request is XML");
    RequireSame(BareDocument::Canonical(back.Root()), BareDocument::Canonical(bare.Root()), "a filled request");
    return 0;
}
