// A store and its naive counterpart, taken through the same operations.
#pragma once

#include "access/IniFile.h"
#include "support/NaiveIniFile.h"
#include "support/PlainFiles.h"
#include "support/Utf8CodePage.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace sitekeeper {

/// Picks one of the numbers below `count`: at random, or as the bytes of a fuzzer say.
using Choose = std::function<std::size_t(std::size_t count)>;

class StorePair
{
public:
    /// Two empty stores. `choose` is asked for each operation and its arguments; now and then the stores also get
    /// another separator than the usual one.
    explicit StorePair(Choose choose);

    /// Does one operation on both. Gives its name when the two differ in what it returned, or in what can be seen
    /// afterwards; otherwise an empty text.
    [[nodiscard]] std::string Step();

    /// Looks at every section, and at the file after the store's end, which saves. An empty text, or what differs. No
    /// further operation is possible.
    [[nodiscard]] std::string Finish();

private:
    using Texts = std::vector<std::wstring>;

    [[nodiscard]] bool Edit(std::size_t kind);
    [[nodiscard]] bool UseFile(std::size_t kind);
    [[nodiscard]] bool Save(bool isForced);
    [[nodiscard]] bool Swap();
    [[nodiscard]] bool IsSectionSame() const;
    [[nodiscard]] bool IsValueSame(const std::wstring& key) const;
    [[nodiscard]] std::wstring Text();
    [[nodiscard]] Texts SomeTexts();
    [[nodiscard]] std::string Bytes();

    Choose m_choose;
    PlainFiles m_files;
    Utf8CodePage m_codePage;
    NaiveIniFile m_naive;
    std::optional<CIniFile> m_store;
    /// What the file holds when all went as the naive store says.
    std::optional<std::string> m_expectedFile;
    bool m_isReadOnly = false;
};

} // namespace sitekeeper
