#include "e2e/support/Recorder.h"

#include "e2e/support/FileTree.h"
#include "e2e/support/Installation.h"
#include "e2e/support/ProgramRun.h"
#include "e2e/support/Wide.h"

#include <exception>
#include <functional>
#include <gtest/gtest.h>
#include <utility>

namespace sitekeeper::e2e {
namespace {

/// Whether `condition` comes to hold in time.
bool AwaitQuietly(const std::function<bool()>& condition)
{
    const ULONGLONG deadline = ::GetTickCount64() + PatienceMilliseconds;
    while (!condition() && ::GetTickCount64() < deadline) {
        WaitAnswering(nullptr, 10);
    }
    return condition();
}

} // namespace

Recorder::Recorder(std::wstring path) : m_path(std::move(path))
{
    CopyFileTo(ShippedFile(L"tests\\e2e\\StartRecorder.exe"), m_path);
}

Recorder::~Recorder()
{
    try {
        End();
    } catch (const std::exception& error) {
        ADD_FAILURE() << error.what();
    }
}

std::wstring Recorder::AwaitRecord() const
{
    if (!AwaitQuietly([this] { return HasRun(); })) {
        throw JourneyError("the program is not started: " + ToUtf8(m_path));
    }
    return ReadWideText(m_path + L".txt");
}

bool Recorder::HasRun() const
{
    return Exists(m_path + L".txt");
}

bool Recorder::IsRunning() const
{
    return Exists(m_path + L".running");
}

void Recorder::End() const
{
    if (IsRunning()) {
        WriteWholeFile(m_path + L".end", "");
        EXPECT_TRUE(AwaitQuietly([this] { return !IsRunning(); })) << "a program that the test started does not end";
    }
    RemoveFile(m_path + L".txt");
    RemoveFile(m_path + L".end");
}

} // namespace sitekeeper::e2e
