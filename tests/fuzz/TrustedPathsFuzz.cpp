// Any bytes as the trusted paths of several products, a zero between two of them: taken apart into tokens, and extended
// beside the naive search. Two bytes that no path has stand for the folder that is looked for, so that mutations reach
// it.
#include "autocad/TrustedPaths.h"
#include "fuzz/FuzzInput.h"
#include "platform/PlatformError.h"
#include "settings/RegistryText.h"
#include "support/AutoCADTree.h"
#include "support/NaiveTrustedPaths.h"
#include "text/Tokens.h"

#include <string>
#include <vector>

namespace {

using namespace sitekeeper;

constexpr std::size_t LongestText = TextValueLimit / 2 - 1;
constexpr const wchar_t* Application = L"S";
constexpr const wchar_t* Folder = L"s\\designer\\common\\r24";

std::vector<std::wstring> ProductsOf(const std::uint8_t* data, std::size_t size)
{
    std::vector<std::wstring> products(1);
    for (std::size_t index = 0; index < size; ++index) {
        switch (data[index]) {
        case 0: products.emplace_back(); break;
        case 1: products.back() += Folder; break;
        case 2: products.back() += L"S\\DESIGNER\\Common\\R24"; break;
        default: products.back() += static_cast<wchar_t>(data[index]);
        }
    }
    return products;
}

/// The tokens, each found where it stands, are all there is but for the separators.
void CheckTokens(const std::wstring& text)
{
    std::wstring rest = text;
    std::ptrdiff_t position = 0;
    std::size_t characters = 0;
    for (;;) {
        const std::ptrdiff_t before = position;
        const auto token = NextToken(text, L';', position);
        Require(token.has_value());
        if (token->empty()) {
            break;
        }
        Require(position > before && token->find(L';') == std::wstring_view::npos);
        const std::size_t end = static_cast<std::size_t>(position) - 1;
        Require(end <= text.size() && (end == text.size() || text[end] == L';'));
        const std::size_t begin = end - token->size();
        Require(text.substr(begin, token->size()) == *token && (begin == 0 || text[begin - 1] == L';'));
        characters += token->size();
    }
    Require(position == -1 && !NextToken(text, L';', position) && position == -1);
    std::erase(rest, L';');
    Require(rest.size() == characters);
}

void CheckProducts(const std::vector<std::wstring>& products)
{
    MemoryRegistry registry;
    MemoryRegistry expected;
    std::vector<std::wstring> keys;
    for (const std::wstring& paths : products) {
        keys.push_back(L"K" + std::to_wstring(keys.size()));
        for (MemoryRegistry* const each : {&registry, &expected}) {
            each->SetText(Hive::LocalMachine, keys.back(), L"", paths);
        }
    }
    NaiveTrustedPaths search;
    std::size_t done = 0;
    for (; done < keys.size() && !search.HasEnded(); ++done) {
        std::wstring paths = products[done].size() > LongestText ? std::wstring() : products[done];
        if (!search.Holds(paths, Folder)) {
            paths += paths.empty() || paths.back() == L';' ? L"" : L";";
            expected.SetText(Hive::LocalMachine, keys[done], L"", paths + FiveFolders(Application, L"R24"));
        }
    }
    std::size_t stoppedAt = keys.size();
    try {
        ExtendTrustedPaths(registry, std::wstring(Application) + L"\\Designer", keys,
                           std::vector<std::wstring>(keys.size(), L"R24"));
    } catch (const PlatformError& error) {
        Require(error.Code() == ResultCode::InvalidArgument);
        Require(done < keys.size() && error.Message().find(L"\\" + keys[done] + L"\n") != std::wstring::npos);
        stoppedAt = done;
    }
    Require(stoppedAt == done);
    for (const std::wstring& key : keys) {
        Require(registry.Find(Hive::LocalMachine, key, L"") == expected.Find(Hive::LocalMachine, key, L""));
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::vector<std::wstring> products = ProductsOf(data, size);
    for (const std::wstring& paths : products) {
        CheckTokens(paths);
    }
    CheckProducts(products);
    return 0;
}
