#include "environment/ansi_text.h"
#include "environment/files.h"
#include "environment/siss_date_time.h"
#include "environment/siss_environment.h"
#include "environment/table_synchronisation.h"
#include "host/fault.h"
#include "tests/support/fake_desktop.h"
#include "tests/support/fake_host.h"
#include "tests/support/installation.h"

#include <doctest.h>

#include <string>

using namespace vellumo::environment;
using vellumo::host::Date;
using vellumo::host::Fault;
using vellumo::tests::FakeDesktop;
using vellumo::tests::FakeUtils;
using vellumo::tests::Installation;

namespace
{

bool ReadsDumper(const std::string& bytes)
{
    Installation installation;
    installation.Write("client\\SISS\\Conf\\WINBRIDGE4SEBACTIVEX.conf", bytes);
    return SISSConfiguration(installation.settings).IsPersonaleStudio();
}

// Cannot be drawn.
class BrokenView final : public vellumo::ui::FormView
{
public:
    void Refresh() override { throw Fault("Finestra distrutta."); }
    void ProcessMessages() override {}
};

} // namespace

TEST_SUITE("environment")
{
    TEST_CASE("every byte of 8-bit text survives, what does not fit becomes a question mark")
    {
        std::string bytes;
        for (int byte = 1; byte < 256; ++byte)
        {
            bytes += static_cast<char>(byte);
        }
        CHECK(ToAnsi(FromAnsi(bytes)) == bytes);
        CHECK(FromAnsi("Cant\xF9 \x80") == "Cantù €");
        CHECK(ToAnsi("Łódź 😀 è\xC3") == "?\xF3"
                                        "d? ? \xE8?");
    }

    TEST_CASE("folders come from the settings, or from the default")
    {
        Installation installation;
        const SISSConfiguration configured(installation.settings);
        CHECK(configured.ConfigFolder() == installation.Path("client\\SISS\\Conf"));
        installation.settings.values.clear();
        CHECK(HostProgramFolder(installation.settings).empty());
        CHECK(configured.ImportWorkingFolder() == "C:\\AppSISS\\SISS\\Prerequisiti\\mysql\\data\\imp_test\\sau");
        CHECK(JoinPath("", "SISS") == "SISS");
        CHECK(JoinPath("C:\\", "SISS") == "C:\\SISS");
    }

    TEST_CASE("the bridge's mode")
    {
        for (const auto* text : {"modalita=dumper", "x=1\r\nmodalita=DUMPER\r\n\r\nmodalita", "modalita=DUMPER=X",
                                 "modalita=X\r\nmodalita=Dumper"})
        {
            CAPTURE(text);
            CHECK(ReadsDumper(text));
        }
        for (const auto* text : {"", "Modalita=DUMPER", "modalita = DUMPER", "modalita=DUMPER ", " modalita=DUMPER",
                                 "modalita", "modalita=DUMPER\r\nmodalita=", "modalita=DUMPER\r\nmodalita=LIVE",
                                 "modalita=DUMPER\nmodalita=DUMPER", "\xFF\xFE\x01\x02=\x03"})
        {
            CAPTURE(text);
            CHECK_FALSE(ReadsDumper(text));
        }
        Installation installation;
        installation.WriteHuge("client\\SISS\\Conf\\WINBRIDGE4SEBACTIVEX.conf");
        CHECK_FALSE(SISSConfiguration(installation.settings).IsPersonaleStudio());
    }

    TEST_CASE("a table's rows and values")
    {
        const SISSImportTable table(
            "A|b||C\r\n1|2|3|4|5\r\n   \r\n|\r\n\r\n\\N|\\n| \\N|citt\xE0\r\nuna sola\nriga\r\n");
        CHECK(table.Columns().Count() == 4);
        CHECK(table.Columns().Item("c").Index == 4);
        REQUIRE(table.RowCount() == 4);
        CHECK(table.Item(1).Field("B") == "2");
        CHECK(table.Item(1).Field("") == "3");
        CHECK(table.Item(1).Field("altra") == "");
        CHECK(table.Item(2).Field("A") == "");
        CHECK(table.Item(2).Field("C") == "");
        CHECK(table.Item(3).Field("a") == "");
        CHECK(table.Item(3).Field("b") == "");
        CHECK(table.Item(3).Field(3) == " \\N");
        CHECK(table.Item(3).Field("C") == "città");
        CHECK(table.Item(4).Field("A") == "una sola\nriga");
        CHECK_THROWS_AS(table.Item(0), Fault);
        CHECK_THROWS_AS(table.Item(5), Fault);
        CHECK(SISSImportTable("A").RowCount() == 0);
        CHECK_THROWS_AS(SISSImportTable(""), Fault);
        CHECK_THROWS_AS(SISSImportTable("A|B|a\r\n1|2|3"), Fault);
    }

    TEST_CASE("a table's file is read in pieces, wherever its lines end")
    {
        Installation installation;
        for (const auto* const shift : {"", "-", "--", "---"})
        {
            std::string text = std::string("A|B") + shift + "\r\n";
            while (text.size() < 600'000)
            {
                text += "12|3456\r\n \r\n";
            }
            installation.Write("tabella.txt", text + "ultima|riga");
            const auto table = SISSImportTable::FromFile(installation.Path("tabella.txt"));
            REQUIRE(table);
            const auto rows = static_cast<std::int32_t>(text.size() / 12);
            REQUIRE(table->RowCount() == rows + 1);
            std::int32_t good = 0;
            for (std::int32_t row = 1; row <= rows; ++row)
            {
                good += table->Item(row).Bytes(2) == "3456" ? 1 : 0;
            }
            CHECK(good == rows);
            const auto last = table->Item(rows + 1);
            CHECK(last.Field("A") == "ultima");
            CHECK(last.Field(std::int32_t{2}) == "riga");
            CHECK(last.Field(3) == "");
            CHECK(last.Field("A") == "ultima");
        }
    }

    TEST_CASE("a table without CR LF is one header, however many lines it has")
    {
        std::string text = "CD_APPLICATIVO|DS_PRESTAZIONE_SISS\n";
        for (int row = 0; row < 100'000; ++row)
        {
            text += std::to_string(row) + "|Prestazione numero " + std::to_string(row) + "\n";
        }
        const SISSImportTable table(text);
        CHECK(table.RowCount() == 0);
        CHECK(table.Columns().Count() == 100'002);
        CHECK(table.Columns().Item("prestazione NUMERO 99998\n99999").Index == 100'001);
        CHECK_THROWS_AS(SISSImportTable(text + "|cd_applicativo"), Fault);

        SISSImportIndexs indexs;
        for (int entry = 0; entry < 100'000; ++entry)
        {
            indexs.AddObject({"Tabella" + std::to_string(entry), "", {}});
        }
        CHECK(&indexs.Item("TABELLA99999") == &indexs.Item(100'000));
    }

    TEST_CASE("the master index is read once, with the rows that can be read")
    {
        Installation installation;
        SISSEnvironment environment(installation.settings, installation.clock);
        SUBCASE("there is none")
        {
            CHECK(environment.ImportIndexs().Count() == 0);
            installation.WriteTable("master", "ID_CENTRALE\r\nX\r\n");
            CHECK(environment.ImportIndexs().Count() == 0);
        }
        SUBCASE("good and bad rows")
        {
            installation.WriteTable("master", "DS_NOME_FILE|ID_CENTRALE|altro|DT_AGGIORNAMENTO\r\n"
                                              "es|ESENZIONI|x|2011-03-07\r\n"
                                              "br|BRANCHE|x|ieri\r\n"
                                              "es2|esenzioni|x|2012-01-01\r\n"
                                              "corta\r\n");
            const auto& indexs = environment.ImportIndexs();
            REQUIRE(indexs.Count() == 3);
            CHECK(indexs.Item("Esenzioni").Filename == "es");
            CHECK(indexs.Item(1).UpdateDateTime == Date::FromCalendar(2011, 3, 7));
            CHECK(indexs.Item(2).UpdateDateTime.IsZero());
            CHECK(indexs.Item(3).Name == "");
            CHECK_THROWS_AS(indexs.Item("ALTRA"), Fault);
            CHECK_THROWS_AS(environment.GetImportTable(indexs.Item(1)), Fault);
        }
        CHECK(environment.DefaultIndex().UpdateDateTime == installation.clock.now);
    }

    TEST_CASE("dates as SISS services send them")
    {
        const auto day = Date::FromCalendar(2011, 3, 7);
        const auto minute = Date::FromCalendar(2011, 3, 7, 15, 4);
        const auto second = Date::FromCalendar(2011, 3, 7, 15, 4, 9);
        for (const auto* text : {"20110307", " 20110307\t", "2011-03-07", "2011/03/07", "07/03/2011", "07-03-2011",
                                 "07.03.2011", "201103070000", "2011-03-07T00:00", "2011-03-07Z", "2011-03-07+01:00",
                                 "2011-03-07-05:00", "07/03/2011+0100"})
        {
            CAPTURE(text);
            CHECK(ConvertSissDateTime(text) == day);
        }
        for (const auto* text : {"201103071504", "2011-03-07T15:04", "07/03/2011 15:04", "2011-03-07T15:04Z"})
        {
            CAPTURE(text);
            CHECK(ConvertSissDateTime(text) == minute);
        }
        for (const auto* text : {"20110307150409", "2011-03-07T15:04:09", "2011-03-07 15:04:09.123456",
                                 "07.03.2011T15:04:09+01:00", "2011/03/07T15:04:09.5-0530", "2011-03-07T15:04:09+02"})
        {
            CAPTURE(text);
            CHECK(ConvertSissDateTime(text) == second);
        }
        for (const auto* text : {"",
                                 "   ",
                                 "00000000",
                                 "00000000000000",
                                 "0",
                                 "2011",
                                 "20110230",
                                 "2011030",
                                 "201103071",
                                 "2011-3-7",
                                 "2011.03.07",
                                 "2011-03/07",
                                 "07/03/11",
                                 "30/02/2011",
                                 "2011-03-07T",
                                 "2011-03-07+",
                                 "2011-03-07Z1",
                                 "2011-03-07T15",
                                 "2011-03-07T25:00",
                                 "2011-03-07T15:04:",
                                 "2011-03-07T15:04:09.",
                                 "2011-03-07T15:04+",
                                 "2011-03-07 15:04 x",
                                 "ieri",
                                 "20110307T1504",
                                 "-0110307",
                                 "99999999999999",
                                 "2011-03-07T15:04:60"})
        {
            CAPTURE(text);
            CHECK(ConvertSissDateTime(text).IsZero());
        }
    }

    TEST_CASE("dates of the tables")
    {
        const auto convert = SISSEnvironment::ConvertToDateTime;
        CHECK(convert("2011-03-07") == Date::FromCalendar(2011, 3, 7));
        CHECK(convert(" 2011-3 - 7.9") == Date::FromCalendar(2011, 3, 7));
        CHECK(convert("2011-03-07-99") == Date::FromCalendar(2011, 3, 7));
        CHECK(convert("29-03-07") == Date::FromCalendar(2029, 3, 7));
        CHECK(convert("30-03-07") == Date::FromCalendar(1930, 3, 7));
        CHECK(convert("0-3-7") == Date::FromCalendar(2000, 3, 7));
        CHECK(convert("99-3-7") == Date::FromCalendar(1999, 3, 7));
        CHECK(convert("100-3-7") == Date::FromCalendar(100, 3, 7));
        for (const auto* text :
             {"2011-03-07 00:00:00", "2011-03-07  9:30", "2011-03-7 23:59:59.997", "2011-03-07T10:30"})
        {
            CAPTURE(text);
            CHECK(convert(text) == Date::FromCalendar(2011, 3, 7));
        }
        for (const auto* text : {"", "2011", "2011-03", "2011-02-30", "07/03/2011", "x-y-z", "2011-03-07 1"})
        {
            CAPTURE(text);
            CHECK_THROWS_AS(convert(text), Fault);
        }
    }

    TEST_CASE("a window that cannot be drawn does not keep the rows out")
    {
        Installation installation;
        installation.WriteTable("master", "ID_CENTRALE|DS_NOME_FILE|DT_AGGIORNAMENTO\r\nESENZIONI|es|2011-03-07\r\n");
        installation.WriteTable("es", "CD_APPLICATIVO|DT_INIZIO_VALIDITA\r\n048|20020304\r\nE01|20030405\r\n");
        SISSEnvironment environment(installation.settings, installation.clock);
        const auto utils = std::make_shared<FakeUtils>();
        utils->tableDate = Date::FromCalendar(2020, 1, 1).value();
        utils->valueOf = [](const std::string&, const vellumo::host::Parameters&) { return vellumo::host::Value(5); };
        vellumo::host::HostServices services;
        services.utils = utils;
        FakeDesktop desktop;
        desktop.showWindow = [](vellumo::ui::Form& form)
        {
            BrokenView view;
            form.Attach(&view);
            form.Activated();
            form.Attach(nullptr);
        };
        std::string told;
        const auto tell = [&](const std::string& what, const std::exception& cause)
        { told += what + ": " + cause.what() + '\n'; };
        CHECK(TableSynchronisation(services, environment, installation.settings, desktop, tell).Run());
        CHECK(utils->written == std::vector<std::string>{"Norda..Esenzione", "Norda..Esenzione"});
        CHECK(told.starts_with("Sincronizzazione delle tabelle regionali: tabelle importate di cui il programma non ha "
                               "registrato la data 1 (ESENZIONI). Prima causa: ")); // there is no lock service
    }
}
