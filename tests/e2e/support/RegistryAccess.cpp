#include "e2e/support/RegistryAccess.h"

#include "e2e/support/Wide.h"
#include "win32/Handles.h"

#include <array>
#include <cstring>
#include <stdexcept>

namespace sitekeeper::e2e {
namespace {

constexpr DWORD NameRoom = 1024;

HKEY RootOf(Hive hive)
{
    return hive == Hive::Machine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
}

std::wstring TypeName(DWORD type)
{
    switch (type) {
    case REG_SZ: return L"REG_SZ";
    case REG_DWORD: return L"REG_DWORD";
    case REG_BINARY: return L"REG_BINARY";
    default: return L"type " + std::to_wstring(type);
    }
}

std::wstring Hexadecimal(const std::vector<std::byte>& bytes)
{
    std::wstring text;
    for (const std::byte value : bytes) {
        text += L"0123456789abcdef"[std::to_integer<unsigned>(value) >> 4U];
        text += L"0123456789abcdef"[std::to_integer<unsigned>(value) & 0xFU];
    }
    return text;
}

/// The text of a value that is exactly one text with one terminator at its end.
std::optional<std::wstring> PlainText(const RegistryValue& value)
{
    if (value.type != REG_SZ || value.bytes.size() < sizeof(wchar_t) || value.bytes.size() % sizeof(wchar_t) != 0) {
        return std::nullopt;
    }
    std::wstring text(value.bytes.size() / sizeof(wchar_t), L'\0');
    std::memcpy(text.data(), value.bytes.data(), value.bytes.size());
    if (text.find(L'\0') != text.size() - 1) {
        return std::nullopt;
    }
    text.pop_back();
    return text;
}

} // namespace

RegistryValue TextValue(const std::wstring& text)
{
    RegistryValue value{REG_SZ, std::vector<std::byte>((text.size() + 1) * sizeof(wchar_t))};
    std::memcpy(value.bytes.data(), text.c_str(), value.bytes.size());
    return value;
}

RegistryValue NumberValue(DWORD number)
{
    RegistryValue value{REG_DWORD, std::vector<std::byte>(sizeof number)};
    std::memcpy(value.bytes.data(), &number, sizeof number);
    return value;
}

std::wstring Describe(const RegistryValue& value)
{
    std::wstring text = TypeName(value.type) + L", " + std::to_wstring(value.bytes.size()) + L" bytes, ";
    if (const auto plain = PlainText(value)) {
        return text + L"\"" + *plain + L"\"";
    }
    if (value.type == REG_DWORD && value.bytes.size() == sizeof(DWORD)) {
        DWORD number = 0;
        std::memcpy(&number, value.bytes.data(), sizeof number);
        return text + std::to_wstring(number);
    }
    return text + Hexadecimal(value.bytes);
}

std::optional<RegistryValue> ReadValue(Hive hive, const std::wstring& key, const std::wstring& name)
{
    UniqueRegistryKey opened;
    RegistryValue value;
    DWORD size = 0;
    if (::RegOpenKeyExW(RootOf(hive), key.c_str(), 0, KEY_READ, opened.put()) != ERROR_SUCCESS ||
        ::RegQueryValueExW(opened.get(), name.c_str(), nullptr, nullptr, nullptr, &size) != ERROR_SUCCESS) {
        return std::nullopt;
    }
    value.bytes.resize(size);
    ::RegQueryValueExW(opened.get(), name.c_str(), nullptr, &value.type, reinterpret_cast<BYTE*>(value.bytes.data()),
                       &size);
    return value;
}

void WriteValue(Hive hive, const std::wstring& key, const std::wstring& name, const RegistryValue& value)
{
    UniqueRegistryKey opened;
    LSTATUS status =
        ::RegCreateKeyExW(RootOf(hive), key.c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, opened.put(), nullptr);
    if (status == ERROR_SUCCESS) {
        status =
            ::RegSetValueExW(opened.get(), name.c_str(), 0, value.type,
                             reinterpret_cast<const BYTE*>(value.bytes.data()), static_cast<DWORD>(value.bytes.size()));
    }
    if (status != ERROR_SUCCESS) {
        throw std::runtime_error("cannot write " + ToUtf8(FullValueName(hive, key, name)));
    }
}

void RemoveValue(Hive hive, const std::wstring& key, const std::wstring& name)
{
    UniqueRegistryKey opened;
    if (::RegOpenKeyExW(RootOf(hive), key.c_str(), 0, KEY_WRITE, opened.put()) == ERROR_SUCCESS) {
        ::RegDeleteValueW(opened.get(), name.c_str());
    }
}

void RemoveKey(Hive hive, const std::wstring& key)
{
    ::RegDeleteTreeW(RootOf(hive), key.c_str());
}

void RemoveEmptyKey(Hive hive, const std::wstring& key)
{
    ::RegDeleteKeyW(RootOf(hive), key.c_str());
}

LockedKey::LockedKey(Hive hive, const std::wstring& key)
{
    const std::string refused = "cannot lock " + ToUtf8(key);
    const HKEY root = RootOf(hive);
    DWORD size = 0;
    if (::RegOpenKeyExW(root, key.c_str(), 0, READ_CONTROL | WRITE_DAC, m_key.put()) != ERROR_SUCCESS ||
        ::RegGetKeySecurity(m_key.get(), DACL_SECURITY_INFORMATION, nullptr, &size) != ERROR_INSUFFICIENT_BUFFER) {
        throw std::runtime_error(refused);
    }
    m_rights.resize(size);
    SECURITY_DESCRIPTOR nobody{};
    ACL none{};
    UniqueRegistryKey again;
    if (::RegGetKeySecurity(m_key.get(), DACL_SECURITY_INFORMATION, m_rights.data(), &size) != ERROR_SUCCESS ||
        ::InitializeSecurityDescriptor(&nobody, SECURITY_DESCRIPTOR_REVISION) == FALSE ||
        ::InitializeAcl(&none, sizeof none, ACL_REVISION) == FALSE ||
        ::SetSecurityDescriptorDacl(&nobody, TRUE, &none, FALSE) == FALSE ||
        ::RegSetKeySecurity(m_key.get(), DACL_SECURITY_INFORMATION, &nobody) != ERROR_SUCCESS ||
        ::RegOpenKeyExW(root, key.c_str(), 0, KEY_READ, again.put()) != ERROR_ACCESS_DENIED) {
        throw std::runtime_error(refused);
    }
}

LockedKey::~LockedKey()
{
    ::RegSetKeySecurity(m_key.get(), DACL_SECURITY_INFORMATION, m_rights.data());
}

void VisitValues(Hive hive, const std::wstring& key, const ValueVisitor& visit)
{
    UniqueRegistryKey opened;
    if (::RegOpenKeyExW(RootOf(hive), key.c_str(), 0, KEY_READ, opened.put()) != ERROR_SUCCESS) {
        return;
    }
    std::array<wchar_t, NameRoom> name{};
    for (DWORD index = 0;; ++index) {
        DWORD length = NameRoom;
        if (::RegEnumValueW(opened.get(), index, name.data(), &length, nullptr, nullptr, nullptr, nullptr) !=
            ERROR_SUCCESS) {
            break;
        }
        const std::wstring valueName(name.data(), length);
        visit(FullValueName(hive, key, valueName), ReadValue(hive, key, valueName).value_or(RegistryValue{}));
    }
    for (DWORD index = 0;; ++index) {
        DWORD length = NameRoom;
        if (::RegEnumKeyExW(opened.get(), index, name.data(), &length, nullptr, nullptr, nullptr, nullptr) !=
            ERROR_SUCCESS) {
            break;
        }
        VisitValues(hive, key + L"\\" + std::wstring(name.data(), length), visit);
    }
}

std::wstring FullValueName(Hive hive, const std::wstring& key, const std::wstring& name)
{
    return (hive == Hive::Machine ? L"HKLM\\" : L"HKCU\\") + key + L"\\" + name;
}

} // namespace sitekeeper::e2e
