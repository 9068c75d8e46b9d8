// What happens to an error that nobody catches.
#include <cstdlib>

// The library's own handler writes the error's type for people who have a console, and brings much code to spell it;
// the program has none. In its place the linker takes this one.
namespace __gnu_cxx {

void __verbose_terminate_handler(); // NOLINT(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)

void __verbose_terminate_handler() // NOLINT(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
{
    std::abort();
}

} // namespace __gnu_cxx
