// A list of texts; what `CString::Split` fills.
#pragma once

#include <cstddef>
#include <cstdlib>
#include <memory>
#include <vector>

namespace RVK {

class CStringList {
public:
    void clear() { pieces_.clear(); }
    /// Takes a zero-ended text from the C allocator over.
    void append(char* text) { pieces_.emplace_back(text); }
    int size() const { return static_cast<int>(pieces_.size()); }
    /// The piece at `i`, absent out of range. The list keeps it.
    const char* at(int i) const {
        return i < 0 || i >= size() ? nullptr : pieces_[static_cast<std::size_t>(i)].get();
    }

private:
    struct Free {
        void operator()(char* text) const { std::free(text); }
    };
    std::vector<std::unique_ptr<char, Free>> pieces_;
};

} // namespace RVK
