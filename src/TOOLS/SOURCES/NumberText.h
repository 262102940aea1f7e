// Numbers as the tools' strings write them.
#pragma once

#include <array>
#include <charconv>

namespace RVK {

/// A number as "%d" or "%f" give it in the "C" locale, whatever the process's locale is.
class NumberText {
public:
    explicit NumberText(int number) { end(std::to_chars(text_.data(), limit(), number).ptr); }
    explicit NumberText(double number) {
        end(std::to_chars(text_.data(), limit(), number, std::chars_format::fixed, 6).ptr);
    }
    const char* text() const { return text_.data(); }

private:
    char* limit() { return text_.data() + text_.size() - 1; }
    static void end(char* behind) { *behind = '\0'; }

    std::array<char, 328> text_{}; // a sign, 309 digits, the point, six digits and the zero, and some
};

} // namespace RVK
