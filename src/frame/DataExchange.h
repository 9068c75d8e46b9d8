// Values between the controls of a dialog and its members.
#pragma once

#include "frame/Wnd.h"

#include <windows.h>

#include <cstdint>
#include <exception>
#include <string>

namespace sitekeeper {

enum class ExchangeDirection
{
    ToControls,
    ToMembers
};

/// One exchange in one direction.
struct CDataExchange
{
    HWND dialog;
    ExchangeDirection direction;
};

/// Raised by an exchange whose control holds no value for its member. Never leaves UpdateData.
class ExchangeRefused : public std::exception
{};

/// The text of a control.
void ExchangeText(const CDataExchange& exchange, int id, std::wstring& text);

/// A decimal number, with a sign where it is negative. Raises ExchangeRefused for a text that is none, or one outside
/// 32 bits; the member is then left as it is.
void ExchangeNumber(const CDataExchange& exchange, int id, std::int32_t& number);

/// Lets `member` take over the control the first time, in either direction.
void ExchangeControl(const CDataExchange& exchange, int id, CWnd& member);

} // namespace sitekeeper
