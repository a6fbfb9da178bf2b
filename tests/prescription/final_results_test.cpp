// Whose a final result is.
#include "prescription/final_results.h"

#include <doctest.h>

#include <string>
#include <vector>

using namespace vellumo::prescription;

namespace
{

// A letter each: the code of a result, or that registration gave; "-" for none, lower case for a prescription that the
// operator cancelled.
struct PairingCase
{
    const char* what;
    const char* results;
    const char* prescriptions;
    const char* pairs; // for each result the prescription that takes it, counted from 1; "." for none
};

std::string CodeOf(char letter)
{
    return letter == '-' ? std::string() : std::string(1, letter);
}

std::string PairsOf(const Pairing& pairing, std::size_t count)
{
    std::string text(count, '?');
    for (const auto& [result, prescription] : pairing.pairs)
    {
        CHECK(text.at(result) == '?');
        text[result] = static_cast<char>('1' + prescription);
    }
    for (const auto& leftOver : pairing.leftOver)
    {
        CHECK(text.at(leftOver.result) == '?');
        text[leftOver.result] = '.';
    }
    return text;
}

Pairing Pair(const std::string& results, const std::string& prescriptions)
{
    std::vector<std::string> codes;
    for (const char letter : results)
    {
        codes.push_back(CodeOf(letter));
    }
    std::vector<Registered> registered;
    for (const char letter : prescriptions)
    {
        const bool cancelled = letter == '_' || (letter >= 'a' && letter <= 'z');
        const char code = letter == '_' ? '-' : cancelled ? static_cast<char>(letter - 'a' + 'A') : letter;
        registered.push_back({CodeOf(code), !cancelled});
    }
    return PairFinalResults(codes, registered);
}

} // namespace

TEST_SUITE("prescription")
{
    TEST_CASE("a final result goes to the prescription that got its code, and the others by their order")
    {
        for (const auto& each : {
                 PairingCase{"nothing", "", "", ""},
                 PairingCase{"as registered", "ABC", "ABC", "123"},
                 PairingCase{"another order", "CAB", "ABC", "312"},
                 PairingCase{"no code known: plain order", "XY", "---", "12"},
                 PairingCase{"no code known: too many", "XYZ", "--", "12."},
                 PairingCase{"nobody to take them", "XY", "", ".."},
                 PairingCase{"results without codes", "---", "ABC", "123"},
                 PairingCase{"only other codes than registration's", "XYZ", "ABC", "123"},

                 PairingCase{"of a cancelled one", "AB", "aB", ".2"},
                 PairingCase{"a cancelled one without code, too many", "XB", "_B", ".2"},
                 PairingCase{"cancelled ones leave no gap", "BXC", "aB-_C", "235"},
                 PairingCase{"a code of a cancelled one and of another", "AX", "Aa-", ".1"},
                 PairingCase{"all cancelled", "ABX", "ab_", "..."},

                 PairingCase{"the same code twice", "AA", "AB", "1."},
                 PairingCase{"a code of two", "AA", "AA", "12"},
                 PairingCase{"a code of two, three results", "AAA", "AAB", "12."},
                 PairingCase{"a code of two, one result", "AX", "AA", "12"},
                 PairingCase{"a code of two around another", "ABA", "ABA", "123"},

                 PairingCase{"gaps: before, between, behind", "XAYBZ", "-A-B-", "12345"},
                 PairingCase{"gaps: one side empty", "XAB", "A-B", ".13"},
                 PairingCase{"gaps: too many in one, none in the other", "AXYB", "A-B-", "12.3"},
                 PairingCase{"short: the first has none", "B", "AB", "2"},
                 PairingCase{"another order: over all that is left", "BXAY", "A-B-", "3214"},
                 PairingCase{"another order: too many left", "BXAYZ", "A-B-", "3214."},
                 PairingCase{"empty among known", "A-C", "ABC", "123"},
             })
        {
            CAPTURE(std::string(each.what));
            CHECK(PairsOf(Pair(each.results, each.prescriptions), std::string(each.results).size()) == each.pairs);
        }
    }

    TEST_CASE("a result that is left over names the prescription that got its code")
    {
        using LeftOver = std::vector<Pairing::LeftOver>;
        CHECK(Pair("BAX", "aB").leftOver == LeftOver{{1, 0}, {2, std::nullopt}});
        CHECK(Pair("BB", "AB").leftOver == LeftOver{{1, 1}});
    }
}
