#include "service/service_factory.h"
#include "tests/support/installation.h"

#include <doctest.h>

using namespace vellumo::service;
using vellumo::host::Date;
using vellumo::tests::Installation;

TEST_SUITE("service")
{
    TEST_CASE("values that the template has no place for are dropped")
    {
        Installation installation;
        installation.WriteTemplates();
        auto request = ServiceFactory(installation.settings).GetRequest(rtIdentificaCittadinoEsteso);
        REQUIRE(request);
        const auto before = request->ToString();
        request->SetData("profiloCittadino/altezza", 180);
        request->SetData("@dataSetVersion", "2.0");
        request->SetHeader("altro", "x");
        CHECK(request->ToString() == before);
        request->SetHeader("param/profiloCittadino/dataNascita", *Date::FromCalendar(1968, 7, 1));
        CHECK(request->GetData("profiloCittadino/dataNascita") == "19680701");
    }

    TEST_CASE("a missing template gives no request, a broken one a request without nodes")
    {
        Installation installation;
        const ServiceFactory factory(installation.settings);
        CHECK_FALSE(factory.GetRequest(rtIdentificaCittadinoGUI));
        installation.Write("host\\SISS\\Templates\\identificaCittadinoGUI.template", "<a><b></a>");
        auto request = factory.GetRequest(rtIdentificaCittadinoGUI);
        REQUIRE(request);
        request->SetData("x", "y");
        CHECK_FALSE(request->Data());
        CHECK(request->ToString() == "");
        // A template may say which encoding it has.
        installation.Write("host\\SISS\\Templates\\identificaCittadinoGUI.template",
                           "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><a>modalit\xE0</a>");
        CHECK(factory.GetRequest(rtIdentificaCittadinoGUI)->ToString().find("modalità") != std::string::npos);
        installation.settings.values.clear();
        CHECK_FALSE(factory.GetRequest(rtIdentificaCittadinoGUI));
    }
}
