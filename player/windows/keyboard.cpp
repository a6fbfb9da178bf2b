#include "player/windows/keyboard.h"

#include "platform/windows/system/text.h"

#include <windows.h>

#include <map>
#include <vector>

namespace vellumo::player
{
namespace
{

const std::map<std::string, WORD>& NamedKeys()
{
    static const std::map<std::string, WORD> keys = {
        {"Tab", VK_TAB},      {"Enter", VK_RETURN},  {"Escape", VK_ESCAPE}, {"Space", VK_SPACE},   {"Up", VK_UP},
        {"Down", VK_DOWN},    {"Left", VK_LEFT},     {"Right", VK_RIGHT},   {"Home", VK_HOME},     {"End", VK_END},
        {"PageUp", VK_PRIOR}, {"PageDown", VK_NEXT}, {"Delete", VK_DELETE}, {"Backspace", VK_BACK}};
    return keys;
}

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
    std::vector<WORD> held;
    std::string name = key;
    for (const auto& [prefix, modifier] :
         {std::pair<std::string, WORD>{"Alt+", VK_MENU}, std::pair<std::string, WORD>{"Shift+", VK_SHIFT},
          std::pair<std::string, WORD>{"Ctrl+", VK_CONTROL}})
    {
        if (name.size() > prefix.size() && name.starts_with(prefix))
        {
            held.push_back(modifier);
            name.erase(0, prefix.size());
        }
    }
    const std::wstring characters = windows::ToWide(name);
    const auto named = NamedKeys().find(name);
    WORD virtualKey = named == NamedKeys().end() ? WORD{0} : named->second;
    WORD character = 0;
    if (virtualKey == 0 && characters.size() == 1)
    {
        // With a modifier it is the key of that letter, else the character itself, whatever the keyboard's layout.
        (held.empty() ? character : virtualKey) =
            static_cast<WORD>(held.empty() ? characters[0] : static_cast<wchar_t>(LOBYTE(VkKeyScanW(characters[0]))));
    }
    if (virtualKey == 0 && character == 0)
    {
        return false;
    }
    std::vector<INPUT> inputs;
    for (const WORD modifier : held)
    {
        inputs.push_back(Stroke(modifier, 0, 0));
    }
    const DWORD kind = character != 0 ? KEYEVENTF_UNICODE : DWORD{0};
    inputs.push_back(Stroke(virtualKey, character, kind));
    inputs.push_back(Stroke(virtualKey, character, kind | KEYEVENTF_KEYUP));
    for (auto modifier = held.rbegin(); modifier != held.rend(); ++modifier)
    {
        inputs.push_back(Stroke(*modifier, 0, KEYEVENTF_KEYUP));
    }
    return SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT)) == inputs.size();
}

} // namespace vellumo::player
