#include "support/Capture.h"

namespace sitekeeper {

MemoryBitmap CaptureWindow(HWND window)
{
    RECT place{};
    ::GetWindowRect(window, &place);
    MemoryBitmap picture(place.right - place.left, place.bottom - place.top, RGB(255, 0, 255));
    ::RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN | RDW_FRAME);
    const HDC dc = ::GetWindowDC(window);
    ::BitBlt(picture.Dc(), 0, 0, picture.Width(), picture.Height(), dc, 0, 0, SRCCOPY);
    ::ReleaseDC(window, dc);
    return picture;
}

} // namespace sitekeeper
