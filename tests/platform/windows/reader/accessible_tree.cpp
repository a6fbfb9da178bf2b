#include "tests/platform/windows/reader/accessible_tree.h"

#include "platform/windows/system/bstr.h"
#include "platform/windows/system/com_ptr.h"

#include <oleacc.h>

#include <array>

namespace vellumo::tests
{
namespace
{

using windows::Bstr;
using windows::ComPtr;

struct Name
{
    LONG number;
    const char* text;
};

constexpr std::array roles = {
    Name{ROLE_SYSTEM_STATICTEXT, "text"},    Name{ROLE_SYSTEM_GRAPHIC, "picture"},
    Name{ROLE_SYSTEM_TEXT, "box"},           Name{ROLE_SYSTEM_CHECKBUTTON, "check box"},
    Name{ROLE_SYSTEM_RADIOBUTTON, "option"}, Name{ROLE_SYSTEM_COMBOBOX, "list"},
    Name{ROLE_SYSTEM_PROGRESSBAR, "bar"},    Name{ROLE_SYSTEM_PUSHBUTTON, "button"},
    Name{ROLE_SYSTEM_TABLE, "table"},        Name{ROLE_SYSTEM_ROW, "row"},
    Name{ROLE_SYSTEM_CELL, "cell"},
};
constexpr std::array states = {
    Name{STATE_SYSTEM_UNAVAILABLE, "disabled"}, Name{STATE_SYSTEM_CHECKED, "checked"},
    Name{STATE_SYSTEM_SELECTED, "selected"},    Name{STATE_SYSTEM_FOCUSED, "focused"},
    Name{STATE_SYSTEM_DEFAULT, "default"},      Name{STATE_SYSTEM_OFFSCREEN, "out of view"},
};

VARIANT Part(LONG part)
{
    VARIANT which{};
    which.vt = VT_I4;
    which.lVal = part;
    return which;
}

// What is not to be seen is not read either.
bool IsInvisible(IAccessible& object)
{
    VARIANT state{};
    object.get_accState(Part(CHILDID_SELF), &state);
    return state.vt == VT_I4 && (state.lVal & STATE_SYSTEM_INVISIBLE) != 0;
}

std::string RoleText(IAccessible& object, LONG part)
{
    VARIANT role{};
    object.get_accRole(Part(part), &role);
    for (const Name& each : roles)
    {
        if (role.vt == VT_I4 && role.lVal == each.number)
        {
            return each.text;
        }
    }
    return "role " + std::to_string(role.vt == VT_I4 ? role.lVal : -1);
}

std::string StateText(IAccessible& object, LONG part)
{
    VARIANT state{};
    object.get_accState(Part(part), &state);
    std::string text;
    for (const Name& each : states)
    {
        if (state.vt == VT_I4 && (state.lVal & each.number) != 0)
        {
            text += (text.empty() ? "" : ", ") + std::string(each.text);
        }
    }
    return text.empty() ? "" : " [" + text + ']';
}

std::string Described(IAccessible& object, LONG part)
{
    Bstr name;
    Bstr value;
    Bstr shortcut;
    Bstr description;
    object.get_accName(Part(part), name.Put());
    object.get_accValue(Part(part), value.Put());
    object.get_accKeyboardShortcut(Part(part), shortcut.Put());
    object.get_accDescription(Part(part), description.Put());
    return RoleText(object, part) + " \"" + name.Text() + '"' + (value.IsEmpty() ? "" : " = " + value.Text()) +
           (shortcut.IsEmpty() ? "" : ' ' + shortcut.Text()) + StateText(object, part) +
           (description.IsEmpty() ? "" : ": " + description.Text());
}

void AddParts(IAccessible& object, const std::string& indent, std::vector<std::string>& lines)
{
    LONG count = 0;
    object.get_accChildCount(&count);
    for (LONG part = 1; part <= count; ++part)
    {
        ComPtr<IDispatch> child;
        object.get_accChild(Part(part), child.Put());
        const auto inner = child ? child.As<IAccessible>(IID_IAccessible) : ComPtr<IAccessible>();
        lines.push_back(indent + (inner ? Described(*inner, CHILDID_SELF) : Described(object, part)));
        if (inner)
        {
            AddParts(*inner, indent + "  ", lines);
        }
    }
}

} // namespace

std::vector<std::string> AccessibleTree(HWND window)
{
    std::vector<std::string> lines;
    for (HWND child = GetWindow(window, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT))
    {
        ComPtr<IAccessible> object;
        const HRESULT result =
            AccessibleObjectFromWindow(child, static_cast<DWORD>(OBJID_CLIENT), IID_IAccessible, object.PutVoid());
        if (FAILED(result) || !object)
        {
            lines.push_back("nothing to be read (" + std::to_string(result) + ')');
            continue;
        }
        if (!IsInvisible(*object))
        {
            lines.push_back(Described(*object, CHILDID_SELF));
            AddParts(*object, "  ", lines);
        }
    }
    return lines;
}

} // namespace vellumo::tests
