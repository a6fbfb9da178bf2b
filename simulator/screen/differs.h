// How one says that something is not as expected.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>

namespace vellumo::screen
{

// Something is not as expected; the text tells what.
class Differs : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

// In quotes, line ends visible, cut when very long.
[[nodiscard]] std::string Quoted(const std::string& text);

// Throws Differs unless both are the same.
void Expect(const std::string& what, const std::string& expected, const std::string& seen);

// What has a number, counted from 1: "there is no request 3; there are 2".
template <class All>
const auto& Numbered(const All& all, std::size_t number, const std::string& what)
{
    if (number < 1 || number > all.size())
    {
        throw Differs("there is no " + what + ' ' + std::to_string(number) + "; there are " +
                      std::to_string(all.size()));
    }
    return all[number - 1];
}

} // namespace vellumo::screen
