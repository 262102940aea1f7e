// A stretch of code in which C's number functions read and write as in the "C" locale.
#pragma once

#include <clocale>
#include <locale.h> // NOLINT(modernize-deprecated-headers): newlocale and uselocale are only here

namespace platform {

/// For calls into libraries that read numbers with the C library. Changes the calling thread only, and
/// allocates nothing: a locale that is made from the process's own for each call would leak its names.
class NumericLocale {
public:
    NumericLocale() noexcept : before_(::uselocale(plainLocale())) {}
    ~NumericLocale() { ::uselocale(before_); }
    NumericLocale(const NumericLocale&) = delete;
    NumericLocale& operator=(const NumericLocale&) = delete;

private:
    static locale_t plainLocale() noexcept {
        static locale_t const plain = ::newlocale(LC_ALL_MASK, "C", nullptr);
        return plain;
    }

    locale_t before_;
};

} // namespace platform
