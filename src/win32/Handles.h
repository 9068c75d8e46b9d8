// One owner for every kind of system handle. The kind is a policy; two handles that are closed differently are two
// types.
#pragma once

#include <windows.h>

#include <commctrl.h>

#include <utility>

namespace sitekeeper {

/// Keeps the calling thread's last error across a clean-up.
class LastErrorKeeper
{
public:
    LastErrorKeeper() noexcept : m_error(::GetLastError()) {}
    LastErrorKeeper(const LastErrorKeeper&) = delete;
    LastErrorKeeper& operator=(const LastErrorKeeper&) = delete;
    ~LastErrorKeeper() { ::SetLastError(m_error); }

private:
    DWORD m_error;
};

/// Owns one handle of the kind `Policy` describes: its type, the value that means "none", and how it is closed.
/// Closing keeps the last error. Not copyable; moving leaves the source empty.
template <typename Policy>
class UniqueHandle
{
public:
    using Handle = typename Policy::Handle;

    UniqueHandle() noexcept = default;
    explicit UniqueHandle(Handle handle) noexcept : m_handle(handle) {}
    UniqueHandle(const UniqueHandle&) = delete;
    UniqueHandle& operator=(const UniqueHandle&) = delete;
    UniqueHandle(UniqueHandle&& other) noexcept : m_handle(other.release()) {}
    UniqueHandle& operator=(UniqueHandle&& other) noexcept
    {
        reset(other.release());
        return *this;
    }
    ~UniqueHandle() { reset(); }

    [[nodiscard]] Handle get() const noexcept { return m_handle; }
    explicit operator bool() const noexcept { return m_handle != Policy::Empty(); }

    /// Hands the handle over to the caller.
    [[nodiscard]] Handle release() noexcept { return std::exchange(m_handle, Policy::Empty()); }

    /// Closes what is held and takes `handle` instead. Taking the held handle again changes nothing.
    void reset(Handle handle = Policy::Empty()) noexcept
    {
        if (handle == m_handle) {
            return;
        }
        const Handle old = std::exchange(m_handle, handle);
        if (old != Policy::Empty()) {
            const LastErrorKeeper keeper;
            Policy::Close(old);
        }
    }

    /// Where a system call that makes such a handle may put it; what was held is closed first.
    [[nodiscard]] Handle* put() noexcept
    {
        reset();
        return &m_handle;
    }

private:
    Handle m_handle = Policy::Empty();
};

template <typename Type>
struct NullHandlePolicy
{
    using Handle = Type;
    static constexpr Handle Empty() noexcept { return nullptr; }
};

struct RegistryKeyPolicy : NullHandlePolicy<HKEY>
{
    static void Close(HKEY key) noexcept { ::RegCloseKey(key); }
};
struct ModulePolicy : NullHandlePolicy<HMODULE>
{
    static void Close(HMODULE module) noexcept { ::FreeLibrary(module); }
};
struct FilePolicy
{
    using Handle = HANDLE;
    static Handle Empty() noexcept { return INVALID_HANDLE_VALUE; }
    static void Close(HANDLE file) noexcept { ::CloseHandle(file); }
};
struct FileSearchPolicy : FilePolicy
{
    static void Close(HANDLE search) noexcept { ::FindClose(search); }
};
struct ProcessPolicy : NullHandlePolicy<HANDLE>
{
    static void Close(HANDLE process) noexcept { ::CloseHandle(process); }
};
struct ThreadPolicy : ProcessPolicy
{};
struct GlobalMemoryPolicy : NullHandlePolicy<HGLOBAL>
{
    static void Close(HGLOBAL memory) noexcept { ::GlobalFree(memory); }
};
struct IconPolicy : NullHandlePolicy<HICON>
{
    static void Close(HICON icon) noexcept { ::DestroyIcon(icon); }
};
struct CursorPolicy : NullHandlePolicy<HCURSOR>
{
    static void Close(HCURSOR cursor) noexcept { ::DestroyCursor(cursor); }
};
struct MenuPolicy : NullHandlePolicy<HMENU>
{
    static void Close(HMENU menu) noexcept { ::DestroyMenu(menu); }
};
template <typename Object>
struct GdiObjectPolicy : NullHandlePolicy<Object>
{
    static void Close(Object object) noexcept { ::DeleteObject(object); }
};
struct ImageListPolicy : NullHandlePolicy<HIMAGELIST>
{
    static void Close(HIMAGELIST images) noexcept { ::ImageList_Destroy(images); }
};
struct MemoryDcPolicy : NullHandlePolicy<HDC>
{
    static void Close(HDC dc) noexcept { ::DeleteDC(dc); }
};

using UniqueRegistryKey = UniqueHandle<RegistryKeyPolicy>;
using UniqueModule = UniqueHandle<ModulePolicy>;
using UniqueFile = UniqueHandle<FilePolicy>;
using UniqueFileSearch = UniqueHandle<FileSearchPolicy>;
using UniqueProcess = UniqueHandle<ProcessPolicy>;
using UniqueThread = UniqueHandle<ThreadPolicy>;
using UniqueGlobalMemory = UniqueHandle<GlobalMemoryPolicy>;
using UniqueIcon = UniqueHandle<IconPolicy>;
using UniqueCursor = UniqueHandle<CursorPolicy>;
using UniqueMenu = UniqueHandle<MenuPolicy>;
using UniqueBitmap = UniqueHandle<GdiObjectPolicy<HBITMAP>>;
using UniqueFont = UniqueHandle<GdiObjectPolicy<HFONT>>;
using UniqueImageList = UniqueHandle<ImageListPolicy>;
using UniqueMemoryDc = UniqueHandle<MemoryDcPolicy>;

/// An object selected into a device context for the life of this guard; afterwards the former one is back.
class SelectScope
{
public:
    SelectScope(HDC dc, HGDIOBJ object) noexcept : m_dc(dc), m_former(::SelectObject(dc, object)) {}
    SelectScope(const SelectScope&) = delete;
    SelectScope& operator=(const SelectScope&) = delete;
    ~SelectScope() { ::SelectObject(m_dc, m_former); }

private:
    HDC m_dc;
    HGDIOBJ m_former;
};

/// The device context of a window's client area (of the whole screen for null), given back at the end.
class WindowDc
{
public:
    explicit WindowDc(HWND window) noexcept : m_window(window), m_dc(::GetDC(window)) {}
    WindowDc(const WindowDc&) = delete;
    WindowDc& operator=(const WindowDc&) = delete;
    ~WindowDc()
    {
        if (m_dc != nullptr) {
            ::ReleaseDC(m_window, m_dc);
        }
    }
    [[nodiscard]] HDC get() const noexcept { return m_dc; }

private:
    HWND m_window;
    HDC m_dc;
};

/// One WM_PAINT of a window, from BeginPaint to EndPaint.
class PaintScope
{
public:
    explicit PaintScope(HWND window) noexcept : m_window(window) { ::BeginPaint(window, &m_paint); }
    PaintScope(const PaintScope&) = delete;
    PaintScope& operator=(const PaintScope&) = delete;
    ~PaintScope() { ::EndPaint(m_window, &m_paint); }
    [[nodiscard]] HDC Dc() const noexcept { return m_paint.hdc; }

private:
    HWND m_window;
    PAINTSTRUCT m_paint{};
};

/// Owns one reference to a component object; the counterpart of UniqueHandle for interfaces.
template <typename Interface>
class ComPtr
{
public:
    ComPtr() noexcept = default;
    ComPtr(const ComPtr&) = delete;
    ComPtr& operator=(const ComPtr&) = delete;
    ~ComPtr() { reset(); }

    [[nodiscard]] Interface* get() const noexcept { return m_object; }
    Interface* operator->() const noexcept { return m_object; }
    explicit operator bool() const noexcept { return m_object != nullptr; }

    /// Where a call that makes such an object may put it; what was held is released first.
    [[nodiscard]] Interface** put() noexcept
    {
        reset();
        return &m_object;
    }

    void reset() noexcept
    {
        if (Interface* const object = std::exchange(m_object, nullptr)) {
            object->Release();
        }
    }

private:
    Interface* m_object = nullptr;
};

} // namespace sitekeeper
