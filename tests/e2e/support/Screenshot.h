// Pictures of the screen at named moments, for looking at, and for what no message tells: colours.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace sitekeeper::e2e {

struct Picture
{
    int width = 0;
    int height = 0;
    std::vector<COLORREF> pixels; // row by row from the top

    [[nodiscard]] COLORREF At(int x, int y) const
    {
        return pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x)];
    }

    /// How many pixels fulfil a condition.
    template <typename Condition>
    [[nodiscard]] int Count(Condition condition) const
    {
        int count = 0;
        for (const COLORREF pixel : pixels) {
            count += condition(pixel) ? 1 : 0;
        }
        return count;
    }
};

/// What the screen shows there now.
[[nodiscard]] Picture TakePicture(const RECT& area);
[[nodiscard]] Picture TakePicture(HWND window);

/// Whether there is a screen whose pictures mean anything: not under Wine's driver for no screen.
[[nodiscard]] bool IsScreenReadable();

/// Waits until the window is painted and its picture stands still; gives the picture. Gives what there is when time
/// runs out.
[[nodiscard]] Picture AwaitPicture(HWND window);

/// Writes what stands on the screen in and around a window, once it is painted, to MOMENT.bmp in the folder
/// SITEKEEPER_SHOTS names, or in "shots" beside this program. Nothing happens without a readable screen.
void SaveMoment(HWND window, const std::wstring& moment);

} // namespace sitekeeper::e2e
