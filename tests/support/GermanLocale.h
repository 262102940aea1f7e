// The process in a locale with a decimal comma.
#pragma once

#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>
#include <string>

namespace test {

/// Sets the process's locale to German for the scope's length.
class GermanLocale {
public:
    GermanLocale() : before_(std::setlocale(LC_ALL, nullptr)) {
        ::setenv("LOCPATH", QOR_TEST_LOCALES, 1);
        EXPECT_NE(std::setlocale(LC_ALL, "de_DE.UTF-8"), nullptr);
        EXPECT_STREQ(std::localeconv()->decimal_point, ",");
    }
    ~GermanLocale() { std::setlocale(LC_ALL, before_.c_str()); }
    GermanLocale(const GermanLocale&) = delete;
    GermanLocale& operator=(const GermanLocale&) = delete;

private:
    std::string before_;
};

} // namespace test
