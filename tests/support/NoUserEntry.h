// A system whose user database doesn't know the user.
#pragma once

namespace test {

/// While it lives, the user database has no entry for anybody, so that without HOME there is no home
/// directory. A test links `test_no_user_entry` for it.
class NoUserEntry {
public:
    NoUserEntry();
    ~NoUserEntry();
    NoUserEntry(const NoUserEntry&) = delete;
    NoUserEntry& operator=(const NoUserEntry&) = delete;
};

} // namespace test
