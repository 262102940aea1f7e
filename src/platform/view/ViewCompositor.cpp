#include "platform/view/ViewCompositor.h"

#include "platform/draw/BitmapContext.h"
#include "platform/view/ViewDrawing.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace platform {

namespace {

PixelRect pixelsAround(const CGRect& area) {
    static constexpr double kFar = 1e6; // pixels; keeps the conversions in range
    const auto bounded = [](double value) { return static_cast<int>(std::clamp(value, -kFar, kFar)); };
    if (!(std::isfinite(area.origin.x) && std::isfinite(area.origin.y) && std::isfinite(area.size.width) &&
          std::isfinite(area.size.height))) {
        return {};
    }
    const int left = bounded(std::floor(area.origin.x));
    const int top = bounded(std::floor(area.origin.y));
    const int right = bounded(std::ceil(area.origin.x + area.size.width));
    const int bottom = bounded(std::ceil(area.origin.y + area.size.height));
    return {.x = left, .y = top, .width = right - left, .height = bottom - top};
}

/// Both with colours multiplied by alpha; `alpha` from 0 to 256 fades the source.
std::uint32_t blended(std::uint32_t source, std::uint32_t target, std::uint32_t alpha) {
    const auto faded = [alpha](std::uint32_t pair) { return ((pair * alpha) >> 8U) & 0x00FF00FFU; };
    const std::uint32_t redBlue = alpha == 256 ? source & 0x00FF00FFU : faded(source & 0x00FF00FFU);
    const std::uint32_t alphaGreen =
        alpha == 256 ? (source >> 8U) & 0x00FF00FFU : faded((source >> 8U) & 0x00FF00FFU);
    const std::uint32_t rest = 255U - (alphaGreen >> 16U);
    const auto kept = [rest](std::uint32_t pair) { // divided by 255, rounded
        const std::uint32_t product = pair * rest + 0x00800080U;
        return ((product + ((product >> 8U) & 0x00FF00FFU)) >> 8U) & 0x00FF00FFU;
    };
    return (redBlue + kept(target & 0x00FF00FFU)) | ((alphaGreen + kept((target >> 8U) & 0x00FF00FFU)) << 8U);
}

/// The pixels of one row within a rectangle.
template <class Pixels>
auto rowOf(Pixels& pixels, std::size_t width, const PixelRect& area, int y) {
    return pixels.begin() + static_cast<std::ptrdiff_t>(static_cast<std::size_t>(y) * width +
                                                        static_cast<std::size_t>(area.x));
}

} // namespace

PixelRect PixelRect::intersected(const PixelRect& other) const noexcept {
    const int left = std::max(x, other.x);
    const int top = std::max(y, other.y);
    const int right = std::min(x + width, other.x + other.width);
    const int bottom = std::min(y + height, other.y + other.height);
    if (right <= left || bottom <= top) {
        return {};
    }
    return {.x = left, .y = top, .width = right - left, .height = bottom - top};
}

PixelRect PixelRect::united(const PixelRect& other) const noexcept {
    if (isEmpty()) {
        return other;
    }
    if (other.isEmpty()) {
        return *this;
    }
    const int left = std::min(x, other.x);
    const int top = std::min(y, other.y);
    const int right = std::max(x + width, other.x + other.width);
    const int bottom = std::max(y + height, other.y + other.height);
    return {.x = left, .y = top, .width = right - left, .height = bottom - top};
}

PixelRect ViewCompositor::pass(UIView& root, double scale) {
    const int width = std::max(0, static_cast<int>(std::lround(root.bounds().size.width * scale)));
    const int height = std::max(0, static_cast<int>(std::lround(root.bounds().size.height * scale)));
    const bool resized = width != width_ || height != height_;
    if (resized) {
        width_ = width;
        height_ = height;
        pixels_.assign(static_cast<std::size_t>(width) * static_cast<std::size_t>(height), 0);
    }
    const PixelRect all{.x = 0, .y = 0, .width = width, .height = height};
    const std::vector<Item> before = std::move(items_);
    items_.clear();
    if (!root.isHidden()) {
        const CGAffineTransform map = CGAffineTransformConcat(
            CGAffineTransformMakeTranslation(-root.bounds().origin.x, -root.bounds().origin.y),
            CGAffineTransformMakeScale(scale, scale));
        collect(root, map, all, 1.0);
    }
    const PixelRect damage = resized ? all : difference(before).intersected(all);
    compose(damage);
    return damage;
}

void ViewCompositor::collect(UIView& view, const CGAffineTransform& map, const PixelRect& clip,
                             double alpha) {
    const PixelRect whole = pixelsAround(CGRectApplyAffineTransform(view.bounds(), map));
    const PixelRect inner = view.clipsToBounds_ ? clip.intersected(whole) : clip;
    // A view that is larger than what can be seen of it is drawn only as far as it is seen.
    const PixelRect area = whole.intersected(clip);
    if (!area.isEmpty()) {
        render(view, map, area);
        if (view.layer_) {
            items_.push_back({.layer = view.layer_.get(),
                              .version = view.layer_->version,
                              .area = area,
                              .clip = inner.intersected(area),
                              .alpha = alpha});
        }
    }
    for (const Ref<UIView>& child : view.subviews_) {
        if (!child->hidden_ && child->alpha_ > 0.0) {
            collect(*child, CGAffineTransformConcat(child->transformToSuperview(), map), inner,
                    alpha * child->alpha_);
        }
    }
}

void ViewCompositor::render(UIView& view, const CGAffineTransform& map, const PixelRect& area) {
    const CGAffineTransform toImage =
        CGAffineTransformConcat(map, CGAffineTransformMakeTranslation(-area.x, -area.y));
    const bool sameSize =
        view.layer_ && view.layer_->width == area.width && view.layer_->height == area.height;
    const bool placedAlike = view.drawsNothing_ || (sameSize && view.layer_->map == toImage);
    if (!view.needsDisplay_ && placedAlike) {
        return;
    }
    view.needsDisplay_ = false;
    view.drawsNothing_ = false;
    if (!view.layer_) {
        view.layer_ = std::make_unique<ViewLayer>();
    }
    ViewLayer& layer = *view.layer_;
    if (sameSize) {
        takeInkOff(layer);
    } else {
        layer.width = area.width;
        layer.height = area.height;
        layer.pixels.assign(static_cast<std::size_t>(area.width) * static_cast<std::size_t>(area.height), 0);
    }
    auto context = BitmapContext::over(layer.pixels, layer.width, layer.height);
    if (!context) {
        view.layer_.reset(); // larger than any screen; nothing is shown
        return;
    }
    BitmapContext& canvas = *context.value();
    applyMap(canvas, toImage);
    ++view.drawCount_;
    drawWithBackground(view, canvas);
    if (view.drawsNothing_ && !view.backgroundColor_) {
        view.layer_.reset();
        return;
    }
    view.drawsNothing_ = false;
    const PixelRect all{.x = 0, .y = 0, .width = layer.width, .height = layer.height};
    const PixelRect inkBefore = std::exchange(layer.ink, pixelsAround(canvas.inked()).intersected(all));
    layer.changed = sameSize ? changedPixels(layer, inkBefore) : all;
    layer.map = toImage;
    layer.versionBefore = std::exchange(layer.version, ++versions_);
}

void ViewCompositor::takeInkOff(ViewLayer& layer) {
    const PixelRect& ink = layer.ink;
    inkBefore_.clear();
    for (int y = ink.y; y < ink.y + ink.height; ++y) {
        const auto row = rowOf(layer.pixels, static_cast<std::size_t>(layer.width), ink, y);
        inkBefore_.insert(inkBefore_.end(), row, row + ink.width);
        std::fill_n(row, ink.width, 0U);
    }
}

// The smallest rectangle around the pixels that are not what they were.
PixelRect ViewCompositor::changedPixels(const ViewLayer& layer, const PixelRect& inkBefore) {
    const PixelRect drawn = layer.ink.united(inkBefore);
    PixelRect changed;
    for (int y = drawn.y; y < drawn.y + drawn.height; ++y) {
        rowBefore_.assign(static_cast<std::size_t>(drawn.width), 0U);
        if (y >= inkBefore.y && y < inkBefore.y + inkBefore.height) {
            const PixelRect whole{.x = 0, .y = 0, .width = inkBefore.width, .height = inkBefore.height};
            std::copy_n(rowOf(inkBefore_, static_cast<std::size_t>(inkBefore.width), whole, y - inkBefore.y),
                        inkBefore.width, rowBefore_.begin() + (inkBefore.x - drawn.x));
        }
        const auto old = rowBefore_.begin();
        const auto now = rowOf(layer.pixels, static_cast<std::size_t>(layer.width), drawn, y);
        std::ptrdiff_t end = drawn.width;
        if (std::equal(old, old + end, now)) {
            continue;
        }
        const auto first = std::mismatch(old, old + end, now).first - old;
        while (end > first + 1 && old[end - 1] == now[end - 1]) {
            --end;
        }
        changed = changed.united({.x = drawn.x + static_cast<int>(first),
                                  .y = y,
                                  .width = static_cast<int>(end - first),
                                  .height = 1});
    }
    return changed;
}

bool ViewCompositor::isNextVersion(const Item& before, const Item& now) {
    Item expected = before;
    expected.version = now.version;
    return expected == now && now.layer->versionBefore == before.version;
}

PixelRect ViewCompositor::difference(const std::vector<Item>& before) const {
    // Equal heads and tails have not changed; everything between may have.
    std::size_t head = 0;
    while (head < before.size() && head < items_.size() && before[head] == items_[head]) {
        ++head;
    }
    std::size_t tail = 0;
    while (tail < before.size() - head && tail < items_.size() - head &&
           before[before.size() - 1 - tail] == items_[items_.size() - 1 - tail]) {
        ++tail;
    }
    PixelRect damage;
    const bool pairwise = before.size() == items_.size();
    for (std::size_t i = head; i + tail < std::max(before.size(), items_.size()); ++i) {
        const bool paired = pairwise && i < items_.size();
        if (paired && before[i] == items_[i]) {
            continue;
        }
        if (paired && isNextVersion(before[i], items_[i])) {
            PixelRect changed = items_[i].layer->changed;
            changed.x += items_[i].area.x;
            changed.y += items_[i].area.y;
            damage = damage.united(changed.intersected(items_[i].clip));
            continue;
        }
        if (i + tail < before.size()) {
            damage = damage.united(before[i].clip);
        }
        if (i + tail < items_.size()) {
            damage = damage.united(items_[i].clip);
        }
    }
    return damage;
}

void ViewCompositor::compose(const PixelRect& damage) {
    if (damage.isEmpty()) {
        return;
    }
    const auto stride = static_cast<std::size_t>(width_);
    for (int y = damage.y; y < damage.y + damage.height; ++y) {
        std::fill_n(pixels_.begin() + static_cast<std::ptrdiff_t>(static_cast<std::size_t>(y) * stride) +
                        damage.x,
                    damage.width, 0U);
    }
    for (const Item& item : items_) {
        const ViewLayer& layer = *item.layer;
        PixelRect ink = layer.ink;
        ink.x += item.area.x;
        ink.y += item.area.y;
        const PixelRect seen = item.clip.intersected(damage).intersected(ink);
        const auto alpha = static_cast<std::uint32_t>(std::lround(item.alpha * 256.0));
        for (int y = seen.y; y < seen.y + seen.height; ++y) {
            const std::uint32_t* source =
                layer.pixels.data() +
                static_cast<std::size_t>(y - item.area.y) * static_cast<std::size_t>(layer.width) +
                static_cast<std::size_t>(seen.x - item.area.x);
            std::uint32_t* target = pixels_.data() + static_cast<std::size_t>(y) * stride + seen.x;
            for (int x = 0; x < seen.width; ++x) {
                if (alpha == 256 && source[x] >= 0xFF000000U) { // nothing shines through
                    target[x] = source[x];
                } else if (source[x] != 0) {
                    target[x] = blended(source[x], target[x], alpha);
                }
            }
        }
    }
}

} // namespace platform
