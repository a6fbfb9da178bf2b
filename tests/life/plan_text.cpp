// A plan in words.
#include "tests/life/plan.h"

namespace vellumo::life
{
namespace
{

constexpr std::array<const char*, fateCount> fates = {
    "accepted",
    "accepted, no code yet",
    "accepted with a warning",
    "refused",
    "refused with a code",
    "refused by a list of errors, with a code",
    "lost before SISS took it (the bridge raises)",
    "taken by SISS, reply lost (empty)",
    "taken by SISS, reply without outcome",
    "accepted with the code that was given last",
};

constexpr std::array<const char*, shapeCount> shapes = {
    "proper reply",
    "results elsewhere in the reply",
    "refused with a code that is not shown, with results",
    "refused, with results",
    "refused without results",
    "reply without outcome",
    "lost before SISS took it (the bridge raises)",
    "taken by SISS, reply lost (empty)",
    "SOAP fault",
};

constexpr std::array<const char*, orderCount> orders = {"as registered", "reversed", "rotated"};
constexpr std::array<const char*, buttonCount> buttons = {
    "Stampa ricette errate senza IUP", "Annulla ricette errate e prosegui", "Annulla operazione", "the frame"};
constexpr std::array<const char*, 4> strangers = {"", "a result of nobody in front", "a result of nobody behind",
                                                  "a result of nobody in the middle"};

constexpr std::array<const char*, pointCount> points = {
    "a statement",
    "the user's identifier",
    "loading the settings",
    "a setting",
    "the list of a form's rows",
    "finding a row",
    "reading a row's column",
    "setting a row's column",
    "saving a row (raises)",
    "saving a row (raises when it has stored)",
    "saving a row (answers False)",
    "the session's flags",
    "the session's options",
    "adding to the session",
    "the session's count",
    "reading from the session",
    "the host's journal",
    "a line in the folder of traces",
    "a code in the folder of traces",
    "a window",
    "the wait window before the call",
    "the wait window after the reply",
    "a box",
    "the bridge",
    "the bridge when SISS has it",
    "the host's journal when it has the line",
};

template <class Enumeration, std::size_t count>
const char* Name(const std::array<const char*, count>& names, Enumeration value)
{
    return names.at(static_cast<std::size_t>(value));
}

std::string Which(const char* what, unsigned mask)
{
    std::string text;
    for (unsigned bit = 0; bit < 8; ++bit)
    {
        text += (mask >> bit & 1U) != 0 ? ' ' + std::to_string(bit + 1) : "";
    }
    return text.empty() ? "" : std::string("; ") + what + text;
}

std::string Describe(const Closing& closing)
{
    std::string text = std::string("  close: ") + Name(buttons, closing.button);
    text += closing.byOtherProvider ? closing.firstReleasedBefore ? ", by another provider, the first one gone"
                                                                  : ", by another provider beside the first one"
                                    : "";
    text +=
        std::string("\n  end of the phase: ") + Name(shapes, closing.shape) + "; order: " + Name(orders, closing.order);
    text += Which("missing", closing.missing) + Which("KO", closing.notOk) + Which("esitoNegativo", closing.negative) +
            Which("another code for", closing.otherCode) + Which("no code for", closing.codeless);
    text += closing.listsRefused ? "; the refused ones, too" : "";
    text += closing.strangers != 0 ? std::string("; ") + strangers.at(static_cast<std::size_t>(closing.strangers)) : "";
    return text + '\n';
}

std::string Describe(const Prescription& prescription)
{
    return SubjectOf(prescription) + (prescription.withoutItems ? ", without items" : "") +
           (prescription.hasOldCode ? ", with an old code in its row" : "") +
           (prescription.rowGoes ? ", its row goes before the close" : "");
}

} // namespace

const char* NameOf(Fate fate)
{
    return Name(fates, fate);
}

const char* NameOf(Point point)
{
    return Name(points, point);
}

std::string SubjectOf(const Prescription& prescription)
{
    return std::string("Ricetta ") + (prescription.kind == 1 ? "farmaci " : "accertamenti ") +
           std::to_string(prescription.form) + ", numero " + std::to_string(prescription.number);
}

std::string Describe(const Plan& plan)
{
    std::string text;
    for (const Round& round : plan.rounds)
    {
        text += std::string("  register ") + (round.wholeForms ? "(whole forms):\n" : "(one by one):\n");
        for (const Sending& sending : round.sendings)
        {
            text += "    " + Describe(plan.prescriptions.at(sending.prescription)) + ": " + NameOf(sending.fate) + '\n';
        }
        text += round.closes ? Describe(round.closing) : "  the session is never closed\n";
    }
    for (const Fault& fault : plan.faults)
    {
        text += std::string("  fault: ") + NameOf(fault.point) + ", call " + std::to_string(fault.call) +
                (fault.forGood ? " and all later ones" : "") +
                (plan.fromTheStart ? " from the opening on\n" : " from the first registration on\n");
    }
    text += plan.electronic ? "  electronic prescriptions\n" : "";
    text += plan.brokenTemplates ? "  templates without items\n" : "";
    text += plan.paddedCodes ? "  the column of the codes pads\n" : "";
    text += plan.deathAt != 0 ? "  the program ends at call " + std::to_string(plan.deathAt) + '\n' : "";
    text += plan.secondDeathAt != 0 ? "  and again at call " + std::to_string(plan.secondDeathAt) + '\n' : "";
    text += plan.startsInVain ? "  the journal refuses at the next start\n" : "";
    return text;
}

} // namespace vellumo::life
