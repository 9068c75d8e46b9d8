#include "controls/CtrlResizer.h"

#include <stdexcept>

namespace sitekeeper {
namespace {

std::uint32_t Distance(LONG one, LONG other)
{
    return one > other ? static_cast<std::uint32_t>(one) - static_cast<std::uint32_t>(other)
                       : static_cast<std::uint32_t>(other) - static_cast<std::uint32_t>(one);
}

std::uint32_t Extent(LONG from, LONG to)
{
    if (to < from) {
        throw std::invalid_argument("a control of negative size");
    }
    return Distance(from, to);
}

} // namespace

CORSWCtrlResizer::CControl::CControl(HWND control, std::uint32_t flags, const RECT& position, const RECT& parent)
    : m_control(control), m_flags(flags), m_leftDistance(Distance(position.left, parent.left)),
      m_rightDistance(Distance(position.right, parent.right)), m_topDistance(Distance(position.top, parent.top)),
      m_bottomDistance(Distance(position.bottom, parent.bottom)), m_width(Extent(position.left, position.right)),
      m_height(Extent(position.top, position.bottom))
{}

void CORSWCtrlResizer::AddControl(HWND control, std::uint32_t flags)
{
    if (!m_isActive) {
        return;
    }
    WINDOWPLACEMENT placement{};
    placement.length = sizeof placement;
    ::GetWindowPlacement(control, &placement);
    m_controls.emplace_back(control, flags, placement.rcNormalPosition, m_parentRectangle);
}

} // namespace sitekeeper
