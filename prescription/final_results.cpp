#include "prescription/final_results.h"

#include <algorithm>
#include <cstddef>

namespace vellumo::prescription
{

std::vector<FinalResult> FinalResults(const service::ServiceResponse& response)
{
    const auto nodes = response.Data.Descendants("risultatoRegistrazione");
    return {nodes.begin(), nodes.end()};
}

std::vector<PairedResult> PairFinalResults(const std::vector<FinalResult>& results,
                                           const std::vector<SentPrescription*>& prescriptions)
{
    std::vector<PairedResult> pairs;
    for (std::size_t place = 0; place < std::min(results.size(), prescriptions.size()); ++place)
    {
        pairs.push_back({results[place], prescriptions[place]});
    }
    return pairs;
}

} // namespace vellumo::prescription
