// The picture of a render: waveforms, gain reduction and output peaks over time, levels in the caption.
#pragma once

#include "hosts/cli/RenderJob.h"
#include "hosts/cli/report/RenderTrace.h"
#include "platform/draw/Draw.h"

#include <string>

namespace qor::cli {

struct ReportContent {
    std::string title; // the recording's name
    const RenderTrace& trace;
    const RenderSummary& summary;
};

inline constexpr CGSize kReportSize{.width = 960.0, .height = 640.0}; // points

/// Draws into the current context, from (0, 0).
void drawReport(const ReportContent& content);

/// The gain reduction behind a dynamics meter's value, in dB, 0 or below. The meter shows nothing of a
/// reduction under 0.45 dB; below a value of 0.001 it is -50 dB.
double gainReductionOf(double dynamicsValue);

} // namespace qor::cli
