#include "hosts/cli/report/ReportChart.h"

#include "platform/core/Core.h"

#include <algorithm>
#include <cmath>

namespace qor::cli {

namespace {

std::string twoDigits(std::int64_t number) {
    std::string digits = text(number);
    return digits.size() < 2 ? "0" + digits : digits;
}

void strokeLine(const CGPoint& from, const CGPoint& to, const UIColor& color, double width) {
    UIBezierPath line;
    line.moveToPoint(from);
    line.addLineToPoint(to);
    line.setLineWidth(width);
    color.setStroke();
    line.stroke();
}

} // namespace

void drawReportText(std::string_view text, const CGRect& rect, const UIFont& font, const UIColor& color,
                    NSTextAlignment alignment) {
    NSMutableParagraphStyle style;
    style.setAlignment(alignment);
    style.setLineBreakMode(NSLineBreakMode::truncatingTail);
    drawInRect(text, rect, {.font = font, .foregroundColor = color, .paragraphStyle = style});
}

double timeStep(double seconds, int most) {
    for (const double step : {0.001, 0.002, 0.005, 0.01, 0.02, 0.05,  0.1,   0.2,   0.5,   1.0,   2.0,
                              5.0,   10.0,  15.0,  30.0, 60.0, 120.0, 300.0, 600.0, 900.0, 1800.0}) {
        if (seconds / step <= most) {
            return step;
        }
    }
    return std::max(1.0, std::ceil(seconds / most / 3600.0)) * 3600.0;
}

std::string timeLabel(double seconds, double step) {
    if (step < 1.0) {
        return fixedText(seconds, step < 0.01 ? 3 : step < 0.1 ? 2 : 1);
    }
    const auto whole = static_cast<std::int64_t>(std::llround(seconds));
    if (whole < 60) {
        return text(whole);
    }
    const std::string rest = twoDigits(whole / 60 % 60) + ":" + twoDigits(whole % 60);
    return whole < 3600 ? text(whole / 60) + ":" + twoDigits(whole % 60) : text(whole / 3600) + ":" + rest;
}

double ReportChart::xOf(double seconds) const {
    return area_.origin.x + area_.size.width * std::clamp(seconds / seconds_, 0.0, 1.0);
}

double ReportChart::yOf(double value) const {
    const double share = std::clamp((highest_ - value) / (highest_ - lowest_), 0.0, 1.0);
    return area_.origin.y + area_.size.height * share;
}

void ReportChart::drawGround(std::string_view title, const std::vector<ValueMark>& marks,
                             bool timeLabels) const {
    reportColor::kPlate.setFill();
    UIBezierPath::bezierPathWithRect(area_).fill();
    const UIFont small = UIFont::systemFontOfSize(11.0);
    const double right = CGRectGetMaxX(area_);
    const double bottom = CGRectGetMaxY(area_);
    const double step = timeStep(seconds_, 10);
    for (std::int64_t mark = 0; static_cast<double>(mark) * step <= seconds_ * (1.0 + 1e-9); ++mark) {
        const double seconds = static_cast<double>(mark) * step;
        const double x = xOf(seconds);
        strokeLine({.x = x, .y = area_.origin.y}, {.x = x, .y = bottom}, reportColor::kGrid, 0.5);
        if (timeLabels) {
            drawReportText(timeLabel(seconds, step), CGRectMake(x - 40.0, bottom + 3.0, 80.0, 14.0), small,
                           reportColor::kQuiet, NSTextAlignment::center);
        }
    }
    for (const ValueMark& mark : marks) {
        const double y = yOf(mark.value);
        strokeLine({.x = area_.origin.x, .y = y}, {.x = right, .y = y}, reportColor::kGrid, 0.5);
        drawReportText(mark.label, CGRectMake(area_.origin.x - 66.0, y - 7.0, 60.0, 14.0), small,
                       reportColor::kQuiet, NSTextAlignment::right);
    }
    drawReportText(title, CGRectMake(area_.origin.x, area_.origin.y - 18.0, area_.size.width, 16.0),
                   UIFont::systemFontOfSize(12.0), reportColor::kText);
}

void ReportChart::drawBand(std::size_t count, double spanned, const std::function<double(std::size_t)>& low,
                           const std::function<double(std::size_t)>& high, const UIColor& color) const {
    if (count == 0) {
        return;
    }
    const double width = spanned / static_cast<double>(count);
    UIBezierPath band;
    const auto add = [&](double seconds, double y) {
        const CGPoint point = {.x = xOf(seconds), .y = y};
        band.isEmpty() ? band.moveToPoint(point) : band.addLineToPoint(point);
    };
    // A quarter of a point up and down keeps silence visible as a thin line.
    constexpr double kThin = 0.25;
    for (std::size_t index = 0; index < count; ++index) {
        add(width * static_cast<double>(index), yOf(high(index)) - kThin);
        add(width * static_cast<double>(index + 1), yOf(high(index)) - kThin);
    }
    for (std::size_t index = count; index-- > 0;) {
        add(width * static_cast<double>(index + 1), yOf(low(index)) + kThin);
        add(width * static_cast<double>(index), yOf(low(index)) + kThin);
    }
    band.closePath();
    color.setFill();
    band.fill();
}

void ReportChart::drawLine(std::size_t count, double spanned, const std::function<double(std::size_t)>& value,
                           const UIColor& color) const {
    if (count == 0) {
        return;
    }
    const double width = spanned / static_cast<double>(count);
    UIBezierPath line;
    for (std::size_t index = 0; index < count; ++index) {
        const CGPoint point = {.x = xOf(width * (static_cast<double>(index) + 0.5)), .y = yOf(value(index))};
        line.isEmpty() ? line.moveToPoint(point) : line.addLineToPoint(point);
    }
    line.setLineWidth(1.0);
    line.setLineJoinStyle(CGLineJoin::bevel);
    color.setStroke();
    line.stroke();
}

} // namespace qor::cli
