#include "AudioUnits/Apple Units/Effects/AUPeakLimiter.h"

#include "RecordingUnit.h"
#include "support/CapturedLog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace {

using namespace qor;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::ElementsAreArray;

using Lines = std::vector<std::string>;

constexpr const char* kHead =
    "AUPeakLimiter::nodeDiagnostics(): ---------------------------------------------";

/// What a dump writes, on a loop of its own.
Lines dumpOf(AUPeakLimiter& limiter, const std::function<void(AUPeakLimiter&)>& dump) {
    RunLoop loop;
    const RunLoop::Scope scope(loop);
    const test::CapturedLog log;
    dump(limiter);
    loop.pump();
    return log.lines();
}

Lines busLines(const std::string& type) {
    return {
        " --- bus 0 type: " + type,
        " --- bus 0 representation latency: 0.0",
        " --- bus 0 format: 2 ch, 44100 Hz, Float32, deinterleaved",
        " --- bus 0 format channel count: 2",
        " --- bus 0 format common format: pcmFloat32",
        " --- bus 0 format channel layout: none",
        " --- bus 0 format interleaved: false",
        " --- bus 0 format standard: true",
        " --- bus 0 format samplerate: 44100.0",
        " --- bus 0 format settings: [AVFormatIDKey: lpcm, AVLinearPCMBitDepthKey: 32, "
        "AVLinearPCMIsBigEndianKey: 0, AVLinearPCMIsFloatKey: 1, AVLinearPCMIsNonInterleaved: 1, "
        "AVNumberOfChannelsKey: 2, AVSampleRateKey: 44100]",
        " --- bus 0 index: 0",
        " --- bus 0 enabled: true",
        " --- bus 0 max. channel count: 2",
        " --- bus 0 name: none",
        " --- bus 0 should allocate buffer: true",
    };
}

void append(Lines& lines, const Lines& more) {
    lines.insert(lines.end(), more.begin(), more.end());
}

Lines unitLines() {
    Lines lines{
        " -- unit all parameter values: true",
        " -- unit name: Peak Limiter",
        " -- unit short name: Limiter",
        " -- unit can process inplace: true",
        " -- unit channel capabilities: [1, 1, 2, 2]",
        " -- unit channel map: none",
        " -- unit component: System: Peak Limiter (aufx lmtr appl)",
        " -- unit component description: aufx lmtr appl",
        " -- unit component name: System: Peak Limiter",
        " -- unit component version: 1.0.0",
        " -- unit context name: none",
        " -- unit current preset: none",
        " -- unit .factory presets: none",
        " -- unit input busses: [2 ch, 44100 Hz, Float32, deinterleaved]",
        " -- unit input bus count: 1",
        " -- unit user presets: []",
        " -- unit input bus type: input",
    };
    append(lines, busLines("input"));
    append(lines, {
                      " -- unit music device: false",
                      " -- unit rendering offline: false",
                      " -- unit latency: 0.0",
                      " -- unit manufacturer name: System",
                      " -- unit max. frames to render: 4096",
                      " -- unit midi buffer size: 0",
                      " -- unit midi output event block: none",
                      " -- unit midi output names:[]",
                      " -- unit musical context block: none",
                      " -- unit output busses: [2 ch, 44100 Hz, Float32, deinterleaved]",
                      " -- unit output bus count: 1",
                      " -- unit output bus type: output",
                  });
    append(lines, busLines("output"));
    append(lines, {
                      " -- unit parameters for overview: [2, 0, 1]",
                      " -- unit parameter tree: [attackTime, decayTime, preGain]",
                      " -- unit provides user interface: false",
                      " -- unit render quality: 127",
                      " -- unit resources allocated: false",
                      " -- unit should bypass effect: false",
                      " -- unit supported view configurations: []",
                      " -- unit suppoerts MPE: false",
                      " -- unit supports user presets: false",
                      " -- unit tail time: 0.0",
                      " -- unit transport state block: none",
                      " -- unit midi cable count: 0",
                  });
    return lines;
}

TEST(AUPeakLimiterDiagnostics, TheBusDumpHasItsLinesInOrder) {
    AUPeakLimiter limiter;
    const auto lines = dumpOf(limiter, [](AUPeakLimiter& dumped) {
        dumped.busDiagnostics((*dumped.auAudioUnit()->inputBusses())[0], 0);
    });
    EXPECT_THAT(lines, ElementsAreArray(busLines("input")));
}

TEST(AUPeakLimiterDiagnostics, TheGivenIndexStandsInTheLabelAndTheBusesOwnInItsLine) {
    AUPeakLimiter limiter;
    const auto lines = dumpOf(limiter, [](AUPeakLimiter& dumped) {
        dumped.busDiagnostics((*dumped.auAudioUnit()->inputBusses())[0], 7);
    });
    EXPECT_THAT(lines, Contains(" --- bus 7 index: 0"));
}

TEST(AUPeakLimiterDiagnostics, TheUnitDumpHasItsLinesInOrder) {
    AUPeakLimiter limiter;
    const auto lines =
        dumpOf(limiter, [](AUPeakLimiter& dumped) { dumped.unitDiagnostics(*dumped.auAudioUnit()); });
    EXPECT_THAT(lines, ElementsAreArray(unitLines()));
}

TEST(AUPeakLimiterDiagnostics, TheNodeDumpHasItsLinesInOrder) {
    AUPeakLimiter limiter;
    Lines expected{kHead, " - node name: Peak Limiter", " - node unit: aufx lmtr appl"};
    append(expected, unitLines());
    append(expected, {
                         " - node last render time: none",
                         " - node latency: 0.0",
                         " - node number of inputs: 1",
                         " - node input bus 0 format: 2 ch, 44100 Hz, Float32, deinterleaved",
                         " - node input bus 0 name: none",
                         " - node number of outputs: 1",
                         " - node output bus 0 format: 2 ch, 44100 Hz, Float32, deinterleaved",
                         " - node output bus 0 name: none",
                         " - node output presentation latency: 0.0",
                     });
    EXPECT_THAT(dumpOf(limiter, [](AUPeakLimiter& dumped) { dumped.nodeDiagnostics(); }),
                ElementsAreArray(expected));
}

TEST(AUPeakLimiterDiagnostics, ANodeWithoutAUnitIsDumpedWithoutUnitLines) {
    const test::NoLimiter none;
    AUPeakLimiter limiter;
    EXPECT_THAT(dumpOf(limiter, [](AUPeakLimiter& dumped) { dumped.nodeDiagnostics(); }),
                ElementsAre(kHead, " - node name: ", " - node unit: none", " - node last render time: none",
                            " - node latency: 0.0", " - node number of inputs: 0",
                            " - node number of outputs: 0", " - node output presentation latency: 0.0"));
}

TEST(AUPeakLimiterDiagnostics, AnAbsentNodeGivesTheFirstLineAlone) {
    AUPeakLimiter limiter;
    limiter.internalEffect = nullptr;
    EXPECT_THAT(dumpOf(limiter, [](AUPeakLimiter& dumped) { dumped.nodeDiagnostics(); }), ElementsAre(kHead));
}

TEST(AUPeakLimiterDiagnostics, WhatTheHostProvidesIsCalledDefined) {
    AUPeakLimiter limiter;
    const auto unit = limiter.auAudioUnit();
    unit->setMusicalContextBlock([](auto...) { return false; });
    unit->setTransportStateBlock([](auto...) { return false; });
    unit->setMIDIOutputEventBlock([](auto...) { return noErr; });
    unit->setContextName("Drums");
    unit->setCurrentPreset(makeRef<AUAudioUnitPreset>(3, "Warm"));
    const auto lines = dumpOf(limiter, [&](AUPeakLimiter& dumped) { dumped.unitDiagnostics(*unit); });
    for (const char* line :
         {" -- unit musical context block: defined", " -- unit transport state block: defined",
          " -- unit midi output event block: defined", " -- unit context name: Drums",
          " -- unit current preset: 3 \"Warm\""}) {
        EXPECT_THAT(lines, Contains(line));
    }
}

} // namespace
