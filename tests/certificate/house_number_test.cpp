#include "certificate/house_number.h"
#include "host/fault.h"

#include <doctest.h>

#include <utility>

using namespace vellumo;
using certificate::ExtractHouseNumber;

TEST_SUITE("certificate")
{
    TEST_CASE("the house number is the last run of digits with its neighbour before and all behind it")
    {
        const std::pair<const char*, const char*> cases[] = {
            {"Via Roma 12", "12"},    {"Via Roma 12/A", "12/A"}, {"Via Roma, 12 ", "12"},
            {"Via Roma n.12", ".12"}, {"Via 25 Aprile 7", "7"},  {"Via XX Settembre", "1"},
            {"Via Nicolò13", "ò13"}, // the neighbour is a whole character, whatever its bytes
            {" 8 bis ", "8 bis"},     {"12 Via Roma 4", "4"},    {"", "1"},
        };
        for (const auto& each : cases)
        {
            CAPTURE(each.first);
            CHECK(ExtractHouseNumber(each.first) == each.second);
        }
    }

    TEST_CASE("a run that reaches the first character has no neighbour")
    {
        CHECK_THROWS_AS(ExtractHouseNumber("12"), host::Fault);
        CHECK_THROWS_AS(ExtractHouseNumber("7 Via Roma"), host::Fault);
    }
}
