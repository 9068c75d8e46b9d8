// Dragging names from list to list: the part of the dialog that follows the mouse.
#include "access/UserAccessDlg.h"

#include <utility>
#include <vector>

namespace sitekeeper {
namespace {

/// Where the mouse holds the image.
constexpr POINT HotSpot{10, 10};

} // namespace

void CUserAccessDlg::BeginDrag(CNameList& source, POINT point)
{
    const std::vector<std::size_t> selected = source.Selected();
    if (selected.empty() || m_isDragging) {
        return;
    }
    m_isDragging = true;
    m_dragSource = &source;
    POINT corner{};
    m_dragImage.reset(reinterpret_cast<HIMAGELIST>(
        ::SendMessageW(source.Handle(), LVM_CREATEDRAGIMAGE, selected.front(), reinterpret_cast<LPARAM>(&corner))));
    ::ClientToScreen(source.Handle(), &point);
    ::ImageList_BeginDrag(m_dragImage.get(), 0, HotSpot.x, HotSpot.y);
    ::ImageList_DragEnter(::GetDesktopWindow(), point.x, point.y);
    ::SetCapture(Handle());
}

void CUserAccessDlg::OnMouseMove(POINT point)
{
    ::ClientToScreen(Handle(), &point);
    ::ImageList_DragMove(point.x, point.y);
    ::ImageList_DragShowNolock(FALSE); // or the image would be the window under the mouse, and smear
    const bool isList = ListOf(::WindowFromPoint(point)) != nullptr;
    ::SetCursor(::LoadCursorW(nullptr, isList ? IDC_ARROW : IDC_NO));
    ::ImageList_DragShowNolock(TRUE);
}

void CUserAccessDlg::OnLButtonUp(POINT point)
{
    CNameList* const source = m_dragSource;
    EndDrag();
    ::ClientToScreen(Handle(), &point);
    CNameList* const target = ListOf(::WindowFromPoint(point));
    if (target == nullptr || target == source) {
        return;
    }
    target->InsertMissing(source->NamesAt(source->Selected()));
    TakeOff(*source);
    ShowEveryoneInAll();
}

void CUserAccessDlg::EndDrag()
{
    if (!std::exchange(m_isDragging, false)) {
        return;
    }
    m_dragSource = nullptr;
    if (::GetCapture() == Handle()) {
        ::ReleaseCapture();
    }
    ::ImageList_DragLeave(::GetDesktopWindow());
    ::ImageList_EndDrag();
    m_dragImage.reset();
}

} // namespace sitekeeper
