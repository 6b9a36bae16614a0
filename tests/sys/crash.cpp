// A program that crashes on purpose, in the way its argument names: whoever runs it must see a
// failure.

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <stdexcept>

int main(int count, char** arguments) {
    const char* const way = count > 1 ? arguments[1] : "";
    std::puts("about to crash");
    std::fflush(stdout);
    if (std::strcmp(way, "access") == 0) {
        volatile int* volatile nowhere = nullptr;
        *nowhere = 1;
    } else if (std::strcmp(way, "abort") == 0) {
        std::abort();
    } else if (std::strcmp(way, "exception") == 0) {
        throw std::runtime_error("nobody catches this");
    }
    return EXIT_SUCCESS;
}
