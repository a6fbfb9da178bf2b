#include "simulator/siss/program/simulation.h"

namespace vellumo::siss
{

const std::vector<Manner>& Manners()
{
    static const std::vector<Manner> manners = {
        {"regolare", "regolare", {}},
        {"rifiuta", "rifiuta (SIM0001)", {Refusal{"SIM0001", "Rifiuto simulato", {}, {}}, {}, {}, 0}},
        {"avvisa",
         "accetta con un avviso (SIM0002)",
         {{}, {Detail{"SIM0002", "Avviso simulato", "", "", "", ""}}, {}, 0}},
        {"assente", "cittadino assente (SEBC00001)", {Refusal{"SEBC00001", "Cittadino assente", {}, {}}, {}, {}, 0}},
        {"persa", "fa il lavoro, ma la risposta si perde", {LostReply{}, {}, {}, 0}},
        {"senza-esito", "risposta senza esito", {NoOutcome{}, {}, {}, 0}},
        {"vuota", "risposta vuota", {Verbatim{}, {}, {}, 0}},
        {"errore", "il componente dà errore", {Raise{"Errore simulato del componente"}, {}, {}, 0}},
    };
    return manners;
}

void Apply(const Choice& choice, Network& network)
{
    network.SetChosenCitizen(choice.citizen);
    network.SetSessionActive(choice.sessionActive);
    network.SetOperatorCard(choice.cardInserted);
    Behaviour behaviour = Manners().at(choice.manner).behaviour;
    behaviour.delayMilliseconds = choice.delayMilliseconds;
    network.Behave(0, std::move(behaviour));
}

} // namespace vellumo::siss
