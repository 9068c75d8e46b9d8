#include "e2e/support/Screenshot.h"

#include "e2e/support/FileTree.h"
#include "e2e/support/ProgramRun.h"
#include "e2e/support/Wide.h"
#include "win32/Handles.h"

#include <array>
#include <utility>

namespace sitekeeper::e2e {
namespace {

constexpr int Surroundings = 24; // pixels around the window, so that its edges can be judged
constexpr ULONGLONG PictureMilliseconds = 3000;
constexpr DWORD TakeMilliseconds = 20; // between two looks at the screen

std::wstring ShotsFolder()
{
    if (std::wstring given = EnvironmentText(L"SITEKEEPER_SHOTS"); !given.empty()) {
        return given;
    }
    std::array<wchar_t, MAX_PATH> self{};
    ::GetModuleFileNameW(nullptr, self.data(), MAX_PATH);
    const std::wstring path = self.data();
    return path.substr(0, path.rfind(L'\\')) + L"\\shots";
}

BITMAPINFOHEADER TopDown(int width, int height)
{
    BITMAPINFOHEADER header{};
    header.biSize = sizeof header;
    header.biWidth = width;
    header.biHeight = -height;
    header.biPlanes = 1;
    header.biBitCount = 32;
    header.biCompression = BI_RGB;
    return header;
}

std::string BitmapFile(const Picture& picture)
{
    const BITMAPINFOHEADER info = TopDown(picture.width, picture.height);
    BITMAPFILEHEADER file{};
    file.bfType = 0x4D42; // "BM"
    file.bfOffBits = sizeof file + sizeof info;
    file.bfSize = file.bfOffBits + static_cast<DWORD>(picture.pixels.size() * sizeof(COLORREF));
    std::string bytes(reinterpret_cast<const char*>(&file), sizeof file);
    bytes.append(reinterpret_cast<const char*>(&info), sizeof info);
    for (const COLORREF pixel : picture.pixels) {
        const std::array<unsigned char, 4> stored = {GetBValue(pixel), GetGValue(pixel), GetRValue(pixel), 0xFF};
        bytes.append(reinterpret_cast<const char*>(stored.data()), stored.size());
    }
    return bytes;
}

} // namespace

Picture TakePicture(const RECT& area)
{
    Picture picture{static_cast<int>(area.right - area.left), static_cast<int>(area.bottom - area.top), {}};
    const WindowDc screen(nullptr);
    const UniqueMemoryDc memory(::CreateCompatibleDC(screen.get()));
    BITMAPINFO information{};
    information.bmiHeader = TopDown(picture.width, picture.height);
    void* bits = nullptr;
    const UniqueBitmap bitmap(::CreateDIBSection(screen.get(), &information, DIB_RGB_COLORS, &bits, nullptr, 0));
    if (!bitmap) {
        return {};
    }
    {
        const SelectScope selected(memory.get(), bitmap.get());
        ::BitBlt(memory.get(), 0, 0, picture.width, picture.height, screen.get(), static_cast<int>(area.left),
                 static_cast<int>(area.top), SRCCOPY);
        ::GdiFlush();
    }
    const auto* const raw = static_cast<const DWORD*>(bits);
    picture.pixels.reserve(static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height));
    for (std::size_t index = 0; index < picture.pixels.capacity(); ++index) {
        picture.pixels.push_back(RGB((raw[index] >> 16U) & 0xFFU, (raw[index] >> 8U) & 0xFFU, raw[index] & 0xFFU));
    }
    return picture;
}

Picture TakePicture(HWND window)
{
    RECT area{};
    ::GetWindowRect(window, &area);
    return TakePicture(area);
}

bool IsScreenReadable()
{
    return !EnvironmentText(L"DISPLAY").empty();
}

Picture AwaitPicture(HWND window)
{
    constexpr int NeededTakes = 4; // that many in a row must be the same
    const ULONGLONG end = ::GetTickCount64() + PictureMilliseconds;
    Picture former;
    int takes = 0;
    while (takes < NeededTakes && ::GetTickCount64() < end) {
        WaitAnswering(nullptr, TakeMilliseconds);
        Picture now = TakePicture(window);
        const COLORREF middle = now.pixels.empty() ? 0 : now.At(now.width / 2, now.height / 2);
        const bool isPainted = now.Count([middle](COLORREF pixel) { return pixel != middle; }) > 0;
        takes = isPainted && now.pixels == former.pixels ? takes + 1 : 0;
        former = std::move(now);
    }
    return former;
}

void SaveMoment(HWND window, const std::wstring& moment)
{
    if (!IsScreenReadable()) {
        return;
    }
    static_cast<void>(AwaitPicture(window));
    RECT area{};
    ::GetWindowRect(window, &area);
    ::InflateRect(&area, Surroundings, Surroundings);
    // Beyond its edges the screen has nothing to copy, and Wine then copies nothing at all.
    const RECT screen{0, 0, ::GetSystemMetrics(SM_CXSCREEN), ::GetSystemMetrics(SM_CYSCREEN)};
    ::IntersectRect(&area, &area, &screen);
    WriteWholeFile(ShotsFolder() + L"\\" + moment + L".bmp", BitmapFile(TakePicture(area)));
}

} // namespace sitekeeper::e2e
