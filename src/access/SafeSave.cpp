#include "access/SafeSave.h"

#include <optional>

namespace sitekeeper {
namespace {

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
    {
        const auto output = files.OpenForWriting(path);
        if (output == nullptr) {
            return false;
        }
        if (WriteAll(*output, bytes)) {
            return true;
        }
    }
    Restore(files, path, *old);
    return false;
}

bool WriteAnew(FileSystem& files, const std::wstring& path, std::string_view bytes)
{
    {
        const auto output = files.MakeFileLike(path, path);
        if (output == nullptr) {
            return false;
        }
        if (WriteAll(*output, bytes)) {
            return true;
        }
    }
    files.RemoveFile(path);
    return false;
}

} // namespace

bool SaveContent(FileSystem& files, const std::wstring& path, std::string_view bytes)
{
    const bool isThere = files.Exists(path);
    if (isThere && files.OpenForWriting(path) == nullptr) {
        return false;
    }
    const std::wstring neighbour = NeighbourOf(path);
    auto output = files.MakeFileLike(neighbour, path);
    if (output == nullptr) {
        return isThere ? WriteInPlace(files, path, bytes) : WriteAnew(files, path, bytes);
    }
    const bool isWritten = output->Write(bytes) && output->Flush();
    output.reset();
    if (isWritten && files.MoveOver(neighbour, path)) {
        return true;
    }
    files.RemoveFile(neighbour);
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
