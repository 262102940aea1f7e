// Colours: red, green, blue and alpha from 0 to 1, straight alpha, device RGB.
#pragma once

namespace platform {

/// An immutable colour; copies are cheap and compare by their components.
class UIColor {
public:
    /// Black and opaque.
    constexpr UIColor() = default;
    /// Components outside 0 to 1 are clipped to it; NaN becomes 0.
    constexpr UIColor(double red, double green, double blue, double alpha)
        : red_(clipped(red)), green_(clipped(green)), blue_(clipped(blue)), alpha_(clipped(alpha)) {}

    static constexpr UIColor colorWithWhite(double white, double alpha) {
        return {white, white, white, alpha};
    }
    static constexpr UIColor blackColor() { return colorWithWhite(0.0, 1.0); }
    static constexpr UIColor whiteColor() { return colorWithWhite(1.0, 1.0); }
    static constexpr UIColor lightGrayColor() { return colorWithWhite(2.0 / 3.0, 1.0); }
    static constexpr UIColor darkGrayColor() { return colorWithWhite(1.0 / 3.0, 1.0); }
    static constexpr UIColor clearColor() { return colorWithWhite(0.0, 0.0); }

    constexpr double red() const { return red_; }
    constexpr double green() const { return green_; }
    constexpr double blue() const { return blue_; }
    constexpr double alpha() const { return alpha_; }

    constexpr UIColor colorWithAlphaComponent(double alpha) const { return {red_, green_, blue_, alpha}; }

    /// Makes it the stroke or fill colour of the current context; without a context nothing happens.
    void setStroke() const;
    void setFill() const;

    friend constexpr bool operator==(const UIColor&, const UIColor&) = default;

private:
    static constexpr double clipped(double component) {
        if (component > 1.0) {
            return 1.0;
        }
        return component > 0.0 ? component : 0.0;
    }

    double red_ = 0.0;
    double green_ = 0.0;
    double blue_ = 0.0;
    double alpha_ = 1.0;
};

} // namespace platform
