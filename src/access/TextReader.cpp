#include "access/TextReader.h"

#include "access/PlainText.h"

#include <algorithm>

namespace sitekeeper {
namespace {

constexpr std::size_t StepSize = 16;

} // namespace

bool TextReader::ReadLine(std::wstring_view& line)
{
    if (m_position >= m_content.size()) {
        return false;
    }
    const std::size_t found = m_content.find('\n', m_position);
    const std::size_t end = std::min(found, m_content.size());
    std::string_view bytes(m_content.data() + m_position, end - m_position);
    // Whole steps of the conversion are the quickest, so it takes some of the next line along. Should only that one not
    // be plain, this one is decoded for nothing, to the same characters.
    const std::string_view steps =
        std::string_view(m_content).substr(m_position, (bytes.size() + StepSize - 1) / StepSize * StepSize);
    if (found != std::string::npos && bytes.ends_with('\r')) {
        bytes.remove_suffix(1);
    }
    if (m_line.size() < steps.size()) {
        m_line.resize(steps.size());
    }
    if (WidenPlainText(steps, m_line.data())) {
        line = std::wstring_view(m_line.data(), bytes.size());
    } else {
        m_line.clear();
        m_codePage.Decode(bytes, m_line);
        line = m_line;
    }
    m_position = end + 1;
    return true;
}

std::size_t TextReader::LikelyEntries() const noexcept
{
    constexpr std::size_t SampleSize = 512;
    constexpr std::size_t ShortestEntry = 6; // a blank, "=", a blank, a value and a line end; most have more
    const std::string_view rest = std::string_view(m_content).substr(std::min(m_position, m_content.size()));
    const std::string_view sample = rest.substr(0, SampleSize);
    const auto sampleLines = static_cast<std::size_t>(std::count(sample.begin(), sample.end(), '\n')) + 1;
    const std::size_t lines = sample.empty() ? 0 : rest.size() * sampleLines / sample.size();
    return std::min(lines + lines / 16, rest.size() / ShortestEntry);
}

} // namespace sitekeeper
