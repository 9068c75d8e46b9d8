#include "frame/DataExchange.h"

#include <charconv>

namespace sitekeeper {

void ExchangeText(const CDataExchange& exchange, int id, std::wstring& text)
{
    const HWND control = ::GetDlgItem(exchange.dialog, id);
    if (exchange.direction == ExchangeDirection::ToMembers) {
        text = TextOf(control);
    } else if (TextOf(control) != text) { // setting an equal text would move the caret and flicker
        ::SetWindowTextW(control, text.c_str());
    }
}

void ExchangeNumber(const CDataExchange& exchange, int id, std::int32_t& number)
{
    if (exchange.direction == ExchangeDirection::ToControls) {
        std::wstring text = std::to_wstring(number);
        ExchangeText(exchange, id, text);
        return;
    }
    std::wstring text;
    ExchangeText(exchange, id, text);
    std::string digits;
    for (const wchar_t character : text) {
        digits += character < 0x80 ? static_cast<char>(character) : '?';
    }
    std::int32_t value = 0;
    const char* const end = digits.data() + digits.size();
    const auto [stopped, error] = std::from_chars(digits.data(), end, value);
    if (error != std::errc() || stopped != end) {
        throw ExchangeRefused();
    }
    number = value;
}

void ExchangeControl(const CDataExchange& exchange, int id, CWnd& member)
{
    if (member.Handle() == nullptr) {
        member.SubclassWindow(::GetDlgItem(exchange.dialog, id));
    }
}

} // namespace sitekeeper
