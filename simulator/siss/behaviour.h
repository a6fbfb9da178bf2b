// What the simulated network answers instead of, or around, its proper reply, when a scenario or the operator of the
// simulator wants to see it misbehave.
#pragma once

#include <cstddef>
#include <string>
#include <variant>
#include <vector>

namespace vellumo::siss
{

// One entry of a list of exceptions or warnings.
struct Detail
{
    std::string code;
    std::string message;
    std::string field;
    std::string value;
    std::string fieldCode;
    std::string fieldMessage;
};

// The service answers with a negative outcome.
struct Refusal
{
    std::string code;
    std::string message;
    std::vector<Detail> exceptions;
    std::vector<Detail> warnings;
    // The service does its work all the same, and its data stands beside the outcome.
    bool withData = false;
};

// A SOAP fault instead of a reply.
struct SoapFault
{
    std::string prefix = "SOAP-ENV"; // or "env"
    std::string code;
    std::string message;
    std::string detailCode; // detail/faultDetail/errorCode; "" leaves it out
};

// Any text at all, as it stands; may be empty.
struct Verbatim
{
    std::string text;
};

// The bridge itself fails: its method raises an error.
struct Raise
{
    std::string message;
};

// A well-formed reply of the right service without its outcome node.
struct NoOutcome
{
};

// The proper reply with this text for its data and nothing else.
struct DataText
{
    std::string text;
};

// The proper reply with this data node, whatever was asked: its XML.
struct DataXml
{
    std::string xml;
};

// Replies made to do harm. `size` is bytes, or levels of elements.
struct Hostile
{
    enum class Kind
    {
        Huge,    // well-formed, `size` bytes of text in it
        Deep,    // `size` elements inside each other
        Doctype, // a document type with entities that grow
        External // a document type that names a file
    };
    Kind kind = Kind::Huge;
    std::size_t size = 0;
};

// The service does its work, and its reply never arrives.
struct LostReply
{
};

struct Behaviour
{
    std::variant<std::monostate, Refusal, SoapFault, Verbatim, Raise, NoOutcome, DataText, DataXml, Hostile, LostReply>
        reply;
    // Put into a proper reply, beside its data: a good answer that still has something to say.
    std::vector<Detail> warnings;
    std::vector<Detail> exceptions;
    int delayMilliseconds = 0;

    // The entries of a negative outcome go where those of a proper reply do not.
    void Add(bool isWarning, const Detail& entry)
    {
        auto* const refusal = std::get_if<Refusal>(&reply);
        auto& ofWarnings = refusal != nullptr ? refusal->warnings : warnings;
        auto& ofExceptions = refusal != nullptr ? refusal->exceptions : exceptions;
        (isWarning ? ofWarnings : ofExceptions).push_back(entry);
    }
};

} // namespace vellumo::siss
