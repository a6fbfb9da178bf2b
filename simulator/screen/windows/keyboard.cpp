#include "simulator/screen/windows/keyboard.h"

#include "platform/windows/system/text.h"

#include <windows.h>

#include <map>
#include <vector>

namespace vellumo::screen
{
namespace
{

const std::map<std::string, WORD> namedKeys = {
    {"Tab", VK_TAB},      {"Enter", VK_RETURN},  {"Escape", VK_ESCAPE}, {"Space", VK_SPACE},   {"Up", VK_UP},
    {"Down", VK_DOWN},    {"Left", VK_LEFT},     {"Right", VK_RIGHT},   {"Home", VK_HOME},     {"End", VK_END},
    {"PageUp", VK_PRIOR}, {"PageDown", VK_NEXT}, {"Delete", VK_DELETE}, {"Backspace", VK_BACK}};

INPUT Stroke(WORD virtualKey, WORD character, DWORD flags)
{
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = virtualKey;
    input.ki.wScan = character != 0 ? character : static_cast<WORD>(MapVirtualKeyW(virtualKey, MAPVK_VK_TO_VSC));
    input.ki.dwFlags = flags;
    return input;
}

} // namespace

bool PressKey(const std::string& key)
{
    static const std::map<std::string, WORD> modifiers = {{"Alt", VK_MENU}, {"Shift", VK_SHIFT}, {"Ctrl", VK_CONTROL}};
    std::vector<INPUT> inputs;
    std::vector<INPUT> releases;
    std::string name = key;
    for (auto plus = name.find('+', 1); plus != std::string::npos; plus = name.find('+', 1))
    {
        const auto modifier = modifiers.find(name.substr(0, plus));
        if (modifier == modifiers.end())
        {
            return false;
        }
        inputs.push_back(Stroke(modifier->second, 0, 0));
        releases.insert(releases.begin(), Stroke(modifier->second, 0, KEYEVENTF_KEYUP));
        name.erase(0, plus + 1);
    }
    const std::wstring characters = windows::ToWide(name);
    const auto named = namedKeys.find(name);
    if (named == namedKeys.end() && characters.size() != 1)
    {
        return false;
    }
    // With a modifier it is the key of that letter, else the character itself, whatever the keyboard's layout.
    const bool isCharacter = named == namedKeys.end() && inputs.empty();
    const WORD virtualKey = named != namedKeys.end() ? named->second
                            : isCharacter            ? WORD{0}
                                                     : LOBYTE(VkKeyScanW(characters[0]));
    const WORD character = isCharacter ? static_cast<WORD>(characters[0]) : WORD{0};
    const DWORD kind = isCharacter ? KEYEVENTF_UNICODE : DWORD{0};
    inputs.push_back(Stroke(virtualKey, character, kind));
    inputs.push_back(Stroke(virtualKey, character, kind | KEYEVENTF_KEYUP));
    inputs.insert(inputs.end(), releases.begin(), releases.end());
    return SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT)) == inputs.size();
}

} // namespace vellumo::screen
