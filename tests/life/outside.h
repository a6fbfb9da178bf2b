// Everything outside the library that outlives its process: the host's table and journal, what SISS knows, and how
// often the outside was called. It lies in memory that is shared with the processes that a life is played in.
#pragma once

#include "tests/life/plan.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

namespace vellumo::life
{

// A text of fixed room, since nothing here may point anywhere.
template <std::size_t room>
class Text
{
public:
    Text& operator=(std::string_view text)
    {
        m_size = std::min(text.size(), room);
        std::copy_n(text.begin(), m_size, m_text.begin());
        return *this;
    }
    [[nodiscard]] std::string_view View() const { return {m_text.data(), m_size}; }
    [[nodiscard]] bool IsEmpty() const { return m_size == 0; }

private:
    std::array<char, room> m_text;
    std::size_t m_size = 0;
};

// Lines, one behind the other. What finds no room any more is a violation of its own.
class Lines
{
public:
    void Clear() { m_size = 0; }
    void Add(std::string_view line);
    [[nodiscard]] std::string_view View() const { return {m_text.data(), m_size}; }
    [[nodiscard]] bool IsEmpty() const { return m_size == 0; }

    // True for a line that holds both texts, each as a whole word.
    [[nodiscard]] bool Tell(std::string_view one, std::string_view other) const;

private:
    std::array<char, 32768> m_text;
    std::size_t m_size = 0;
};

struct StoredRow
{
    bool annullata = false;
    Text<24> code;
    Text<24> protocol;
};

// A code in a reply.
struct GivenCode
{
    Text<24> code;
    Text<24> protocol;
    int prescription = -1; // -1: nobody's
    bool atRegistration = false;
    bool confirmed = false; // by the end of the phase
    bool reached = false;   // the reply came to the library
};

struct Outside
{
    std::array<StoredRow, 5> rows;
    std::array<GivenCode, 96> given;
    std::size_t givenCount = 0;
    int issued = 0; // codes, ever
    Lines journal;
    Lines traces;     // lines in the folder of traces
    Lines openCodes;  // subject and code, as they are left in the folder
    Lines violations; // found
    // What the library wanted to write, whether it could or not.
    Lines offeredToJournal;
    Lines offeredToTraces;
    Lines refusedByJournal;
    Lines refusedByTraces;
    Lines refusedCodes; // that the folder did not keep
    int calls = 0;
    std::array<int, pointCount> callsAt;
    std::array<bool, pointCount> failedAt;
    int faults = 0; // that have come

    // All as at the start of a life.
    void Reset(const Plan& plan);
    void Violated(std::string_view what) { violations.Add(what); }

    GivenCode& Give(int prescription, std::string_view code);
    // Whether registration told the library that the code is of this prescription, or of anybody.
    [[nodiscard]] bool IsTold(std::string_view code, int prescription) const;
    [[nodiscard]] bool IsTold(std::string_view code) const;
};

// As a line names them.
[[nodiscard]] std::string_view WithoutPadding(std::string_view code);

} // namespace vellumo::life
