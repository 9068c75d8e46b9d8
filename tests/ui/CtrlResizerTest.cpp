// The control resizer, which the program never activates.
#include "controls/CtrlResizer.h"

#include <windows.h>

#include <gtest/gtest.h>
#include <stdexcept>

namespace sitekeeper {
namespace {

/// What the resizer would do if something activated it.
class ActiveResizer final : public CORSWCtrlResizer
{
public:
    explicit ActiveResizer(const RECT& parent)
    {
        m_parentRectangle = parent;
        m_isActive = true;
    }
};

class CtrlResizerTest : public testing::Test
{
protected:
    CtrlResizerTest()
        : m_parent(::CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 300, 200, nullptr, nullptr, nullptr, nullptr)),
          m_control(::CreateWindowExW(0, L"BUTTON", L"", WS_CHILD | WS_VISIBLE, 10, 20, 40, 30, m_parent, nullptr,
                                      nullptr, nullptr))
    {}
    ~CtrlResizerTest() override { ::DestroyWindow(m_parent); }

    HWND m_parent;
    HWND m_control;
};

TEST_F(CtrlResizerTest, RecordsNothing)
{
    CORSWCtrlResizer resizer;
    EXPECT_FALSE(resizer.IsActive());
    for (int i = 0; i < 12; ++i) {
        resizer.AddControl(m_control, 1);
        resizer.AddControl(nullptr, 2);
    }
    EXPECT_TRUE(resizer.Controls().empty());
    EXPECT_FALSE(resizer.IsActive());
}

TEST_F(CtrlResizerTest, MeasuresAControlWhenActive)
{
    ActiveResizer resizer({0, 0, 300, 200});
    resizer.AddControl(m_control, 2);
    ASSERT_EQ(resizer.Controls().size(), 1U);
    const auto& control = resizer.Controls().front();
    EXPECT_EQ(control.m_control, m_control);
    EXPECT_EQ(control.m_flags, 2U);
    EXPECT_EQ(control.m_leftDistance, 10U);
    EXPECT_EQ(control.m_topDistance, 20U);
    EXPECT_EQ(control.m_rightDistance, 250U);
    EXPECT_EQ(control.m_bottomDistance, 150U);
    EXPECT_EQ(control.m_width, 40U);
    EXPECT_EQ(control.m_height, 30U);
}

TEST(CtrlResizerControlTest, TakesDistancesWithoutTheirSign)
{
    const CORSWCtrlResizer::CControl control(nullptr, 1, {-5, -7, 120, 90}, {0, 0, 100, 50});
    EXPECT_EQ(control.m_leftDistance, 5U);
    EXPECT_EQ(control.m_topDistance, 7U);
    EXPECT_EQ(control.m_rightDistance, 20U);
    EXPECT_EQ(control.m_bottomDistance, 40U);
    EXPECT_EQ(control.m_width, 125U);
    EXPECT_EQ(control.m_height, 97U);
}

TEST(CtrlResizerControlTest, RefusesANegativeSize)
{
    const auto measure = [](const RECT& position) {
        return CORSWCtrlResizer::CControl(nullptr, 1, position, {0, 0, 100, 50});
    };
    EXPECT_THROW(static_cast<void>(measure({10, 0, 9, 5})), std::invalid_argument);
    EXPECT_THROW(static_cast<void>(measure({0, 10, 5, 9})), std::invalid_argument);
    EXPECT_NO_THROW(static_cast<void>(measure({10, 10, 10, 10})));
}

} // namespace
} // namespace sitekeeper
