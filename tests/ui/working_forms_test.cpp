// The windows that carry a job: when the handler runs, what it gets, and that the window always ends.
#include "tests/support/fake_desktop.h"
#include "ui/form_progress.h"
#include "ui/form_wait.h"

#include <doctest.h>

#include <stdexcept>

using namespace vellumo;
using namespace vellumo::tests;
using namespace vellumo::ui;

namespace
{

std::string Text(const Form& form, std::size_t control)
{
    return form.Controls()[control]->text;
}

} // namespace

TEST_SUITE("working windows")
{
    TEST_CASE("the handler runs once, with the window open, and the window then closes itself")
    {
        FormWait form;
        FakeView view(form);
        form.Parameters() = std::string("richiesta");
        int calls = 0;
        form.OnActivate = [&](FormWait& sender, const std::any& parameters, std::any& result)
        {
            ++calls;
            CHECK(&sender == &form);
            CHECK(std::any_cast<std::string>(parameters) == "richiesta");
            CHECK_FALSE(form.IsClosed());
            CHECK_FALSE(sender.Result().has_value());
            sender.Parameters() = std::string("altro"); // the handler has a copy
            CHECK(std::any_cast<std::string>(parameters) == "richiesta");
            sender.FrameClosed();
            sender.Activated(); // the operator switched away and back
            CHECK_FALSE(form.IsClosed());
            view.calls.clear();
            sender.SetOperazione("Identificazione cittadino");
            CHECK(view.calls == "R"); // drawn before the call blocks, without processing messages
            result = 7;
        };
        form.Activated();
        CHECK(calls == 1);
        CHECK(form.IsClosed());
        CHECK(std::any_cast<int>(form.Result()) == 7);
        CHECK(Text(form, 0) == "Identificazione cittadino");
    }

    TEST_CASE("a fault in the handler leaves the result as it was and closes the window")
    {
        for (const bool resultFirst : {false, true})
        {
            FormProgress form;
            form.Tag = "guasto";
            form.OnActivate["altro"] = [](FormProgress&, const std::any&, std::any&) { FAIL("another job"); };
            form.OnActivate["guasto"] = [&](FormProgress&, const std::any&, std::any& result)
            {
                if (resultFirst)
                {
                    result = 1;
                }
                throw std::runtime_error("guasto");
            };
            form.Activated();
            CHECK(form.IsClosed());
            CHECK(form.Result().has_value() == resultFirst);
        }
        FormWait withoutHandler;
        withoutHandler.Activated();
        CHECK(withoutHandler.IsClosed());
        CHECK_FALSE(withoutHandler.Result().has_value());
    }

    TEST_CASE("the bar is shown as asked when the window loads")
    {
        FormProgress form;
        form.BarVisible = false;
        form.Load();
        form.BarVisible = true;
        form.Load();                              // the view's, when the caller has loaded the window already
        CHECK_FALSE(form.Controls()[3]->visible); // the bar
        CHECK_FALSE(form.Controls()[4]->visible); // how many of how many
        FormProgress other;
        other.Load();
        other.BarVisible = false;
        CHECK(other.Controls()[3]->visible);
    }

    TEST_CASE("each progress report is drawn soon and lets messages through")
    {
        FormProgress form;
        form.InitializeProgress("Sincronizzazione", "Tabelle regionali");
        CHECK(form.Title() == "Sincronizzazione");
        CHECK(Text(form, 0) == "Tabelle regionali");
        CHECK(Text(form, 1) == "Inizializzazione in corso...");
        CHECK(Text(form, 2) == "L'operazione è in attesa di avvio");
        FakeView view(form);
        form.SetProgressInformation("Lettura", "ESENZIONI");
        form.SetProgressValue(3, 10);
        CHECK(view.calls == "SPSP");
        CHECK(Text(form, 1) == "Lettura");
        CHECK(Text(form, 2) == "ESENZIONI");
        const auto* const bar = As<ProgressBar>(*form.Controls()[3]);
        REQUIRE(bar);
        CHECK(bar->value == 3.0F);
        CHECK(bar->maximum == 10.0F);
        CHECK(Text(form, 4) == "3 di 10");
        form.SetProgressValue(10, 10);
        CHECK(view.calls == "SPSPRP"); // the end is drawn at once
    }

    TEST_CASE("how many a minute and the time left are told once they can be known")
    {
        struct : host::Clock
        {
            int second = 0;
            [[nodiscard]] host::Date Now() const override { return host::Date::FromOle(45000 + second / 86400.0); }
        } clock;
        clock.second = 86395; // five seconds later it is another day
        FormProgress form;
        form.MeasurePace(clock, "pazienti");
        const auto after = [&](int seconds, int done)
        {
            clock.second += seconds;
            form.SetProgressValue(done, 12000);
            return Text(form, 4);
        };
        CHECK(after(0, 1) == "1 di 12.000");
        CHECK(after(4, 5) == "5 di 12.000");
        CHECK(after(6, 11) == "11 di 12.000; pazienti al minuto: 60; mancano circa 3 ore e 20 minuti");
        CHECK(after(290, 3001).starts_with("3.001 di 12.000; "));
        CHECK(after(300, 6001) == "6.001 di 12.000; pazienti al minuto: 600; mancano circa 10 minuti");
        CHECK(after(100, 11401) == "11.401 di 12.000; pazienti al minuto: 977; manca meno di un minuto");
        CHECK(after(-3600, 11402) == "11.402 di 12.000"); // the clock was set back
        CHECK(after(60, 11403) == "11.403 di 12.000; pazienti al minuto: 1; mancano circa 9 ore e 57 minuti");
        CHECK(after(3600, 11404) == "11.404 di 12.000"); // the machine slept
        CHECK(after(240, 11405) == "11.405 di 12.000; pazienti al minuto: meno di 1; mancano circa 39 ore e 40 minuti");
        CHECK(after(6, 12000) == "12.000 di 12.000; pazienti al minuto: 145");
    }
}
