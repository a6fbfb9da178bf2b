#include "host/connection.h"
#include "host/fault.h"
#include "host/text.h"
#include "host/value.h"
#include "tests/support/fake_host.h"
#include "tests/support/scarce_memory.h"

#include <doctest.h>

#include <limits>
#include <memory>
#include <new>
#include <stdexcept>
#include <type_traits>

using vellumo::host::Date;
using vellumo::host::Fault;
using vellumo::host::Transaction;
using vellumo::host::Value;

namespace
{

Date Day(int year, int month, int day, int hour = 0, int minute = 0, int second = 0)
{
    return Date::FromCalendar(year, month, day, hour, minute, second).value();
}

} // namespace

TEST_SUITE("host")
{
    TEST_CASE("dates survive the way through OLE numbers, also before the zero date")
    {
        for (const auto date : {Date(), Day(2024, 2, 29, 23, 59, 59), Day(1899, 12, 29, 12), Day(1899, 12, 30, 0, 0, 1),
                                Day(1850, 1, 1, 6), Day(100, 1, 1), Day(9999, 12, 31, 23, 59, 59)})
        {
            CAPTURE(date.ToSissText());
            CHECK(Date::FromOle(date.ToOle()) == date);
        }
        CHECK(Day(1899, 12, 29, 12).ToOle() == -1.5);
        CHECK(Day(2024, 3, 5).ToOle() == 45356);
        CHECK(Date::FromOle(45356 + 86399.997 / 86400) == Day(2024, 3, 5, 23, 59, 59));
        CHECK(Date::FromOle(2958465.999999999) == Day(9999, 12, 31, 23, 59, 59)); // there is no day after it
        CHECK(Date::FromOle(std::numeric_limits<double>::quiet_NaN()).IsZero());
        CHECK(Date::FromOle(1e300).IsZero());
    }

    TEST_CASE("a day that does not exist is no date")
    {
        CHECK_FALSE(Date::FromCalendar(2023, 2, 29));
        CHECK_FALSE(Date::FromCalendar(1900, 2, 29));
        CHECK_FALSE(Date::FromCalendar(2024, 13, 1));
        CHECK_FALSE(Date::FromCalendar(2024, 0, 1));
        CHECK_FALSE(Date::FromCalendar(99, 1, 1));
        CHECK_FALSE(Date::FromCalendar(2024, 1, 1, 24));
        CHECK(Date().IsZero());
        CHECK(Day(1899, 12, 30).IsZero());
        CHECK_FALSE(Day(1899, 12, 30, 1).IsZero());
    }

    TEST_CASE("values as they go into a message")
    {
        CHECK(Value().ToText() == "");
        CHECK(Value("Cantù").ToText() == "Cantù");
        CHECK(Value(-12).ToText() == "-12");
        CHECK(Value(std::int64_t{9'007'199'254'740'993}).ToText() == "9007199254740993");
        CHECK(Value(0.1).ToText() == "0.1");
        CHECK(Value(2.0).ToText() == "2");
        CHECK(Value(1234567.5).ToText() == "1234567.5");
        CHECK(Value(1e21).ToText() == "1000000000000000000000");
        CHECK(Value(true).ToText() == "True");
        CHECK(Value(false).ToText() == "False");
        CHECK(Value(Day(1968, 7, 1, 9, 30)).ToText() == "19680701");
        CHECK(Value(Date()).ToText() == "");
    }

    TEST_CASE("a value is copied whole, or memory is out and there is no copy")
    {
        const Value text(std::string(1000, 'x'));
        Value other(7);
        const auto failures = vellumo::tests::WithMemoryRunningOut(
            [&]
            {
                try
                {
                    other = Value(text);
                }
                catch (const std::bad_alloc&)
                {
                    CHECK(other == Value(7));
                }
            },
            [] {});
        CHECK(failures == 1);
        CHECK(other == text);
    }

    TEST_CASE("what is neither text nor number nor date is no value")
    {
        CHECK(std::is_constructible_v<Value, bool>);
        CHECK_FALSE(std::is_constructible_v<Value, const wchar_t*>);
        CHECK_FALSE(std::is_constructible_v<Value, int*>);
        CHECK_FALSE(std::is_constructible_v<Value, std::nullptr_t>);
    }

    TEST_CASE("characters are taken and counted as UTF-8 has them")
    {
        using namespace vellumo::host;
        const std::string text = "a\u00E8\u20AC\U0001F600";
        CHECK(CharacterCount(text) == 4);
        CHECK(FirstCharacters(text, 3) == "a\u00E8\u20AC");
        CHECK(LastCharacters(text, 2) == "\u20AC\U0001F600");
        CHECK(FirstCharacters("ab", 3) == "ab");
        CHECK(LastCharacters("ab", 3) == "ab");
        std::string again;
        for (std::size_t position = 0; position < text.size();)
        {
            AppendCharacter(TakeCharacter(text, position), again);
        }
        CHECK(again == text);
        // Cut off, a surrogate, too long a form, beyond Unicode: no character, a byte at a time.
        for (const std::string bad :
             {"\xE2\x82", "\xED\xA0\x80", "\xC0\xAF", "\xE0\x9F\xBF", "\xF4\x90\x80\x80", "\xFF"})
        {
            CAPTURE(bad);
            std::size_t position = 0;
            CHECK(TakeCharacter(bad, position) == notUtf8);
            CHECK(position == 1);
            CHECK(CharacterCount(bad) == bad.size());
        }
    }

    TEST_CASE("case and blanks are the same in every locale")
    {
        using namespace vellumo::host;
        CHECK(EqualsIgnoringCase("IDPaziente", "idPAZIENTE"));
        CHECK_FALSE(EqualsIgnoringCase("ID", "IDP"));
        CHECK_FALSE(EqualsIgnoringCase("\xC0", "\xE0")); // a letter with an accent in some
        CHECK_FALSE(EqualsIgnoringCase("@[", "`{"));     // beside the letters
        CHECK(WithoutCase("AZaz@[") == "azaz@[");
        CHECK(Trimmed(" \t a b\r\n") == "a b");
        CHECK(Trimmed(" \n ").empty());
        CHECK(Trimmed("\ta ", " ") == "\ta");
    }

    TEST_CASE("whole numbers, Booleans and dates out of what hosts store")
    {
        CHECK(Value().ToInteger() == 0);
        CHECK(Value(true).ToInteger() == -1);
        CHECK(Value(2.5).ToInteger() == 2);
        CHECK(Value(3.5).ToInteger() == 4);
        CHECK(Value(" 42 ").ToInteger() == 42);
        CHECK_THROWS_AS(Value("42a").ToInteger(), Fault);
        CHECK_THROWS_AS(Value("").ToInteger(), Fault);
        CHECK_THROWS_AS(Value(3e9).ToInteger(), Fault);
        CHECK_THROWS_AS(Value(std::int64_t{1} << 40).ToInteger(), Fault);

        CHECK_FALSE(Value().ToBoolean());
        CHECK(Value(-1).ToBoolean());
        CHECK(Value("TRUE").ToBoolean());
        CHECK_FALSE(Value("0").ToBoolean());
        CHECK_THROWS_AS(Value("sì").ToBoolean(), Fault);

        CHECK(Value().ToDate().IsZero());
        CHECK(Value("").ToDate().IsZero());
        CHECK(Value("2024-03-05").ToDate() == Day(2024, 3, 5));
        CHECK(Value("2024-03-05 15:04:09").ToDate() == Day(2024, 3, 5, 15, 4, 9));
        CHECK(Value(45356.5).ToDate() == Day(2024, 3, 5, 12));
        for (const auto* text : {"2024-3-5", "05/03/2024", "2024-02-30", "2024-03-05 15", "2024-03-05 15:04:09x", "-"})
        {
            CAPTURE(text);
            CHECK_THROWS_AS(Value(text).ToDate(), Fault);
        }
    }

    TEST_CASE("a group of writes is kept only when it is complete")
    {
        vellumo::tests::FakeConnection connection;
        {
            Transaction transaction(connection);
            transaction.Commit();
        }
        CHECK(connection.log == "BC");
        {
            const Transaction abandoned(connection);
        }
        CHECK(connection.log == "BCBR");

        connection.refusesCommit = true;
        {
            Transaction refused(connection);
            CHECK_THROWS_AS(refused.Commit(), Fault);
        }
        CHECK(connection.log == "BCBRBR");

        connection.isBusy = true; // the host's own transaction is open: not ours to end
        {
            Transaction inside(connection);
            CHECK_NOTHROW(inside.Commit());
            const Transaction abandoned(connection);
        }
        CHECK(connection.log == "BCBRBR");
    }
}
