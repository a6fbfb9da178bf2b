#include "platform/native/console_form.h"

#include "host/text.h"
#include "platform/native/console_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <istream>
#include <optional>
#include <ostream>
#include <variant>

#include <time.h>

namespace vellumo::native
{
namespace
{

constexpr std::size_t rowsShown = 20; // around the selected one
constexpr std::size_t leadWidth = 9;  // what stands before the first column
constexpr int twipsPerCharacter = 110;
constexpr std::int64_t drawingPause = 1000; // milliseconds; each drawing is a line of its own
constexpr int mostReportsUnlooked = 63;

// The coarse clock is enough, and costs a third of the fine one.
std::int64_t Milliseconds()
{
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC_COARSE, &now);
    return now.tv_sec * std::int64_t{1000} + now.tv_nsec / 1'000'000;
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

std::size_t WidthOf(const ui::Column& column)
{
    return static_cast<std::size_t>(std::max(4, column.width / twipsPerCharacter));
}

// The lines at the terminal that show a row, or the captions; as many as its longest cell needs.
std::vector<std::string> GridLines(const ui::Grid& grid, const std::vector<std::string>& cells)
{
    std::vector<std::string> lines(1);
    std::size_t before = 0; // characters in the columns before
    for (std::size_t column = 0; column < grid.columns.size(); ++column)
    {
        const std::size_t width = WidthOf(grid.columns[column]);
        const auto parts = grid.wraps ? Wrapped(cells[column], width) : std::vector{Fitted(cells[column], width)};
        lines.resize(std::max(lines.size(), parts.size()), std::string(before, ' '));
        for (std::size_t i = 0; i < lines.size(); ++i)
        {
            lines[i] += Fitted(i < parts.size() ? parts[i] : "", width) + ' ';
        }
        before += width + 1;
    }
    return lines;
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

bool IsHighlighted(const ui::Cell& cell)
{
    return cell.strong || cell.foreground || cell.background;
}

const char* Mark(ui::Image image)
{
    return image == ui::Image::Error ? "(X) " : image == ui::Image::Warning ? "(!) " : "";
}

} // namespace

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

// Each control that takes input gets its access key; the first figure that is free when it has none, or when another
// control has the same one.
void ConsoleForm::FindOperable()
{
    char figure = '1';
    for (ui::Control* control : m_form.Controls())
    {
        const auto* const box = ui::As<ui::TextBox>(*control);
        if (ui::As<ui::Label>(*control) != nullptr || ui::As<ui::ProgressBar>(*control) != nullptr ||
            (box != nullptr && box->readOnly))
        {
            continue;
        }
        const std::size_t mark = control->text.find('&');
        const bool hasKey = mark != std::string::npos && mark + 1 < control->text.size();
        const char key = hasKey ? host::Lower(control->text[mark + 1]) : '\0';
        const bool taken =
            std::any_of(m_operable.begin(), m_operable.end(), [=](const Operable& each) { return each.key == key; });
        m_operable.push_back({control, hasKey && !taken ? key : figure++});
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
    // A job may report a million rows a second, and asking the clock costs more than such a row. So the faster the
    // reports come, the fewer of them look.
    if (m_reportsToPass > 0)
    {
        --m_reportsToPass;
        return;
    }
    const std::int64_t now = Milliseconds();
    m_reportsPassed = now == m_lookedAt ? std::min(2 * m_reportsPassed + 1, mostReportsUnlooked) : 0;
    m_reportsToPass = m_reportsPassed;
    m_lookedAt = now;
    if (now - m_shownAt >= drawingPause)
    {
        Refresh();
    }
}

void ConsoleForm::DrawProgress()
{
    std::string line = "[" + m_form.Title() + "]";
    for (ui::Control* control : m_form.Controls())
    {
        if (const auto* const bar = ui::As<ui::ProgressBar>(*control); bar != nullptr && bar->visible)
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
        m_shownAt = Milliseconds();
        m_out << line << std::endl;
    }
}

void ConsoleForm::Draw() const
{
    m_out << "\n=== " << m_form.Title() << " ===\n";
    for (ui::Control* control : m_form.Controls())
    {
        if (control->visible)
        {
            std::visit([this](const auto* actual) { DrawControl(*actual); }, control->Actual());
        }
    }
    m_out << "> " << std::flush;
}

void ConsoleForm::DrawLine(const ui::Control& control, const std::string& state) const
{
    m_out << KeyOf(control) << WithoutAmpersand(control.text) << state
          << (control.enabled ? "\n" : " (non disponibile)\n");
}

void ConsoleForm::DrawControl(const ui::Label& label) const
{
    m_out << Mark(label.image) << label.text << '\n';
}

void ConsoleForm::DrawControl(const ui::TextBox& box) const
{
    if (box.readOnly)
    {
        m_out << WithoutAmpersand(box.text) << '\n' << box.value << '\n';
        return;
    }
    DrawLine(box, ' ' + box.value);
}

void ConsoleForm::DrawControl(const ui::CheckBox& box) const
{
    DrawLine(box, box.checked ? ": sì" : ": no");
}

void ConsoleForm::DrawControl(const ui::OptionButton& option) const
{
    DrawLine(option, option.selected ? " (scelto)" : "");
}

void ConsoleForm::DrawControl(const ui::ComboBox& list) const
{
    DrawLine(list, Entries(list));
}

void ConsoleForm::DrawControl(const ui::Button& button) const
{
    DrawLine(button, button.isDefault ? " (Invio)" : "");
}

void ConsoleForm::DrawControl(const ui::Grid& grid) const
{
    m_out << KeyOf(grid) << WithoutAmpersand(grid.text) << '\n';
    DrawGrid(grid);
}

void ConsoleForm::DrawGrid(const ui::Grid& grid) const
{
    const auto draw = [&](const std::vector<std::string>& cells, std::string lead)
    {
        for (const std::string& line : GridLines(grid, cells))
        {
            m_out << lead << line << '\n';
            lead.assign(lead.size(), ' ');
        }
    };
    std::vector<std::string> cells;
    for (const ui::Column& column : grid.columns)
    {
        cells.push_back(column.caption);
    }
    draw(cells, std::string(leadWidth, ' '));
    const std::size_t first = grid.selected && *grid.selected >= rowsShown ? *grid.selected - rowsShown / 2 : 0;
    const std::size_t end = std::min(grid.rows.size(), first + rowsShown);
    for (std::size_t i = first; i < end; ++i)
    {
        const ui::Row& row = grid.rows[i];
        cells.clear();
        for (const ui::Cell& cell : row)
        {
            cells.push_back(Mark(cell.image) + cell.text);
        }
        std::string lead = grid.selected == i ? ">" : " ";
        lead += std::any_of(row.begin(), row.end(), IsHighlighted) ? '*' : ' ';
        const std::string number = std::to_string(i + 1);
        lead.append(number.size() < 5 ? 5 - number.size() : 0, ' ').append(number).append("  ");
        draw(cells, lead);
    }
    if (first > 0 || end < grid.rows.size())
    {
        m_out << std::string(leadWidth, ' ') << "… righe " << first + 1 << "-" << end << " di " << grid.rows.size()
              << '\n';
    }
}

void ConsoleForm::Obey(const std::string& line)
{
    if (line.empty())
    {
        for (const Operable& each : m_operable)
        {
            const auto* const button = ui::As<ui::Button>(*each.control);
            if (button != nullptr && button->isDefault)
            {
                Operate(*each.control, "");
                return;
            }
        }
    }
    const char key = line.empty() ? '\0' : host::Lower(line[0]);
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
    const bool done = control.enabled && control.visible &&
                      std::visit([&](auto* actual) { return Obeys(*actual, argument); }, control.Actual());
    if (!done)
    {
        Complain();
    }
}

bool ConsoleForm::Obeys(ui::TextBox& box, const std::string& argument)
{
    box.value = argument;
    m_form.Changed(box);
    return true;
}

bool ConsoleForm::Obeys(ui::CheckBox& box, const std::string&)
{
    box.checked = !box.checked;
    m_form.Clicked(box);
    return true;
}

bool ConsoleForm::Obeys(ui::OptionButton& option, const std::string&)
{
    m_form.Select(option);
    m_form.Clicked(option);
    return true;
}

bool ConsoleForm::Obeys(ui::Button& button, const std::string&)
{
    m_form.Clicked(button);
    return true;
}

bool ConsoleForm::Obeys(ui::ComboBox& list, const std::string& argument)
{
    const std::size_t number = ToNumber(argument).value_or(0);
    if (number < 1 || number > list.entries.size())
    {
        return false;
    }
    list.index = static_cast<int>(number) - 1;
    m_form.Changed(list);
    return true;
}

bool ConsoleForm::Obeys(ui::Grid& grid, const std::string& argument)
{
    const std::size_t number = ToNumber(argument).value_or(0);
    if (number < 1 || number > grid.rows.size())
    {
        return false;
    }
    grid.selected = number - 1;
    m_form.Changed(grid);
    return true;
}

void ConsoleForm::Complain() const
{
    m_out
        << "Non è possibile. Scrivere la lettera tra parentesi di un comando; per un elenco anche il numero della riga "
           "(\"l 3\"), per una casella anche il testo (\"r diabete\"). Invio preme il pulsante predefinito.\n";
}

} // namespace vellumo::native
