// The process in a locale with a decimal comma.
#pragma once

#include <string>

namespace test {

/// Sets the process's locale to German for the scope's length. A test links `test_german_locale` for it.
class GermanLocale {
public:
    GermanLocale();
    ~GermanLocale();
    GermanLocale(const GermanLocale&) = delete;
    GermanLocale& operator=(const GermanLocale&) = delete;

private:
    std::string before_;
};

} // namespace test
