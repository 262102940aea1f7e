// The report of a render: what is collected, how axes are marked, and the program's picture.
#include "RenderFixture.h"
#include "hosts/cli/report/ReportChart.h"
#include "hosts/cli/report/ReportPicture.h"
#include "platform/draw/RecordingContext.h"

#include <cmath>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>

using namespace qor;
using namespace qor::cli;
using test::Render;
using testing::HasSubstr;
using testing::Not;

namespace {

void addConstant(RenderTrace& trace, float in, float out, std::size_t frames,
                 const MeterValues& meters = {}) {
    const std::vector<float> input(frames, in);
    const std::vector<float> output(frames, out);
    const float* const ins[2] = {input.data(), input.data()};
    const float* const outs[2] = {output.data(), output.data()};
    trace.add(ins, outs, frames, meters);
}

TEST(RenderTrace, KeepsTheExtremesOfEachColumn) {
    RenderTrace trace;
    const float left[4] = {0.5F, -0.25F, 0.1F, 0.0F};
    const float right[4] = {0.0F, 0.0F, -0.75F, 0.0F};
    const float* const in[2] = {left, right};
    const float* const out[2] = {right, right};
    trace.add(in, out, 4, {.dynamics1 = 0.5F, .dynamics2 = 0.9F, .peak1 = 0.3F, .peak2 = 0.4F});
    ASSERT_EQ(trace.columns().size(), 1U);
    const TraceColumn& column = trace.columns()[0];
    EXPECT_EQ(column.inputHigh, 0.5F);
    EXPECT_EQ(column.inputLow, -0.75F);
    EXPECT_EQ(column.outputHigh, 0.0F);
    EXPECT_EQ(column.outputLow, -0.75F);
    EXPECT_EQ(column.meters.dynamics1, 0.5F);
    EXPECT_EQ(column.meters.peak2, 0.4F);
}

TEST(RenderTrace, StaysWithinItsColumnsHoweverLongTheRecording) {
    RenderTrace trace;
    for (int block = 0; block < 5000; ++block) {
        addConstant(trace, block == 4321 ? 0.9F : 0.1F, 0.1F, 480, {.peak1 = block == 777 ? 0.8F : 0.0F});
        ASSERT_LE(trace.columns().size(), RenderTrace::kMostColumns);
    }
    EXPECT_EQ(trace.frames(), 5000 * 480);
    EXPECT_GT(trace.columns().size(), RenderTrace::kMostColumns / 2);
    EXPECT_GE(static_cast<std::int64_t>(trace.columns().size()) * trace.framesPerColumn(), trace.frames());
    // Each event is still in the column of its time.
    const auto columnOf = [&](int block) {
        return static_cast<std::size_t>(block * 480 / trace.framesPerColumn());
    };
    for (std::size_t index = 0; index < trace.columns().size(); ++index) {
        const bool loud = index >= columnOf(4321) && index <= columnOf(4321) + 1;
        const bool high = index >= columnOf(777) && index <= columnOf(777) + 1;
        if (!loud) {
            EXPECT_EQ(trace.columns()[index].inputHigh, 0.1F) << index;
        }
        if (!high) {
            EXPECT_EQ(trace.columns()[index].meters.peak1, 0.0F) << index;
        }
    }
    EXPECT_EQ(trace.columns()[columnOf(4321)].inputHigh, 0.9F);
    EXPECT_EQ(trace.columns()[columnOf(777)].meters.peak1, 0.8F);
}

TEST(RenderTrace, BlockLengthsDoNotMatter) {
    RenderTrace whole;
    RenderTrace pieces;
    addConstant(whole, 0.3F, 0.2F, 100000);
    for (int block = 0; block < 1000; ++block) {
        addConstant(pieces, 0.3F, 0.2F, 100);
    }
    EXPECT_EQ(whole.columns().size(), pieces.columns().size());
    EXPECT_EQ(whole.framesPerColumn(), pieces.framesPerColumn());
}

TEST(RenderTrace, SamplesThatAreNotFiniteAreLeftOut) {
    RenderTrace trace;
    addConstant(trace, std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity(), 10);
    EXPECT_EQ(trace.columns()[0].inputHigh, 0.0F);
    EXPECT_EQ(trace.columns()[0].outputHigh, 0.0F);
}

TEST(Report, TheReductionBehindTheMeterIsThatOfItsGain) {
    EXPECT_EQ(gainReductionOf(1.0), 0.0);
    EXPECT_EQ(gainReductionOf(1.5), 0.0);
    EXPECT_EQ(gainReductionOf(std::nan("")), 0.0);
    for (const double gain : {0.9, 0.5, 0.1}) {
        const double meter = 20.0 * std::log(1.0 - gain) / -60.0;
        EXPECT_NEAR(gainReductionOf(meter), 20.0 * std::log10(gain), 1e-9) << gain;
    }
    EXPECT_EQ(gainReductionOf(0.0), -50.0);
    EXPECT_EQ(gainReductionOf(-1.0), -50.0);
}

TEST(Report, TimeAxesHaveRoundStepsAndFewMarks) {
    EXPECT_EQ(timeStep(10.0, 10), 1.0);
    EXPECT_EQ(timeStep(9.97, 10), 1.0);
    EXPECT_EQ(timeStep(0.05, 10), 0.005);
    EXPECT_EQ(timeStep(45.0, 10), 5.0);
    EXPECT_EQ(timeStep(200.0, 10), 30.0);
    EXPECT_EQ(timeStep(3.0 * 3600.0, 10), 1800.0);
    EXPECT_EQ(timeStep(100.0 * 3600.0, 10), 36000.0);
    for (double seconds = 1e-3; seconds < 1e6; seconds *= 1.7) {
        EXPECT_LE(seconds / timeStep(seconds, 10), 10.0 + 1e-9);
    }
}

TEST(Report, TimeLabelsFitTheirStep) {
    EXPECT_EQ(timeLabel(0.0, 1.0), "0");
    EXPECT_EQ(timeLabel(0.25, 0.05), "0.25");
    EXPECT_EQ(timeLabel(0.5, 0.1), "0.5");
    EXPECT_EQ(timeLabel(0.005, 0.005), "0.005");
    EXPECT_EQ(timeLabel(90.0, 30.0), "1:30");
    EXPECT_EQ(timeLabel(3720.0, 600.0), "1:02:00");
}

std::string recordedReport(const RenderTrace& trace, const RenderSummary& summary) {
    RecordingContext context;
    const GraphicsScope scope(context);
    drawReport({.title = "in.wav", .trace = trace, .summary = summary});
    return context.text();
}

TEST(Report, TheCaptionNamesLevelsAndLoudness) {
    RenderTrace trace;
    addConstant(trace, 0.5F, 0.25F, 48000, {.dynamics1 = 0.3F});
    const std::string drawn =
        recordedReport(trace, {.frames = 48000,
                               .sampleRate = 48000,
                               .inputPeak = -6.02,
                               .inputLoudness = -14.25,
                               .outputPeak = -12.04,
                               .outputLoudness = -std::numeric_limits<double>::infinity(),
                               .warnings = {}});
    EXPECT_THAT(drawn, HasSubstr("\"before:  peak -6.02 dBFS,  loudness -14.2 LUFS\""));
    EXPECT_THAT(drawn, HasSubstr("\"after:  peak -12.04 dBFS,  loudness -inf LUFS\""));
    EXPECT_THAT(drawn, HasSubstr("\"deepest gain reduction -4.5 dB\"")); // 1 - exp(-0.9) is 0.593
    EXPECT_THAT(drawn, HasSubstr("\"1.00 s at 48000 Hz\""));
    EXPECT_THAT(drawn, HasSubstr("\"in.wav\""));
    EXPECT_THAT(drawn, HasSubstr("\"0.9\""));
    EXPECT_THAT(drawn, HasSubstr("\"time (s)\""));
    EXPECT_THAT(drawn, HasSubstr("\"-40 dBFS\""));
}

TEST(Report, AnEmptyRenderIsDrawnToo) {
    EXPECT_THAT(recordedReport({}, {}), HasSubstr("waveform before"));
}

TEST_F(Render, WritesAReportBesideTheResult) {
    input(test::burstyNoise(20000));
    render("plain.wav");
    render("out.wav", {"--report", path("report.png")});
    EXPECT_EQ(bytes("report.png").substr(1, 3), "PNG");
    EXPECT_EQ(bytes("plain.wav"), bytes("out.wav")); // watching changes nothing
    render("out.wav", {"--report", path("report.svg")});
    EXPECT_THAT(bytes("report.svg"), HasSubstr("<svg"));
}

TEST_F(Render, AReportOfAnotherKindIsRefusedBeforeTheWork) {
    input(test::burstyNoise(1000));
    const test::Outcome outcome = attempt("out.wav", {"--report", path("report.txt")});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.errors, HasSubstr(".png, .svg or .pdf"));
    EXPECT_FALSE(std::filesystem::exists(path("out.wav")));
}

TEST_F(Render, TheReportMayNotBeTheInputOrTheOutput) {
    input(test::burstyNoise(1000));
    EXPECT_EQ(attempt("out.png", {"--report", path("out.png")}).status, 2);
    EXPECT_EQ(attempt("out.wav", {"--report", path("in.wav")}).status, 2);
}

} // namespace
