#include "torture/answers.h"

#include <algorithm>
#include <array>
#include <vector>

namespace vellumo::torture
{
namespace
{

struct Answers
{
    std::string_view operation;
    bool faults; // they reach the host
    std::vector<std::string> otherwise;
    bool trueIsDone = false; // True: all is stored
};

const std::vector<Answers>& AllAnswers()
{
    static const std::vector<Answers> all = {
        {"IdentificaPaziente", false, {"0"}},
        {"IsActive", false, {"True", "False"}},
        {"VerificaPaziente", false, {}},
        {"IsPersonaleStudio", false, {"False"}},
        {"Studio", false, {}},
        {"Sincronizza", false, {"True", "False"}},
        {"SincronizzaPazienti", false, {"False"}, true},
        {"ApriSessionePrescrizione", true, {"nothing"}},
        {"RegistraPrescrizione", true, {"False"}},
        {"RegistraPrescrizioneSingola", true, {"False"}},
        {"ChiudiSessionePrescrizione", true, {"False"}},
        {"VerificaPrescrizione", true, {}},
        {"VerificaPrescrizioneSingola", true, {}},
        {"AnnullaPrescrizione", false, {"False"}, true},
        {"InviaCertificato", false, {}},
        {"AnnullaCertificato", false, {}},
        {"InserisciContatto", false, {}},
    };
    return all;
}

const Answers& AnswersOf(std::string_view operation)
{
    const auto& all = AllAnswers();
    return *std::find_if(all.begin(), all.end(), [&](const Answers& each) { return each.operation == operation; });
}

} // namespace

std::optional<std::string> FindWrongAnswer(std::string_view operation, const std::string& given,
                                           const std::string& unhindered, const std::string& seen)
{
    const auto& otherwise = AnswersOf(operation).otherwise;
    const bool fits = seen == unhindered || (!given.empty() && seen == given) ||
                      std::find(otherwise.begin(), otherwise.end(), seen) != otherwise.end();
    return fits ? std::nullopt : std::optional("answers " + seen + ", unhindered " + unhindered);
}

bool LetsFaultsThrough(std::string_view operation)
{
    return AnswersOf(operation).faults;
}

bool SaysDone(std::string_view operation, const player::Outcome& seen)
{
    return AnswersOf(operation).trueIsDone && !seen.fault && seen.returned == "True";
}

} // namespace vellumo::torture
