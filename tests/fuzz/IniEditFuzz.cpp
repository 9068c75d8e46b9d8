// A store loaded, edited and saved as the input says, held against the naive one after every operation.
#include "fuzz/FuzzInput.h"
#include "support/StorePair.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace sitekeeper;
    std::span<const std::uint8_t> rest(data, size);
    StorePair pair([&rest](std::size_t count) -> std::size_t {
        if (rest.empty()) {
            return 0;
        }
        const std::size_t chosen = rest.front() % count;
        rest = rest.subspan(1);
        return chosen;
    });
    while (!rest.empty()) {
        Require(pair.Step().empty());
    }
    Require(pair.Finish().empty());
    return 0;
}
