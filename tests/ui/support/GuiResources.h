// How many drawing objects the process holds: what a test of long use compares.
#pragma once

namespace sitekeeper {

/// GDI objects: bitmaps, brushes, fonts, regions, device contexts. Icons and cursors count through their bitmaps.
[[nodiscard]] unsigned CountGdiObjects();

/// Objects of the window manager: windows, menus, icons; 0 where the system does not count them, as under Wine.
[[nodiscard]] unsigned CountUserObjects();

} // namespace sitekeeper
