#include "support/NoUserEntry.h"

#include <pwd.h>

namespace {

bool absent = false;

} // namespace

// The linker sends the program's calls of getpwuid_r to the first of these, under the names it demands.
extern "C" {
// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
int __real_getpwuid_r(uid_t user, passwd* entry, char* buffer, size_t size, passwd** found);
int __wrap_getpwuid_r(uid_t user, passwd* entry, char* buffer, size_t size, passwd** found);
int __wrap_getpwuid_r(uid_t user, passwd* entry, char* buffer, size_t size, passwd** found) {
    if (!absent) {
        return __real_getpwuid_r(user, entry, buffer, size, found);
    }
    *found = nullptr;
    return 0;
}
// NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
}

namespace test {

NoUserEntry::NoUserEntry() {
    absent = true;
}

NoUserEntry::~NoUserEntry() {
    absent = false;
}

} // namespace test
