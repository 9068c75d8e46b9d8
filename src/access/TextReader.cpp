#include "access/TextReader.h"

#include "access/PlainText.h"

#include <algorithm>

namespace sitekeeper {

bool TextReader::ReadLine(std::wstring_view& line)
{
    if (m_position >= m_content.size()) {
        return false;
    }
    const std::size_t found = m_content.find('\n', m_position);
    const std::size_t end = std::min(found, m_content.size());
    std::string_view bytes(m_content.data() + m_position, end - m_position);
    m_position = end + 1;
    if (found != std::string::npos && bytes.ends_with('\r')) {
        bytes.remove_suffix(1);
    }
    if (m_line.size() < bytes.size()) {
        m_line.resize(bytes.size());
    }
    if (WidenPlainText(bytes, m_line.data())) {
        line = std::wstring_view(m_line.data(), bytes.size());
        return true;
    }
    m_line.clear();
    m_codePage.Decode(bytes, m_line);
    line = m_line;
    return true;
}

} // namespace sitekeeper
