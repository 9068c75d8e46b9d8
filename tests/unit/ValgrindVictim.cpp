// A program with what valgrind is there to find: it asks a number that nobody has set, and loses the memory it stood
// in.
#include <cstdio>
#include <memory>

int main()
{
    int* const number = std::make_unique_for_overwrite<int>().release();
    std::puts(*number == 1 ? "one" : "another"); // NOLINT: the mistakes are what it is for
    return 0;
}
