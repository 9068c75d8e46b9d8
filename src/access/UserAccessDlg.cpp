#include "access/UserAccessDlg.h"

#include "res/ResourceIds.h"
#include "win32/WindowIds.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <vector>
#include <windowsx.h>

namespace sitekeeper {
namespace {

/// What an empty list shows; never stored.
constexpr const wchar_t* Everyone = L"Everyone";

constexpr std::wstring_view Blanks = L" \t";

std::wstring Trimmed(const std::wstring& text)
{
    const std::size_t first = text.find_first_not_of(Blanks);
    return first == std::wstring::npos ? L"" : text.substr(first, text.find_last_not_of(Blanks) + 1 - first);
}

std::wstring Lines(const std::vector<std::wstring>& names)
{
    std::wstring text;
    for (const std::wstring& name : names) {
        text += name + L"\r\n";
    }
    return text;
}

std::vector<std::wstring> LinesOf(std::wstring_view text)
{
    std::vector<std::wstring> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(L'\n'), text.size());
        std::wstring_view line = text.substr(0, end);
        if (line.ends_with(L'\r')) {
            line.remove_suffix(1);
        }
        lines.emplace_back(line);
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

} // namespace

CUserAccessDlg::CUserAccessDlg(CWinApp& app, const CWnd& owner, Context context)
    : CDialog(app, IDD_USER_ACCESS, &owner), m_context(context)
{}

CUserAccessDlg::~CUserAccessDlg()
{
    DestroyWindow(); // while its lists are still there to be forgotten
}

bool CUserAccessDlg::OnCommand(WORD id)
{
    static constexpr CommandRow<CUserAccessDlg> Commands[] = {
        {IDC_ADD_USER, &CUserAccessDlg::OnAdd},
        {IDC_REFRESH_USERS, &CUserAccessDlg::OnRefresh},
    };
    // Help is the main dialog's.
    return RunCommand(*this, Commands, id) || (id == IDC_HELP_BUTTON && PassToOwner(id)) || CDialog::OnCommand(id);
}

LRESULT CUserAccessDlg::WindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    const POINT point{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    switch (message) {
    case WM_NOTIFY: {
        const auto* const notification = reinterpret_cast<const NMHDR*>(lParam);
        CNameList* const list = ListOf(notification->hwndFrom);
        if (list != nullptr && notification->code == LVN_BEGINDRAG) {
            BeginDrag(*list, reinterpret_cast<const NMLISTVIEW*>(lParam)->ptAction);
            return 0;
        }
        if (list != nullptr && notification->code == LVN_KEYDOWN &&
            OnListKey(*list, reinterpret_cast<const NMLVKEYDOWN*>(lParam)->wVKey)) {
            return 0;
        }
        break;
    }
    case WM_MOUSEMOVE:
        if (m_isDragging) {
            OnMouseMove(point);
            return 0;
        }
        break;
    case WM_LBUTTONUP:
        if (m_isDragging) {
            OnLButtonUp(point);
            return 0;
        }
        break;
    case WM_CAPTURECHANGED:
    case WM_DESTROY: EndDrag(); break;
    default: break;
    }
    return CDialog::WindowProc(message, wParam, lParam);
}

bool CUserAccessDlg::PreTranslateMessage(MSG& message)
{
    if (m_isDragging && message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST) {
        if (message.message == WM_KEYDOWN && message.wParam == VK_ESCAPE) {
            EndDrag();
        }
        return true;
    }
    return CDialog::PreTranslateMessage(message);
}

void CUserAccessDlg::DoDataExchange(CDataExchange& exchange)
{
    ExchangeControl(exchange, IDC_USER_LIST, m_users);
    ExchangeControl(exchange, IDC_LEDGER_COMPOSER_LIST, m_ledgerComposer);
    ExchangeControl(exchange, IDC_SITE_KEEPER_LIST, m_siteKeeper);
    ExchangeControl(exchange, IDC_SHEET_WRITER_LIST, m_sheetWriter);
    ExchangeControl(exchange, IDC_NORM_KEEPER_LIST, m_normKeeper);
    ExchangeControl(exchange, IDC_NEW_USER, m_newUserField);
    ExchangeText(exchange, IDC_NEW_USER, m_newUser);
}

bool CUserAccessDlg::OnInitDialog()
{
    CDialog::OnInitDialog();
    NameControls();
    const CWaitCursor wait(App());
    Fill(m_users, AccessList::General, Rebuild::No);
    if (m_users.Count() == 0) {
        Fill(m_users, AccessList::General, Rebuild::Yes);
    }
    for (const ListRow& row : Lists()) {
        if (row.list != AccessList::General) {
            Fill(*row.control, row.list, Rebuild::No);
        }
    }
    ShowEveryoneInAll();
    return true;
}

void CUserAccessDlg::NameControls()
{
    // What stands above each of them: between a list and its words there is a picture, and the field has none.
    m_users.SetAccessibleName(L"Users");
    m_newUserField.SetAccessibleName(L"New user");
    m_ledgerComposer.SetAccessibleName(L"Ledger Composer");
    m_siteKeeper.SetAccessibleName(L"Site Keeper");
    m_sheetWriter.SetAccessibleName(L"Sheet Writer");
    m_normKeeper.SetAccessibleName(L"Norm Keeper");
}

void CUserAccessDlg::OnRefresh()
{
    const CWaitCursor wait(App());
    Fill(m_users, AccessList::General, Rebuild::Yes);
    ShowEveryoneInAll();
}

void CUserAccessDlg::OnAdd()
{
    UpdateData(ExchangeDirection::ToMembers);
    m_newUser = Trimmed(m_newUser);
    if (m_newUser.empty() || m_users.Find(m_newUser)) {
        return;
    }
    // "Everyone" stays beside the new name until the lists are next put in order. Deliberate.
    m_users.Insert({m_newUser});
    m_newUser.clear();
    UpdateData(ExchangeDirection::ToControls);
}

void CUserAccessDlg::OnOK()
{
    for (const ListRow& row : Lists()) {
        std::vector<std::wstring> names = row.control->Names();
        std::erase(names, Everyone);
        m_context.lists.WriteAccessList(row.list, names);
    }
    EndDialog(IDOK);
}

bool CUserAccessDlg::OnListKey(CNameList& list, WORD key)
{
    enum class Keys
    {
        Alone,
        WithControl
    };
    static constexpr struct
    {
        WORD key;
        Keys keys;
        void (CUserAccessDlg::*handler)(CNameList&);
    } Rows[] = {
        {'A', Keys::WithControl, &CUserAccessDlg::OnSelectAll}, {'C', Keys::WithControl, &CUserAccessDlg::OnCopy},
        {'V', Keys::WithControl, &CUserAccessDlg::OnPaste},     {'X', Keys::WithControl, &CUserAccessDlg::OnCut},
        {VK_DELETE, Keys::Alone, &CUserAccessDlg::OnDelete},
    };
    const auto isDown = [](int modifier) { return ::GetKeyState(modifier) < 0; };
    if (isDown(VK_MENU) || isDown(VK_SHIFT)) {
        return false; // Ctrl with Alt writes characters on many keyboards
    }
    for (const auto& row : Rows) {
        if (row.key == key && (row.keys == Keys::WithControl) == isDown(VK_CONTROL)) {
            (this->*row.handler)(list);
            return true;
        }
    }
    return false;
}

void CUserAccessDlg::OnCopy(CNameList& list)
{
    if (const std::vector<std::wstring> names = list.NamesAt(list.Selected()); !names.empty()) {
        m_context.clipboard.PutText(Id(), Lines(names));
    }
}

void CUserAccessDlg::OnCut(CNameList& list)
{
    const std::vector<std::wstring> names = list.NamesAt(list.Selected());
    // Nothing leaves a list that did not reach the clipboard.
    if (!names.empty() && m_context.clipboard.PutText(Id(), Lines(names))) {
        OnDelete(list);
    }
}

void CUserAccessDlg::OnPaste(CNameList& list)
{
    std::vector<std::wstring> known;
    for (const std::wstring& line : LinesOf(m_context.clipboard.Text(Id()).value_or(L""))) {
        if (const std::optional<std::size_t> place = m_users.Find(line); place && !line.empty()) {
            known.push_back(m_users.NamesAt({*place}).front());
        }
    }
    list.InsertMissing(known);
    ShowEveryoneInAll();
}

void CUserAccessDlg::OnDelete(CNameList& list)
{
    const std::vector<std::size_t> places = list.Selected();
    if (places.empty()) {
        return;
    }
    TakeOff(list);
    ShowEveryoneInAll();
    if (&list != &m_users) {
        list.SelectOnly(places.front());
    }
}

// NOLINTNEXTLINE(readability-convert-member-functions-to-static): a row of the table, like the others
void CUserAccessDlg::OnSelectAll(CNameList& list)
{
    list.SelectAll();
}

void CUserAccessDlg::TakeOff(CNameList& source)
{
    // Known users stay known: names are copied from their list, and moved from a tool's.
    if (&source != &m_users) {
        source.Remove(source.Selected());
    }
}

void CUserAccessDlg::ShowEveryoneInAll()
{
    for (const ListRow& row : Lists()) {
        ShowEveryone(*row.control);
    }
}

void CUserAccessDlg::ShowEveryone(CNameList& list)
{
    if (list.Count() == 0) {
        list.Insert({Everyone});
    } else if (const std::optional<std::size_t> place = list.Find(Everyone); place && list.Count() >= 2) {
        list.Remove({*place});
    }
}

void CUserAccessDlg::Fill(CNameList& list, AccessList which, Rebuild rebuild)
{
    std::vector<std::wstring> names;
    m_context.lists.ReadAccessList(which, names, rebuild);
    list.Replace(names);
}

CNameList* CUserAccessDlg::ListOf(HWND window)
{
    for (const ListRow& row : Lists()) {
        if (window != nullptr && row.control->Handle() == window) {
            return row.control;
        }
    }
    return nullptr;
}

std::array<CUserAccessDlg::ListRow, 5> CUserAccessDlg::Lists()
{
    return {{
        {&m_users, AccessList::General},
        {&m_ledgerComposer, AccessList::LedgerComposer},
        {&m_siteKeeper, AccessList::SiteKeeper},
        {&m_sheetWriter, AccessList::SheetWriter},
        {&m_normKeeper, AccessList::NormKeeper},
    }};
}

WindowId CUserAccessDlg::Id() const
{
    return IdOf(Handle());
}

} // namespace sitekeeper
