#include "app/VersionText.h"

#include "text/Text.h"

namespace sitekeeper {

void NormalizeVersionText(std::wstring& text)
{
    if (text.find(L", ") != std::wstring::npos) {
        text = ReplaceAll(ReplaceAll(text, L",", L"."), L" ", L"");
    }
    if (text.find(L'.') == std::wstring::npos) {
        return;
    }
    while (text.ends_with(L".0")) {
        text.resize(text.rfind(L'.'));
    }
    if (text.find(L'.') == std::wstring::npos) {
        text += L".0";
    }
}

} // namespace sitekeeper
