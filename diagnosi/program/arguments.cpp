#include "diagnosi/program/arguments.h"

#include "host/fault.h"

#include <algorithm>
#include <charconv>

namespace vellumo::diagnosi
{

Arguments::Arguments(std::span<const std::string> words, std::span<const Option> known, std::size_t most)
{
    for (auto word = words.begin(); word != words.end(); ++word)
    {
        if (!word->starts_with("--"))
        {
            m_operands.push_back(*word);
            continue;
        }
        const auto option = std::ranges::find(known, *word, &Option::name);
        if (option == known.end())
        {
            throw host::Fault("L'opzione " + *word + " non è conosciuta.");
        }
        const bool takesValue = !option->value.empty();
        if (takesValue && word + 1 == words.end())
        {
            throw host::Fault("L'opzione " + *word + " vuole un valore: " + std::string(option->value) + ".");
        }
        m_options[std::string(option->name)] = takesValue ? *++word : std::string();
    }
    if (m_operands.size() > most)
    {
        throw host::Fault("Non è chiaro che cosa sia \"" + m_operands.at(most) + "\".");
    }
}

bool Arguments::Has(std::string_view option) const
{
    return m_options.contains(option);
}

std::optional<std::string> Arguments::Value(std::string_view option) const
{
    const auto found = m_options.find(option);
    return found == m_options.end() ? std::nullopt : std::optional(found->second);
}

std::string Arguments::Value(std::string_view option, std::string_view otherwise) const
{
    return Value(option).value_or(std::string(otherwise));
}

int Arguments::Number(std::string_view option, int otherwise) const
{
    const auto text = Value(option);
    if (!text)
    {
        return otherwise;
    }
    int number = 0;
    const auto [end, error] = std::from_chars(text->data(), text->data() + text->size(), number);
    if (error != std::errc() || end != text->data() + text->size() || number < 1)
    {
        throw host::Fault("L'opzione " + std::string(option) + " vuole un numero intero da 1 in su, non \"" + *text +
                          "\".");
    }
    return number;
}

} // namespace vellumo::diagnosi
