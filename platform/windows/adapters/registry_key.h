// Owner of one open registry key, the only place that calls RegCloseKey.
#pragma once

#include <windows.h>

#include <string>
#include <utility>

namespace vellumo::windows
{

class RegistryKey
{
public:
    RegistryKey() = default;
    RegistryKey(RegistryKey&& other) noexcept
        : m_key(std::exchange(other.m_key, nullptr))
    {
    }
    RegistryKey& operator=(RegistryKey&& other) noexcept
    {
        std::swap(m_key, other.m_key);
        return *this;
    }
    RegistryKey(const RegistryKey&) = delete;
    RegistryKey& operator=(const RegistryKey&) = delete;
    ~RegistryKey() { Close(); }

    // Both return ERROR_SUCCESS or the reason.
    [[nodiscard]] LSTATUS Open(HKEY root, const std::wstring& path, REGSAM access)
    {
        Close();
        return RegOpenKeyExW(root, path.c_str(), 0, access, &m_key);
    }
    [[nodiscard]] LSTATUS Create(HKEY root, const std::wstring& path, REGSAM access)
    {
        Close();
        return RegCreateKeyExW(root, path.c_str(), 0, nullptr, 0, access, nullptr, &m_key, nullptr);
    }

    // Writes a REG_SZ value; a null name is the key's default value.
    [[nodiscard]] LSTATUS SetText(const wchar_t* name, const std::wstring& text) const
    {
        const auto bytes = static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t));
        return RegSetValueExW(m_key, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()), bytes);
    }

    [[nodiscard]] HKEY Get() const noexcept { return m_key; }
    explicit operator bool() const noexcept { return m_key != nullptr; }

private:
    void Close() noexcept
    {
        if (m_key)
        {
            RegCloseKey(std::exchange(m_key, nullptr));
        }
    }

    HKEY m_key = nullptr;
};

} // namespace vellumo::windows
