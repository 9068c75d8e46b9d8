// The control resizer of the main dialog.
#pragma once

#include <windows.h>

#include <cstdint>
#include <vector>

namespace sitekeeper {

/// Records, for each control registered with it, the control's size and its distances to the edges of the dialog, so
/// that controls could follow a dialog that changes its size. It is never activated in this program: the dialogs have a
/// fixed layout, registrations are ignored and no control is ever moved. Deliberate; do not add the moving.
class CORSWCtrlResizer
{
public:
    /// One registered control. Distances are absolute differences between the same edges of control and dialog.
    class CControl
    {
    public:
        /// Measures: `position` is the control's rectangle, `parent` the dialog's.
        /// Raises std::invalid_argument for a control whose right or bottom lies before its left or top.
        CControl(HWND control, std::uint32_t flags, const RECT& position, const RECT& parent);
        CControl(const CControl&) = default;
        CControl& operator=(const CControl&) = default;
        virtual ~CControl() = default;

        HWND m_control;
        std::uint32_t m_flags;
        std::uint32_t m_leftDistance;
        std::uint32_t m_rightDistance;
        std::uint32_t m_topDistance;
        std::uint32_t m_bottomDistance;
        std::uint32_t m_width;
        std::uint32_t m_height;
    };

    CORSWCtrlResizer() = default;
    CORSWCtrlResizer(const CORSWCtrlResizer&) = delete;
    CORSWCtrlResizer& operator=(const CORSWCtrlResizer&) = delete;
    virtual ~CORSWCtrlResizer() = default;

    /// Registers `control` with its anchoring `flags`, at its normal position. While the resizer is not active nothing
    /// is recorded. Raises what CControl raises; nothing is recorded then.
    void AddControl(HWND control, std::uint32_t flags);

    [[nodiscard]] const std::vector<CControl>& Controls() const noexcept { return m_controls; }
    [[nodiscard]] bool IsActive() const noexcept { return m_isActive; }

protected:
    std::vector<CControl> m_controls;
    RECT m_parentRectangle{};
    bool m_isActive = false;
};

} // namespace sitekeeper
