#include "support/StorePair.h"

#include "platform/PlatformError.h"
#include "support/IniFileTestAccess.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace sitekeeper {
namespace {

constexpr const wchar_t* Path = L"pair.ini";
constexpr std::size_t LongestList = 4;
constexpr std::size_t MostPieces = 4;
constexpr std::size_t MostLines = 6;

/// Few and short, so that texts meet again and again; with everything that a rule names.
constexpr std::wstring_view Pieces[] = {
    L"a",      L"b",  L"A",  L"a",   L"b",       L" ",      L"[",      L"]",          L"=", L"\t",
    L"e",      L"\n", L"\r", L" = ", {L"\0", 1}, L"\u00E9", L"\u0416", L"\U0001F600", L"1",
    L"\xD800", // has no bytes: a store that holds it cannot be saved
};
constexpr std::size_t PiecesOfUsualTexts = 5;

constexpr std::string_view LineEnds[] = {"\n", "\r\n", "\r", ""};

enum Kind : std::size_t
{
    SetSection,
    SetValue,
    SetValueAgain, // twice in the list: most of what a store is asked to do
    SetBoolValue,
    SetValues,
    DeleteSection,
    Clear,
    Sort,
    SwapEntries,
    SwitchCase,
    EditKinds,
    SaveChanges = EditKinds,
    SaveForced,
    Parse,
    Load,
    Open,
    SwitchReadOnly,
    Kinds,
};

constexpr const char* KindNames[] = {
    "SetSection",  "SetValue", "SetValue",    "SetBoolValue", "SetValues", "DeleteSection", "Clear", "Sort",
    "SwapEntries", "the case", "Save(false)", "Save(true)",   "Parse",     "Load",          "Open",  "read-only"};
static_assert(std::size(KindNames) == Kinds);

} // namespace

StorePair::StorePair(Choose choose) : m_choose(std::move(choose))
{
    constexpr std::size_t Separators = 8;
    constexpr const wchar_t* Odd[] = {L"=", L" => "};
    const std::size_t separator = m_choose(Separators);
    m_store.emplace(m_files, m_codePage, L"");
    if (separator < std::size(Odd)) {
        m_naive = NaiveIniFile(Odd[separator]);
        IniFileTestAccess::SetSeparator(*m_store, Odd[separator]);
    }
    m_store->Open(Path); // not there yet
}

std::string StorePair::Step()
{
    const std::size_t kind = m_choose(Kinds);
    const bool isSame = (kind < EditKinds ? Edit(kind) : UseFile(kind)) && IsSectionSame() && IsValueSame(Text()) &&
                        m_files.ReadContent(Path) == m_expectedFile;
    return isSame ? "" : KindNames[kind];
}

bool StorePair::Edit(std::size_t kind)
{
    const std::wstring first = Text();
    switch (kind) {
    case SetSection:
        m_store->SetSection(first);
        m_naive.SetSection(first);
        return true;
    case SetBoolValue: {
        const auto value = static_cast<std::uint8_t>(m_choose(3) * 127);
        m_store->SetBoolValue(first, value);
        m_naive.SetBoolValue(first, value);
        return true;
    }
    case SetValues: {
        const Texts keys = SomeTexts();
        const Texts values = SomeTexts();
        m_store->SetValues(keys, values);
        m_naive.SetValues(keys, values);
        return true;
    }
    case DeleteSection:
        m_store->DeleteSection(first);
        m_naive.DeleteSection(first);
        return true;
    case Clear:
        m_store->Clear();
        m_naive.Clear();
        return true;
    case Sort:
        m_store->Sort();
        m_naive.Sort();
        return true;
    case SwapEntries: return Swap();
    case SwitchCase: {
        const bool isCaseSensitive = m_choose(2) == 0;
        IniFileTestAccess::SetCaseSensitive(*m_store, isCaseSensitive);
        m_naive.SetCaseSensitive(isCaseSensitive);
        return true;
    }
    default: {
        const std::wstring value = Text();
        m_store->SetValue(first, value);
        m_naive.SetValue(first, value);
        return IsValueSame(first);
    }
    }
}

bool StorePair::UseFile(std::size_t kind)
{
    switch (kind) {
    case Parse: {
        const std::string bytes = Bytes();
        TextReader reader(bytes, m_codePage);
        m_naive.Parse(bytes);
        return m_store->Parse(reader) == CIniFile::Success;
    }
    case Load: {
        const std::string bytes = Bytes();
        TextReader reader(bytes, m_codePage);
        m_naive.Load(bytes);
        return m_store->Load(reader) == CIniFile::Success;
    }
    case Open:
        if (m_expectedFile) {
            m_naive.Load(*m_expectedFile);
        }
        return m_store->Open(Path) == (m_expectedFile ? CIniFile::Success : CIniFile::CannotOpen);
    case SwitchReadOnly:
        m_isReadOnly = m_choose(3) == 0;
        m_files.SetReadOnly(m_isReadOnly);
        return true;
    default: return Save(kind == SaveForced);
    }
}

bool StorePair::Save(bool isForced)
{
    std::optional<std::string> written;
    const std::size_t movesBefore = m_files.Moves();
    const bool isSame = m_store->Save(isForced) == m_naive.Save(isForced, !m_isReadOnly, written);
    const bool hasWritten = m_files.Moves() != movesBefore;
    if (written) {
        m_expectedFile = written;
    }
    return isSame && hasWritten == written.has_value() && m_files.Count() == (m_expectedFile ? 1U : 0U);
}

bool StorePair::Swap()
{
    const std::size_t a = m_choose(m_naive.Keys().size() + 1);
    const std::size_t b = m_choose(m_naive.Keys().size() + 1);
    bool isDone = true;
    try {
        m_store->SwapEntries(a, b);
    } catch (const PlatformError& error) {
        isDone = error.Code() != ResultCode::InvalidArgument;
    }
    return m_naive.SwapEntries(a, b) == isDone;
}

bool StorePair::IsSectionSame() const
{
    Texts keys{L"from before"};
    Texts values{L"from before"};
    Texts expectedKeys;
    Texts expectedValues;
    m_store->GetSectionEntries(keys, values);
    m_naive.GetSectionEntries(expectedKeys, expectedValues);
    return keys == expectedKeys && values == expectedValues;
}

bool StorePair::IsValueSame(const std::wstring& key) const
{
    std::wstring value = L"from before";
    m_store->GetValue(key, value, L"none");
    return value == m_naive.GetValue(key, L"none");
}

std::string StorePair::Finish()
{
    Texts sections = m_naive.Sections();
    sections.emplace_back();
    for (const std::wstring& section : sections) {
        m_store->SetSection(section);
        m_naive.SetSection(section);
        if (!IsSectionSame()) {
            return "a section at the end";
        }
    }
    m_store.reset();
    std::optional<std::string> written;
    m_naive.Save(false, !m_isReadOnly, written);
    return m_files.ReadContent(Path) == (written ? written : m_expectedFile) ? "" : "the file at the end";
}

std::wstring StorePair::Text()
{
    // Mostly one letter; now and then anything.
    const bool isUsual = m_choose(3) != 0;
    const std::size_t length = isUsual ? 1 : m_choose(MostPieces + 1);
    std::wstring text;
    for (std::size_t piece = 0; piece < length; ++piece) {
        text += Pieces[m_choose(isUsual ? PiecesOfUsualTexts : std::size(Pieces))];
    }
    return text;
}

StorePair::Texts StorePair::SomeTexts()
{
    Texts texts(m_choose(LongestList + 1));
    std::generate(texts.begin(), texts.end(), [this] { return Text(); });
    return texts;
}

std::string StorePair::Bytes()
{
    std::string bytes;
    for (std::size_t line = m_choose(MostLines); line > 0; --line) {
        const std::size_t kind = m_choose(4);
        const std::wstring text = kind == 0 ? L"[" + Text() + L"]" : Text() + L" = " + (kind == 1 ? L"" : Text());
        if (!m_codePage.Encode(text, bytes)) {
            bytes += '\xFF'; // no character at all
        }
        bytes += LineEnds[m_choose(std::size(LineEnds))];
    }
    return bytes;
}

} // namespace sitekeeper
