// A value or an error; what an operation that can fail returns instead of throwing.
#pragma once

#include "platform/core/NSError.h"

#include <optional>
#include <utility>
#include <variant>

namespace platform {

/// Either a T or an NSError. Test it before use: `value()` of a failed result is undefined.
template <class T>
class [[nodiscard]] Result {
public:
    Result(T value) : content_(std::in_place_index<0>, std::move(value)) {} // NOLINT: a result is its value
    Result(NSError error) : content_(std::in_place_index<1>, std::move(error)) {} // NOLINT: or its error

    bool ok() const noexcept { return content_.index() == 0; }
    explicit operator bool() const noexcept { return ok(); }
    T& value() & { return *std::get_if<0>(&content_); }
    const T& value() const& { return *std::get_if<0>(&content_); }
    T&& value() && { return std::move(*std::get_if<0>(&content_)); }
    const NSError& error() const { return *std::get_if<1>(&content_); }

private:
    std::variant<T, NSError> content_;
};

/// The outcome of an operation without a value.
template <>
class [[nodiscard]] Result<void> {
public:
    Result() = default;
    Result(NSError error) : error_(std::move(error)) {} // NOLINT: a failed result is its error

    bool ok() const noexcept { return !error_.has_value(); }
    explicit operator bool() const noexcept { return ok(); }
    const NSError& error() const { return *error_; }

private:
    std::optional<NSError> error_;
};

} // namespace platform
