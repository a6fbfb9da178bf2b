// The exchange log as one HTML page for support staff: everything in one file, nothing from the network, no script but
// its own. Whatever a message contains is shown as text.
#pragma once

#include "diagnosi/exchanges/exchange_record.h"

#include <string>
#include <vector>

namespace vellumo::diagnosi
{

struct Attachment
{
    std::string title;
    std::string text; // shown as it is
};

struct PageHead
{
    std::string title = "Registro degli scambi con il SISS";
    std::vector<std::string> facts;      // a line each, below the title
    std::vector<std::string> banner;     // paragraphs in a box that nobody overlooks; none: no box
    std::vector<Attachment> attachments; // folded, behind the operations
};

// UTF-8. Messages of more than a million characters are shown in part, and say so. Filters may be asked for in the
// address: "#daguardare=1", "#cf=…", "#cerca=…", with "apri=1" also unfolded, joined by "&".
[[nodiscard]] std::string WriteExchangePage(const ExchangeRecord& record, const PageHead& head);

} // namespace vellumo::diagnosi
