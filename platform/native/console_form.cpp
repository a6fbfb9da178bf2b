#include "platform/native/console_form.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <istream>
#include <optional>
#include <ostream>

namespace vellumo::native
{
namespace
{

constexpr std::size_t rowsShown = 20; // around the selected one
constexpr int twipsPerCharacter = 110;
constexpr std::chrono::milliseconds drawingPause{1000}; // each drawing is a line of its own

template <class Kind>
Kind& As(ui::Control& control)
{
    return dynamic_cast<Kind&>(control);
}

template <class Kind>
const Kind& As(const ui::Control& control)
{
    return dynamic_cast<const Kind&>(control);
}

std::string WithoutAmpersand(const std::string& text)
{
    std::string plain = text;
    std::erase(plain, '&');
    return plain;
}

std::optional<std::size_t> ToNumber(const std::string& text)
{
    std::size_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(number) : std::nullopt;
}

bool BeginsCharacter(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0u) != 0x80;
}

// Exactly `width` characters: cut with an ellipsis or filled with blanks.
std::string Fitted(const std::string& text, std::size_t width)
{
    const auto length = static_cast<std::size_t>(std::count_if(text.begin(), text.end(), BeginsCharacter));
    if (length <= width)
    {
        return text + std::string(width - length, ' ');
    }
    std::size_t end = 0;
    for (std::size_t characters = 0; end < text.size(); ++end)
    {
        if (BeginsCharacter(text[end]) && characters++ == width - 1)
        {
            break;
        }
    }
    return text.substr(0, end) + "…";
}

std::string GridLine(const ui::Grid& grid, auto&& cellText)
{
    std::string line;
    for (std::size_t column = 0; column < grid.columns.size(); ++column)
    {
        const auto width = static_cast<std::size_t>(std::max(4, grid.columns[column].width / twipsPerCharacter));
        line += Fitted(cellText(column), width) + ' ';
    }
    return line;
}

std::string Entries(const ui::ComboBox& list)
{
    std::string line;
    for (std::size_t i = 0; i < list.entries.size(); ++i)
    {
        const bool chosen = list.index == static_cast<int>(i);
        line += ' ' + std::to_string(i + 1) + (chosen ? "* " : " ") + list.entries[i];
    }
    return line;
}

bool Stands(const ui::Cell& cell) // out from the others
{
    return cell.strong || cell.foreground || cell.background;
}

const char* Mark(ui::CellImage image)
{
    return image == ui::CellImage::Error ? "(X) " : image == ui::CellImage::Warning ? "(!) " : "";
}

} // namespace

char LowerCase(char letter) noexcept
{
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

ConsoleForm::ConsoleForm(ui::Form& form, std::istream& in, std::ostream& out)
    : m_form(form)
    , m_in(in)
    , m_out(out)
{
    form.Load();
    FindOperable();
    form.Attach(this);
}

ConsoleForm::~ConsoleForm()
{
    m_form.Attach(nullptr);
}

void ConsoleForm::ShowModal()
{
    Refresh();
    m_form.Activated();
    while (!m_form.IsClosed())
    {
        Draw();
        std::string line;
        if (!std::getline(m_in, line))
        {
            m_form.FrameClosed();
            return;
        }
        Obey(line);
    }
    if (!ToOperate())
    {
        DrawProgress();
    }
}

// Each control that takes input gets its access key, else the first figure that is free.
void ConsoleForm::FindOperable()
{
    char figure = '1';
    for (ui::Control* control : m_form.Controls())
    {
        if (control->kind == ui::ControlKind::Label || control->kind == ui::ControlKind::ProgressBar)
        {
            continue;
        }
        const std::size_t mark = control->text.find('&');
        const bool hasKey = mark != std::string::npos && mark + 1 < control->text.size();
        m_operable.push_back({control, hasKey ? LowerCase(control->text[mark + 1]) : figure++});
    }
}

std::string ConsoleForm::KeyOf(const ui::Control& control) const
{
    const auto found = std::find_if(m_operable.begin(), m_operable.end(),
                                    [&](const Operable& each) { return each.control == &control; });
    return found == m_operable.end() ? "    " : std::string("[") + found->key + "] ";
}

void ConsoleForm::Refresh()
{
    if (!ToOperate())
    {
        DrawProgress();
    }
}

void ConsoleForm::RefreshSoon()
{
    if (std::chrono::steady_clock::now() - m_shownAt >= drawingPause)
    {
        Refresh();
    }
}

void ConsoleForm::DrawProgress()
{
    std::string line = "[" + m_form.Title() + "]";
    for (const ui::Control* control : m_form.Controls())
    {
        if (const auto* const bar = dynamic_cast<const ui::ProgressBar*>(control); bar != nullptr && bar->visible)
        {
            const float part = bar->maximum > 0 ? std::clamp(bar->value / bar->maximum, 0.0F, 1.0F) : 0.0F;
            line += ' ' + std::to_string(std::lround(part * 100)) + '%';
        }
        else if (!control->text.empty())
        {
            line += ' ' + control->text;
        }
    }
    if (line != m_progressShown)
    {
        m_progressShown = line;
        m_shownAt = std::chrono::steady_clock::now();
        m_out << line << std::endl;
    }
}

void ConsoleForm::Draw() const
{
    m_out << "\n=== " << m_form.Title() << " ===\n";
    for (const ui::Control* control : m_form.Controls())
    {
        if (control->visible)
        {
            DrawControl(*control);
        }
    }
    m_out << "> " << std::flush;
}

void ConsoleForm::DrawControl(const ui::Control& control) const
{
    std::string line = KeyOf(control) + WithoutAmpersand(control.text);
    switch (control.kind)
    {
    case ui::ControlKind::Label:
        m_out << control.text << '\n';
        return;
    case ui::ControlKind::Grid:
        m_out << line << '\n';
        DrawGrid(As<ui::Grid>(control));
        return;
    case ui::ControlKind::TextBox:
        line += ' ' + As<ui::TextBox>(control).value;
        break;
    case ui::ControlKind::CheckBox:
        line += As<ui::CheckBox>(control).checked ? ": sì" : ": no";
        break;
    case ui::ControlKind::OptionButton:
        line += As<ui::OptionButton>(control).selected ? " (scelto)" : "";
        break;
    case ui::ControlKind::Button:
        line += As<ui::Button>(control).isDefault ? " (Invio)" : "";
        break;
    case ui::ControlKind::ComboBox:
        line += Entries(As<ui::ComboBox>(control));
        break;
    case ui::ControlKind::ProgressBar: // only where nothing is to operate
        return;
    }
    m_out << line << (control.enabled ? "\n" : " (non disponibile)\n");
}

void ConsoleForm::DrawGrid(const ui::Grid& grid) const
{
    m_out << "         " << GridLine(grid, [&](std::size_t column) { return grid.columns[column].caption; }) << '\n';
    const std::size_t first = grid.selected && *grid.selected >= rowsShown ? *grid.selected - rowsShown / 2 : 0;
    const std::size_t end = std::min(grid.rows.size(), first + rowsShown);
    for (std::size_t i = first; i < end; ++i)
    {
        const ui::Row& row = grid.rows[i];
        const std::string number = std::to_string(i + 1);
        m_out << (grid.selected == i ? '>' : ' ') << (std::any_of(row.begin(), row.end(), Stands) ? '*' : ' ')
              << std::string(number.size() < 5 ? 5 - number.size() : 0, ' ') << number << "  "
              << GridLine(grid, [&](std::size_t column) { return Mark(row[column].image) + row[column].text; }) << '\n';
    }
    if (first > 0 || end < grid.rows.size())
    {
        m_out << "         … righe " << first + 1 << "-" << end << " di " << grid.rows.size() << '\n';
    }
}

void ConsoleForm::Obey(const std::string& line)
{
    if (line.empty())
    {
        for (const Operable& each : m_operable)
        {
            const auto* const button = dynamic_cast<const ui::Button*>(each.control);
            if (button != nullptr && button->isDefault)
            {
                Operate(*each.control, "");
                return;
            }
        }
    }
    const char key = line.empty() ? '\0' : LowerCase(line[0]);
    const auto found =
        std::find_if(m_operable.begin(), m_operable.end(), [&](const Operable& each) { return each.key == key; });
    if (found == m_operable.end() || (line.size() > 1 && line[1] != ' '))
    {
        Complain();
        return;
    }
    Operate(*found->control, line.size() > 2 ? line.substr(2) : "");
}

void ConsoleForm::Operate(ui::Control& control, const std::string& argument)
{
    if (!control.enabled || !control.visible)
    {
        Complain();
        return;
    }
    const std::size_t number = ToNumber(argument).value_or(0);
    switch (control.kind)
    {
    case ui::ControlKind::TextBox:
        As<ui::TextBox>(control).value = argument;
        m_form.Changed(control);
        break;
    case ui::ControlKind::CheckBox:
        As<ui::CheckBox>(control).checked = !As<ui::CheckBox>(control).checked;
        m_form.Clicked(control);
        break;
    case ui::ControlKind::OptionButton:
        m_form.Select(control);
        m_form.Clicked(control);
        break;
    case ui::ControlKind::Button:
        m_form.Clicked(control);
        break;
    case ui::ControlKind::ComboBox:
        if (number < 1 || number > As<ui::ComboBox>(control).entries.size())
        {
            Complain();
            return;
        }
        As<ui::ComboBox>(control).index = static_cast<int>(number) - 1;
        m_form.Changed(control);
        break;
    case ui::ControlKind::Grid:
        if (number < 1 || number > As<ui::Grid>(control).rows.size())
        {
            Complain();
            return;
        }
        As<ui::Grid>(control).selected = number - 1;
        m_form.Changed(control);
        break;
    case ui::ControlKind::Label:
    case ui::ControlKind::ProgressBar:
        break;
    }
}

void ConsoleForm::Complain() const
{
    m_out
        << "Non è possibile. Scrivere la lettera tra parentesi di un comando; per un elenco anche il numero della riga "
           "(\"l 3\"), per una casella anche il testo (\"r diabete\"). Invio preme il pulsante predefinito.\n";
}

} // namespace vellumo::native
