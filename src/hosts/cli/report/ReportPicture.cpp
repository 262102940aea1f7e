#include "hosts/cli/report/ReportPicture.h"

#include "hosts/cli/report/ReportChart.h"
#include "platform/core/Core.h"

#include <algorithm>
#include <cmath>

namespace qor::cli {

namespace {

constexpr double kLeft = 78.0;
constexpr double kWidth = 860.0;
constexpr double kQuietest = -60.0; // dBFS, the foot of the peak diagram

UIFont heading(double size) {
    return unwrap(UIFont::fontWithName("HelveticaNeue-CondensedBold", size));
}

double decibelsOf(double linear) {
    return linear > 0.0 ? std::max(20.0 * std::log10(linear), kQuietest) : kQuietest;
}

std::string level(double value, int digits, const char* unit) {
    return (std::isfinite(value) ? fixedText(value, digits) : std::string("-inf")) + " " + unit;
}

// "1.0", or the next half above the loudest sample.
double waveformHeight(const std::vector<TraceColumn>& columns) {
    float highest = 1.0F;
    for (const TraceColumn& column : columns) {
        highest =
            std::max({highest, column.inputHigh, -column.inputLow, column.outputHigh, -column.outputLow});
    }
    return std::ceil(static_cast<double>(highest) * 2.0) / 2.0;
}

std::vector<ValueMark> waveformMarks(double height) {
    std::vector<ValueMark> marks = {{1.0, "1"}, {0.0, "0"}, {-1.0, "-1"}};
    if (height > 1.0) {
        marks.push_back({height, fixedText(height, 1)});
        marks.push_back({-height, fixedText(-height, 1)});
    }
    return marks;
}

// The lowest mark of the reduction's axis: a multiple of 6 dB.
double deepestReduction(const std::vector<TraceColumn>& columns) {
    double deepest = 0.0;
    for (const TraceColumn& column : columns) {
        deepest = std::min(
            {deepest, gainReductionOf(column.meters.dynamics1), gainReductionOf(column.meters.dynamics2)});
    }
    return deepest;
}

void drawLegend(double y, const char* first, const char* second) {
    const UIFont font = UIFont::systemFontOfSize(11.0);
    const double right = kLeft + kWidth;
    drawReportText(first, CGRectMake(right - 200.0, y, 96.0, 14.0), font, reportColor::kFirst,
                   NSTextAlignment::right);
    drawReportText(second, CGRectMake(right - 96.0, y, 96.0, 14.0), font, reportColor::kSecond,
                   NSTextAlignment::right);
}

void drawCaption(const ReportContent& content, double deepest) {
    const RenderSummary& summary = content.summary;
    const UIFont font = UIFont::systemFontOfSize(13.0);
    drawReportText("QOR LIMITER", CGRectMake(20.0, 12.0, 130.0, 26.0), heading(22.0), reportColor::kText);
    drawReportText(content.title, CGRectMake(150.0, 17.0, 500.0, 20.0), UIFont::systemFontOfSize(15.0),
                   reportColor::kText);
    const double seconds =
        summary.sampleRate > 0 ? static_cast<double>(summary.frames) / summary.sampleRate : 0.0;
    drawReportText(fixedText(seconds, 2) + " s at " + text(summary.sampleRate) + " Hz",
                   CGRectMake(660.0, 18.0, 278.0, 18.0), font, reportColor::kQuiet, NSTextAlignment::right);
    const auto row = [&](double x, const std::string& name, double peak, double loudness) {
        drawReportText(name + ":  peak " + level(peak, 2, "dBFS") + ",  loudness " +
                           level(loudness, 1, "LUFS"),
                       CGRectMake(x, 46.0, 330.0, 18.0), font, reportColor::kText);
    };
    row(20.0, "before", summary.inputPeak, summary.inputLoudness);
    row(345.0, "after", summary.outputPeak, summary.outputLoudness);
    drawReportText("deepest gain reduction " + level(deepest, 1, "dB"), CGRectMake(668.0, 46.0, 270.0, 18.0),
                   font, reportColor::kText, NSTextAlignment::right);
}

} // namespace

double gainReductionOf(double dynamicsValue) {
    // The meter's value v and the gain g go together by g = 1 - exp(-3 v); at 1 the meter is at its stop.
    if (!(dynamicsValue < 1.0)) {
        return 0.0;
    }
    constexpr double kDeepest = -50.0;
    const double gain = dynamicsValue > 0.0 ? 1.0 - std::exp(-3.0 * dynamicsValue) : 0.0;
    return gain > 0.0 ? std::max(20.0 * std::log10(gain), kDeepest) : kDeepest;
}

void drawReport(const ReportContent& content) {
    const std::vector<TraceColumn>& columns = content.trace.columns();
    const double rate = content.summary.sampleRate > 0 ? content.summary.sampleRate : 1.0;
    const double seconds = static_cast<double>(content.trace.frames()) / rate;
    const double spanned =
        static_cast<double>(content.trace.framesPerColumn()) * static_cast<double>(columns.size()) / rate;
    const double height = waveformHeight(columns);
    const double deepest = deepestReduction(columns);

    reportColor::kGround.setFill();
    UIBezierPath::bezierPathWithRect({.origin = {}, .size = kReportSize}).fill();
    drawCaption(content, deepest);

    const ReportChart before(CGRectMake(kLeft, 96.0, kWidth, 110.0), seconds, -height, height);
    before.drawGround("waveform before (full scale is 1)", waveformMarks(height), false);
    before.drawBand(
        columns.size(), spanned, [&](std::size_t i) { return columns[i].inputLow; },
        [&](std::size_t i) { return columns[i].inputHigh; }, reportColor::kQuiet);

    const ReportChart after(CGRectMake(kLeft, 232.0, kWidth, 110.0), seconds, -height, height);
    after.drawGround("waveform after", waveformMarks(height), false);
    after.drawBand(
        columns.size(), spanned, [&](std::size_t i) { return columns[i].outputLow; },
        [&](std::size_t i) { return columns[i].outputHigh; }, reportColor::kText);

    const double foot = std::min(-6.0, std::floor(deepest / 6.0) * 6.0);
    const ReportChart reduction(CGRectMake(kLeft, 370.0, kWidth, 96.0), seconds, foot, 0.0);
    std::vector<ValueMark> marks;
    const double step = foot < -30.0 ? 12.0 : foot < -6.0 ? 6.0 : 3.0;
    for (int mark = 0; - step * mark >= foot; ++mark) {
        marks.push_back({-step * mark, text(static_cast<std::int64_t>(-step * mark)) + " dB"});
    }
    reduction.drawGround("gain reduction of the limiter, as its meters show it", marks, false);
    drawLegend(353.0, "left or mid", "right or side");
    const auto reductionOf = [&](float MeterValues::*value) {
        return [&columns, value](std::size_t i) { return gainReductionOf(columns[i].meters.*value); };
    };
    reduction.drawLine(columns.size(), spanned, reductionOf(&MeterValues::dynamics2), reportColor::kSecond);
    reduction.drawLine(columns.size(), spanned, reductionOf(&MeterValues::dynamics1), reportColor::kFirst);

    const ReportChart peaks(CGRectMake(kLeft, 496.0, kWidth, 96.0), seconds, kQuietest, 0.0);
    peaks.drawGround("output peaks",
                     {{0.0, "0 dBFS"}, {-20.0, "-20 dBFS"}, {-40.0, "-40 dBFS"}, {-60.0, "-60 dBFS"}}, true);
    drawLegend(479.0, "left", "right");
    const auto peakOf = [&](float MeterValues::*value) {
        return [&columns, value](std::size_t i) { return decibelsOf(columns[i].meters.*value); };
    };
    peaks.drawLine(columns.size(), spanned, peakOf(&MeterValues::peak2), reportColor::kSecond);
    peaks.drawLine(columns.size(), spanned, peakOf(&MeterValues::peak1), reportColor::kFirst);
    drawReportText(timeStep(seconds > 0.0 ? seconds : 1.0, 10) < 1.0 || seconds < 60.0 ? "time (s)"
                                                                                       : "time (min:s)",
                   CGRectMake(kLeft, 614.0, kWidth, 16.0), UIFont::systemFontOfSize(11.0),
                   reportColor::kQuiet, NSTextAlignment::center);
}

} // namespace qor::cli
