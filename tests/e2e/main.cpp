// Entry of the end-to-end suite.
#include <windows.h>

#include <objbase.h>

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    // Real pixels, as the program under test sees them.
    ::SetProcessDpiAwarenessContext(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2);
    ::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    ::testing::InitGoogleTest(&argc, argv);
    const int result = RUN_ALL_TESTS();
    ::CoUninitialize();
    return result;
}
