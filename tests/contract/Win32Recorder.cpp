#include "contract/Win32Recorder.h"

#include <windows.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <stdexcept>

namespace sitekeeper {
namespace {

namespace fs = std::filesystem;

constexpr ULONGLONG PatienceMilliseconds = 20000;
constexpr DWORD PollMilliseconds = 10;

bool Await(const std::function<bool()>& condition)
{
    const ULONGLONG deadline = ::GetTickCount64() + PatienceMilliseconds;
    while (!condition()) {
        if (::GetTickCount64() > deadline) {
            return false;
        }
        ::Sleep(PollMilliseconds);
    }
    return true;
}

bool Exists(const std::wstring& path)
{
    return ::GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

/// A program that runs cannot be opened for writing.
bool HasEnded(const std::wstring& program)
{
    return std::fstream(fs::path(program), std::ios::binary | std::ios::in | std::ios::out).is_open();
}

std::wstring TextOf(const std::wstring& path)
{
    std::ifstream file(fs::path(path), std::ios::binary);
    const std::string bytes(std::istreambuf_iterator<char>(file), {});
    std::wstring text(bytes.size() / sizeof(wchar_t), L'\0');
    std::memcpy(text.data(), bytes.data(), text.size() * sizeof(wchar_t));
    return text;
}

/// The text up to the next line end, which is taken off with it.
std::wstring TakeLine(std::wstring& text)
{
    const std::size_t end = text.find(L'\n');
    std::wstring line = text.substr(0, end);
    text.erase(0, end == std::wstring::npos ? end : end + 1);
    return line;
}

} // namespace

void CopyRecorder(const std::wstring& path)
{
    fs::copy_file(SITEKEEPER_START_RECORDER, path);
}

std::optional<StartedAs> RecordOf(const std::wstring& path)
{
    // As long as the recorder still holds what it has just renamed, the file is there and cannot be opened.
    std::wstring text;
    if (!Await([&path, &text] { return !(text = TextOf(path + L".txt")).empty(); })) {
        return std::nullopt;
    }
    StartedAs record;
    record.commandLine = TakeLine(text);
    if (const std::wstring state = TakeLine(text); state != L"-") {
        record.showState = std::stoi(state);
    }
    record.priority = static_cast<std::uint32_t>(std::stoul(TakeLine(text)));
    record.workingFolder = text.ends_with(L'\\') ? text : text + L"\\";
    return record;
}

bool IsRecording(const std::wstring& path)
{
    return Exists(path + L".running");
}

void EndRecording(const std::wstring& path)
{
    std::ofstream(fs::path(path + L".end"), std::ios::binary).put('\n');
    if (!Await([&path] { return !Exists(path + L".running") && HasEnded(path); })) {
        throw std::runtime_error("a program that the test started does not end");
    }
}

} // namespace sitekeeper
