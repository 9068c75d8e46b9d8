// The About box.
#pragma once

#include "frame/Dialog.h"
#include "platform/Registry.h"
#include "platform/VersionResources.h"

#include <string>

namespace sitekeeper {

/// What the program and the suite are, composed when the box opens.
class CAboutDlg final : public CDialog
{
public:
    /// What the box works with; everything named must outlive it.
    struct Context
    {
        const VersionResources& versions;
        const Registry& registry;
        /// The program's own path, as the process was started.
        const std::wstring& programFile;
    };

    CAboutDlg(CWinApp& app, const CWnd& owner, Context context);

protected:
    bool OnInitDialog() override;
    void DoDataExchange(CDataExchange& exchange) override;

private:
    std::wstring m_text;
    Context m_context;
};

} // namespace sitekeeper
