#include "maindlg/AboutDlg.h"

#include "maindlg/AboutText.h"
#include "res/ResourceIds.h"

namespace sitekeeper {

CAboutDlg::CAboutDlg(CWinApp& app, const CWnd& owner, Context context)
    : CDialog(app, IDD_ABOUT, &owner), m_context(context)
{}

void CAboutDlg::DoDataExchange(CDataExchange& exchange)
{
    ExchangeText(exchange, IDC_ABOUT_TEXT, m_text);
}

bool CAboutDlg::OnInitDialog()
{
    CDialog::OnInitDialog();
    m_text = BuildAboutText(m_context.versions, m_context.registry, m_context.programFile);
    UpdateData(ExchangeDirection::ToControls);
    return true;
}

} // namespace sitekeeper
