// The easing curves once more, in double precision and by another route: each `Out`, `InOut` and `OutIn` form
// is made from its base form by mirroring and gluing, and only the curves that differ on purpose are spelled
// out.
#pragma once

#include <cmath>
#include <functional>
#include <string>

namespace test {

struct EasingReference {
    /// Part done (frame over frames) to part of the way; `frames` matters to nothing but the end test.
    using Shape = std::function<double(double)>;

    static double bounceOut(double t) {
        // parabolas with feet at these places and these half widths
        struct Hop {
            double end, middle, floor;
        };
        const Hop hops[] = {{4.0 / 11.0, 0.0, 0.0},
                            {8.0 / 11.0, 6.0 / 11.0, 0.75},
                            {10.0 / 11.0, 9.0 / 11.0, 0.9375},
                            {INFINITY, 10.5 / 11.0, 0.984375}};
        const Hop* hop = hops;
        while (t >= hop->end) {
            ++hop;
        }
        return 121.0 / 16.0 * (t - hop->middle) * (t - hop->middle) + hop->floor;
    }
    static double elasticOut(double t, double period) {
        if (t == 0.0) {
            return 0.0;
        }
        if (t == 1.0) {
            return 1.0;
        }
        return 1.0 + std::exp2(-10.0 * t) * std::sin((t - period / 4.0) * 2.0 * M_PI / period);
    }
    static Shape mirrored(const Shape& in) {
        return [in](double t) { return 1.0 - in(1.0 - t); };
    }
    static Shape glued(const Shape& first, const Shape& second) {
        return [first, second](double t) {
            return t < 0.5 ? first(2.0 * t) / 2.0 : 0.5 + second(2.0 * t - 1.0) / 2.0;
        };
    }
    static Shape in(const std::string& kind) {
        if (kind == "Sine") {
            return [](double t) { return 1.0 - std::cos(t * M_PI_2); };
        }
        if (kind == "Expo") {
            return [](double t) { return t == 0.0 ? 0.0 : std::exp2(10.0 * t - 10.0); };
        }
        if (kind == "Circ") {
            return [](double t) { return 1.0 - std::sqrt(1.0 - t * t); };
        }
        if (kind == "Elastic") {
            return mirrored([](double t) { return elasticOut(t, 0.3); });
        }
        if (kind == "Back") {
            return [](double t) { return t * t * (2.70158 * t - 1.70158); };
        }
        if (kind == "Bounce") {
            return mirrored(bounceOut);
        }
        const double power = kind == "Quad" ? 2.0 : kind == "Cubic" ? 3.0 : kind == "Quart" ? 4.0 : 5.0;
        return [power](double t) { return std::pow(t, power); };
    }
    static Shape out(const std::string& kind) {
        if (kind == "Quart") {
            return [](double t) { return 1.0 + std::pow(1.0 - t, 4.0); }; // falls from 2 to 1
        }
        return mirrored(in(kind));
    }
    static Shape inOut(const std::string& kind) {
        if (kind == "Quart") {
            return [](double t) {
                return t < 0.5 ? 8.0 * std::pow(t, 4.0) : 1.0 + 8.0 * std::pow(1.0 - t, 4.0);
            };
        }
        if (kind == "Expo") {
            return [](double t) { // creeps
                return t == 0.0 ? 0.0 : t == 1.0 ? 1.0 : 0.5 * std::exp2(5.0 * t - 10.0);
            };
        }
        if (kind == "Elastic") {
            const Shape late = [](double t) { return elasticOut(t, 0.45); };
            return [late](double t) {
                if (t == 0.0 || t == 1.0) {
                    return t;
                }
                // one oscillation about the middle, with the envelopes of both halves
                const double swing = std::sin(((2.0 * t - 1.0) - 0.45 / 4.0) * 2.0 * M_PI / 0.45);
                return t < 0.5 ? -0.5 * std::exp2(20.0 * t - 10.0) * swing
                               : 1.0 + 0.5 * std::exp2(10.0 - 20.0 * t) * swing;
            };
        }
        if (kind == "Back") {
            const Shape half = [](double t) { return t * t * (3.5949094 * t - 2.5949094); };
            return glued(half, mirrored(half));
        }
        return glued(in(kind), mirrored(in(kind)));
    }
    /// The shape at a frame; the out-in forms divide the frames as integers.
    static double value(const std::string& form, const std::string& kind, int frame, int frames) {
        const double t = static_cast<double>(frame) / frames;
        if (form == "None") {
            return t;
        }
        if (form == "In") {
            return in(kind)(t);
        }
        if (form == "Out") {
            return out(kind)(t);
        }
        if (form == "InOut") {
            return inOut(kind)(t);
        }
        if (frame < frames / 2) {
            return out(kind)(2.0 * t) / 2.0;
        }
        return 0.5 + in(kind)(static_cast<double>(2 * frame - frames) / frames) / 2.0;
    }
};

} // namespace test
