#include "support/LongUse.h"

#include <array>
#include <cwchar>
#include <gtest/gtest.h>
#include <iostream>

namespace sitekeeper {
namespace {

/// What blocks in use may come to more, whatever the number of turns: the system's own tables, which grow by steps.
constexpr std::size_t BlocksSlack = std::size_t{24} * 1024;

constexpr DWORD TurnMs = 1500; // far more than one takes

} // namespace

int GivenNumber(const wchar_t* variable, int usually)
{
    std::array<wchar_t, 16> text{};
    const DWORD length = ::GetEnvironmentVariableW(variable, text.data(), static_cast<DWORD>(text.size()));
    const long given = length > 0 && length < text.size() ? std::wcstol(text.data(), nullptr, 10) : 0;
    return given > 0 ? static_cast<int>(given) : usually;
}

DWORD PatienceFor(int turns)
{
    return static_cast<DWORD>(turns) * TurnMs;
}

void LongUse::Begin()
{
    m_held = Holdings();
    m_memory = Memory();
}

void LongUse::End(int turns, std::size_t notes)
{
    const Holdings held;
    const Memory memory;
    std::cout << m_what << ", " << turns << " times: before " << m_held << ", " << m_memory << "; after " << held
              << ", " << memory << '\n';
    EXPECT_EQ(held, m_held);
    EXPECT_LE(memory.blocks, m_memory.blocks + BlocksSlack + static_cast<std::size_t>(turns) * notes);
}

} // namespace sitekeeper
