#include "access/SafeSave.h"

#include <optional>
#include <utility>

namespace sitekeeper {
namespace {

/// Once armed, undoes a step at its end, also where an error ended what was to follow. Stands before the open file that
/// the step works on, so that the file is closed by then.
template <typename Undo>
class UndoGuard
{
public:
    explicit UndoGuard(Undo undo) : m_undo(std::move(undo)) {}
    UndoGuard(const UndoGuard&) = delete;
    UndoGuard& operator=(const UndoGuard&) = delete;
    ~UndoGuard()
    {
        try {
            UndoNow();
            // What cannot be undone stays; the error that led here is the one to be told.
        } catch (...) { // NOLINT(bugprone-empty-catch)
        }
    }

    void Arm() noexcept { m_isArmed = true; }
    void Disarm() noexcept { m_isArmed = false; }
    void UndoNow()
    {
        if (std::exchange(m_isArmed, false)) {
            m_undo();
        }
    }

private:
    Undo m_undo;
    bool m_isArmed = false;
};

bool WriteAll(OutputFile& output, std::string_view bytes)
{
    return output.Write(bytes) && output.EndHere() && output.Flush();
}

/// Puts what was written over back. Its room on the disk is still the file's own.
void Restore(FileSystem& files, const std::wstring& path, std::string_view bytes)
{
    if (const auto output = files.OpenForWriting(path)) {
        WriteAll(*output, bytes);
    }
}

bool WriteInPlace(FileSystem& files, const std::wstring& path, std::string_view bytes)
{
    const std::optional<std::string> old = files.ReadContent(path);
    if (!old) {
        return false; // what cannot be read could not be put back
    }
    UndoGuard restore([&] { Restore(files, path, *old); });
    const auto output = files.OpenForWriting(path);
    if (output == nullptr) {
        return false;
    }
    restore.Arm();
    if (!WriteAll(*output, bytes)) {
        return false;
    }
    restore.Disarm();
    return true;
}

bool WriteAnew(FileSystem& files, const std::wstring& path, std::string_view bytes)
{
    UndoGuard remove([&] { files.RemoveFile(path); });
    const auto output = files.MakeFileLike(path, path);
    if (output == nullptr) {
        return false;
    }
    remove.Arm();
    if (!WriteAll(*output, bytes)) {
        return false;
    }
    remove.Disarm();
    return true;
}

} // namespace

bool SaveContent(FileSystem& files, const std::wstring& path, std::string_view bytes)
{
    const bool isThere = files.Exists(path);
    if (isThere && files.OpenForWriting(path) == nullptr) {
        return false;
    }
    const std::wstring neighbour = NeighbourOf(path);
    UndoGuard remove([&] { files.RemoveFile(neighbour); });
    auto output = files.MakeFileLike(neighbour, path);
    if (output == nullptr) {
        return isThere ? WriteInPlace(files, path, bytes) : WriteAnew(files, path, bytes);
    }
    remove.Arm();
    const bool isWritten = output->Write(bytes) && output->Flush();
    output.reset();
    if (isWritten && files.MoveOver(neighbour, path)) {
        remove.Disarm();
        return true;
    }
    remove.UndoNow();
    // Who reads the file all the time lets nobody move another one over it, though it may be written.
    return isWritten && isThere && WriteInPlace(files, path, bytes);
}

std::wstring NeighbourOf(const std::wstring& path)
{
    std::wstring neighbour = path;
    if (!neighbour.empty()) {
        neighbour.back() = neighbour.back() == L'~' ? L'-' : L'~';
    }
    return neighbour;
}

} // namespace sitekeeper
