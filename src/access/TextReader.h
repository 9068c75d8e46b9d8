// Text files of the narrow code page, line by line.
#pragma once

#include "platform/CodePage.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace sitekeeper {

/// The content of one text file, opened and read; gives its lines in order.
class TextReader
{
public:
    /// Keeps the reference; it must outlive the reader.
    TextReader(std::string content, const CodePage& codePage) : m_content(std::move(content)), m_codePage(codePage) {}

    /// The next line, without its line end: "\n", or "\r\n" as one. An unended last line counts, an empty one behind
    /// the last line end does not. False at the end. `line` is good until the next call. A line
    /// for which there is no memory comes again.
    bool ReadLine(std::wstring_view& line);

    /// About how many entries the rest of the file holds, for making room: a guess from its first lines.
    [[nodiscard]] std::size_t LikelyEntries() const noexcept;

private:
    std::string m_content;
    const CodePage& m_codePage;
    std::size_t m_position = 0;
    std::wstring m_line;
};

} // namespace sitekeeper
