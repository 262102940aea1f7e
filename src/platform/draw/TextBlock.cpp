#include "platform/draw/TextBlock.h"

#include "platform/draw/TextShaper.h"

#include <bit>
#include <functional>
#include <memory>
#include <unordered_set>

namespace platform {

namespace {

constexpr std::size_t kKeptBlocks = 512;

// Sizes and widths compare by their bits, so that a NaN finds its own block again.
bool sameKey(const TextBlockKey& a, const TextBlockKey& b) {
    const auto bits = [](double value) { return std::bit_cast<std::uint64_t>(value); };
    return a.text == b.text && &a.font.face() == &b.font.face() &&
           bits(a.font.pointSize()) == bits(b.font.pointSize()) && bits(a.width) == bits(b.width) &&
           a.alignment == b.alignment && a.lineBreakMode == b.lineBreakMode;
}

struct KeyHash {
    using is_transparent = void;
    std::size_t operator()(const TextBlockKey& key) const {
        std::size_t hash = std::hash<std::string_view>()(key.text);
        const auto mix = [&hash](std::uint64_t value) {
            hash = (hash ^ (value + (value >> 32U))) * 0x9E3779B97F4A7C15U;
        };
        mix(std::bit_cast<std::uint64_t>(key.font.pointSize()));
        mix(std::bit_cast<std::uint64_t>(key.width));
        mix(std::bit_cast<std::uintptr_t>(&key.font.face()));
        mix(static_cast<std::uint64_t>(key.alignment) * 8U + static_cast<std::uint64_t>(key.lineBreakMode));
        return hash;
    }
    std::size_t operator()(const std::unique_ptr<TextBlock>& block) const { return (*this)(block->key()); }
};

struct KeyEqual {
    using is_transparent = void;
    static TextBlockKey keyOf(const TextBlockKey& key) { return key; }
    static TextBlockKey keyOf(const std::unique_ptr<TextBlock>& block) { return block->key(); }
    template <class A, class B>
    bool operator()(const A& a, const B& b) const {
        return sameKey(keyOf(a), keyOf(b));
    }
};

struct Cache {
    std::unordered_set<std::unique_ptr<TextBlock>, KeyHash, KeyEqual> blocks;
    std::uint64_t made = 0;
};

Cache& cache() {
    thread_local Cache instance;
    return instance;
}

} // namespace

const TextBlock& laidOut(const TextBlockKey& key) {
    Cache& kept = cache();
    const auto found = kept.blocks.find(key);
    if (found != kept.blocks.end()) {
        return **found;
    }
    // Starting afresh now and then keeps the cache bounded; a picture has far fewer texts than this.
    if (kept.blocks.size() >= kKeptBlocks) {
        kept.blocks.clear();
    }
    ++kept.made;
    return **kept.blocks.insert(std::make_unique<TextBlock>(shapeText(key))).first;
}

std::uint64_t layoutsMade() {
    return cache().made;
}

} // namespace platform
