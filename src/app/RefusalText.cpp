#include "app/RefusalText.h"

#include "text/Text.h"

namespace sitekeeper {

std::wstring RefusalText(const std::wstring& userName)
{
    return Fill(L"%s,\nYou do not have permission to run this application.\n\n"
                L"Please contact your system administrator.",
                {userName});
}

} // namespace sitekeeper
