// A stretch of code in which C's number functions read and write as in the "C" locale.
#pragma once

#include <clocale>
#include <locale.h> // NOLINT(modernize-deprecated-headers): newlocale and uselocale are only here

namespace platform {

/// For calls into libraries that read numbers with the C library. Changes the calling thread only.
class NumericLocale {
public:
    NumericLocale() noexcept
        : own_(::newlocale(LC_NUMERIC_MASK, "C", ::duplocale(::uselocale(nullptr)))),
          before_(own_ != nullptr ? ::uselocale(own_) : nullptr) {}
    ~NumericLocale() {
        if (own_ != nullptr) {
            ::uselocale(before_);
            ::freelocale(own_);
        }
    }
    NumericLocale(const NumericLocale&) = delete;
    NumericLocale& operator=(const NumericLocale&) = delete;

private:
    locale_t own_;
    locale_t before_;
};

} // namespace platform
