// What the registry says of a class that COM creates, for programs of one bitness: this one's or the other's. Texts are
// UTF-8.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

namespace vellumo::diagnosi
{

inline constexpr bool is64BitProgram = sizeof(void*) == 8;

enum class Bitness
{
    This,
    Other
};

// "32 bit", "64 bit".
[[nodiscard]] const char* NameOf(Bitness bitness) noexcept;
// Whether programs of the other bitness run here at all.
[[nodiscard]] bool HasOtherBitness();

// The registry as programs of that bitness see it. `name` null: the key's own value.
[[nodiscard]] std::optional<std::string> RegistryText(HKEY root, const std::string& key, const char* name,
                                                      Bitness bitness);
[[nodiscard]] bool HasRegistryKey(HKEY root, const std::string& key, Bitness bitness);

struct Server
{
    std::string file; // a DLL or a program, as registered, without the arguments of a program
    bool isProgram = false;
};

// "{…}" of a ProgID; empty when there is no such.
[[nodiscard]] std::optional<std::string> ClassOf(const std::string& progId, Bitness bitness);
[[nodiscard]] std::optional<Server> ServerOf(const std::string& classId, Bitness bitness);

} // namespace vellumo::diagnosi
