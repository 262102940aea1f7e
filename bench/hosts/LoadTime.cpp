// Prints how long a plug-in's object takes to load in a process that has loaded nothing yet, its libraries
// included.
//   load_time OBJECT
#include <chrono>
#include <cstdio>
#include <dlfcn.h>

int main(int count, char** arguments) {
    if (count != 2) {
        std::fprintf(stderr, "usage: load_time OBJECT\n");
        return 2;
    }
    const auto start = std::chrono::steady_clock::now();
    const void* const object = dlopen(arguments[1], RTLD_NOW | RTLD_LOCAL);
    const std::chrono::duration<double, std::milli> taken = std::chrono::steady_clock::now() - start;
    if (object == nullptr) {
        std::fprintf(stderr, "load_time: %s\n",
                     dlerror()); // NOLINT(concurrency-mt-unsafe): one thread so far
        return 1;
    }
    std::printf("%.2f ms\n", taken.count());
    return 0;
}
