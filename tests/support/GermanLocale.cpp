#include "support/GermanLocale.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cstdlib>

namespace test {

GermanLocale::GermanLocale() : before_(std::setlocale(LC_ALL, nullptr)) {
    ::setenv("LOCPATH", QOR_TEST_LOCALES, 1);
    EXPECT_NE(std::setlocale(LC_ALL, "de_DE.UTF-8"), nullptr);
    EXPECT_STREQ(std::localeconv()->decimal_point, ",");
}

GermanLocale::~GermanLocale() {
    std::setlocale(LC_ALL, before_.c_str());
}

} // namespace test
