#include "tests/support/local_exemptions.h"

#include <stdexcept>
#include <utility>

namespace vellumo::tests
{

FakeConnection LocalExemptions(std::vector<CatalogueRow> rows)
{
    FakeConnection connection;
    connection.rowsOf = [rows = std::move(rows)](const std::string& sql)
    {
        if (sql != "SELECT IDEsenzione, Esenzione, CodiceIdentificativo, IDTipoEsenzione FROM VwPartecipazioneSpesa")
        {
            throw std::logic_error("not the catalogue of exemptions: " + sql);
        }
        Rows read;
        for (const auto& row : rows)
        {
            read.push_back({{"0", row[0]}, {"1", row[1]}, {"2", row[2]}, {"3", row[3]}});
        }
        return read;
    };
    return connection;
}

FakeConnection LocalExemptions()
{
    return LocalExemptions({{12, "Invalidità civile 100%", "C01", 1},
                            {11, "Reddito: età > 65", "E01", 1},
                            {14, "SOGGETTI CON INVALIDITA' DI SERVIZIO", "S01", 1},
                            {13, "Diabete mellito", "013.250", 1},
                            {15, "Gravidanza, visita 13", "M13", {}},
                            {16, "Diabete", "013", 1}});
}

} // namespace vellumo::tests
