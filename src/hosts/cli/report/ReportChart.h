// One diagram of a report: a frame with a time axis and a value axis.
#pragma once

#include "platform/draw/Draw.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace qor::cli {

namespace reportColor {
inline constexpr UIColor kGround{0.13, 0.13, 0.13, 1.0};
inline constexpr UIColor kPlate{0.17, 0.17, 0.17, 1.0};
inline constexpr UIColor kGrid{0.3, 0.3, 0.3, 1.0};
inline constexpr UIColor kText{0.82, 0.82, 0.82, 1.0};
inline constexpr UIColor kQuiet{0.6, 0.6, 0.6, 1.0};
inline constexpr UIColor kFirst{0.86, 0.38, 0.38, 1.0};
inline constexpr UIColor kSecond{0.33, 0.62, 0.9, 1.0};
} // namespace reportColor

void drawReportText(std::string_view text, const CGRect& rect, const UIFont& font, const UIColor& color,
                    NSTextAlignment alignment = NSTextAlignment::left);

/// A round number of seconds between the marks of a time axis, so that there are at most `most` marks.
double timeStep(double seconds, int most);
/// "0", "2.5", "1:30" or "1:02:00": a time on an axis with that step.
std::string timeLabel(double seconds, double step);

struct ValueMark {
    double value;
    std::string label;
};

class ReportChart {
public:
    /// `area` holds the diagram; the value marks' texts stand left of it.
    ReportChart(const CGRect& area, double seconds, double lowest, double highest)
        : area_(area), seconds_(seconds > 0.0 ? seconds : 1.0), lowest_(lowest), highest_(highest) {}

    void drawGround(std::string_view title, const std::vector<ValueMark>& marks, bool timeLabels) const;
    /// A filled band between two values at each of `count` equal columns that together last `spanned`
    /// seconds.
    void drawBand(std::size_t count, double spanned, const std::function<double(std::size_t)>& low,
                  const std::function<double(std::size_t)>& high, const UIColor& color) const;
    /// A line through one value a column.
    void drawLine(std::size_t count, double spanned, const std::function<double(std::size_t)>& value,
                  const UIColor& color) const;

private:
    double xOf(double seconds) const;
    double yOf(double value) const; // held inside the diagram

    CGRect area_;
    double seconds_;
    double lowest_;
    double highest_;
};

} // namespace qor::cli
