#include "hosts/cli/RenderJob.h"

#include "hosts/cli/AudioReader.h"
#include "hosts/cli/Interrupt.h"
#include "hosts/cli/LevelMeter.h"
#include "hosts/cli/MeterTable.h"
#include "hosts/cli/PictureFile.h"
#include "hosts/cli/Progress.h"
#include "hosts/cli/report/ReportPicture.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <future>

namespace qor::cli {

namespace {

constexpr std::size_t kChunk = 32768; // frames read and written at a time, at most

using Stereo = std::array<std::vector<float>, 2>;

struct Chunk {
    Stereo input;
    Stereo output;
};

// Everything that one render works with.
class Job {
public:
    Job(const RenderRequest& request, RenderEngine& engine) : request_(request), engine_(engine) {}

    Result<RenderSummary> run();

private:
    Result<void> open();
    Result<void> renderChunk(Chunk& chunk, std::size_t frames);
    void measure(const Chunk& chunk, std::size_t frames);
    void finishMeasuring();
    Result<void> drawReportFile();
    Result<void> commit();
    RenderSummary summary() const;

    const RenderRequest& request_;
    RenderEngine& engine_;
    std::unique_ptr<AudioReader> reader_;
    std::unique_ptr<AudioWriter> writer_;
    std::unique_ptr<MeterTable> meters_;
    std::unique_ptr<PictureFile> report_;
    RenderTrace trace_; // only filled for a report
    std::unique_ptr<AutomationCursor> automation_;
    std::unique_ptr<LevelMeter> inputLevel_;
    std::unique_ptr<LevelMeter> outputLevel_;
    std::array<Chunk, 2> chunks_;                // one is measured while the other is rendered
    std::int64_t time_ = 0;                      // the next frame
    std::array<std::future<void>, 2> measuring_; // last: ends before what it works on
};

Result<void> Job::open() {
    std::vector<AutomationEvent> events;
    if (!request_.automation.empty()) {
        Result<std::vector<AutomationEvent>> parsed = readAutomation(request_.automation);
        if (!parsed) {
            return parsed.error();
        }
        events = std::move(parsed).value();
    }
    automation_ = std::make_unique<AutomationCursor>(std::move(events));
    Result<std::unique_ptr<AudioReader>> reader = AudioReader::open(request_.input);
    if (!reader) {
        return reader.error();
    }
    reader_ = std::move(reader).value();
    Result<std::unique_ptr<AudioWriter>> writer =
        AudioWriter::create(request_.output, request_.format, reader_->sampleRate(), reader_->frames());
    if (!writer) {
        return writer.error();
    }
    writer_ = std::move(writer).value();
    if (!request_.meters.empty()) {
        Result<std::unique_ptr<MeterTable>> table = MeterTable::create(request_.meters);
        if (!table) {
            return table.error();
        }
        meters_ = std::move(table).value();
    }
    if (!request_.report.empty()) {
        Result<std::unique_ptr<PictureFile>> picture = PictureFile::create(request_.report);
        if (!picture) {
            return picture.error();
        }
        report_ = std::move(picture).value();
    }
    inputLevel_ = std::make_unique<LevelMeter>(reader_->sampleRate());
    outputLevel_ = std::make_unique<LevelMeter>(reader_->sampleRate());
    return {};
}

// The calls begin on multiples of the block's length.
Result<void> Job::renderChunk(Chunk& chunk, std::size_t frames) {
    for (std::size_t at = 0; at < frames;) {
        const auto count = static_cast<std::uint32_t>(std::min<std::size_t>(request_.block, frames - at));
        const float* const in[2] = {&chunk.input[0][at], &chunk.input[1][at]};
        float* const out[2] = {&chunk.output[0][at], &chunk.output[1][at]};
        if (Result<void> rendered = engine_.render(time_, automation_->take(time_, count), count, in, out);
            !rendered) {
            return rendered;
        }
        if (meters_ != nullptr) {
            if (Result<void> added = meters_->add(time_, engine_.meters()); !added) {
                return added;
            }
        }
        if (report_ != nullptr) {
            trace_.add(in, out, count, engine_.meters());
        }
        time_ += count;
        at += count;
    }
    return writer_->write(chunk.output[0].data(), chunk.output[1].data(), frames);
}

// Measuring loudness costs several times what limiting does, so it goes on beside the next chunk, on other
// cores where there are any.
void Job::measure(const Chunk& chunk, std::size_t frames) {
    finishMeasuring();
    const auto start = [frames](LevelMeter& meter, const Stereo& sound) {
        return std::async([&meter, &sound, frames] { meter.add(sound[0].data(), sound[1].data(), frames); });
    };
    measuring_[0] = start(*inputLevel_, chunk.input);
    measuring_[1] = start(*outputLevel_, chunk.output);
}

void Job::finishMeasuring() {
    for (std::future<void>& task : measuring_) {
        if (task.valid()) {
            task.get();
        }
    }
}

Result<void> Job::drawReportFile() {
    constexpr double kPixelsPerPoint = 1.5;
    const RenderSummary levels = summary();
    return report_->write(kReportSize, kPixelsPerPoint, [&] {
        drawReport({.title = std::filesystem::path(request_.input).filename().string(),
                    .trace = trace_,
                    .summary = levels});
    });
}

// All contents are on the disk before the first file gets its name: the files appear together or not at all.
Result<void> Job::commit() {
    Result<void> done = report_ == nullptr ? Result<void>() : drawReportFile();
    if (done && meters_ != nullptr) {
        done = meters_->finish();
    }
    if (done) {
        done = writer_->finish();
    }
    if (done && report_ != nullptr) {
        done = report_->commit();
    }
    if (done && meters_ != nullptr) {
        done = meters_->commit();
    }
    return done ? writer_->commit() : done;
}

RenderSummary Job::summary() const {
    RenderSummary result{time_,
                         reader_->sampleRate(),
                         inputLevel_->peak(),
                         inputLevel_->loudness(),
                         outputLevel_->peak(),
                         outputLevel_->loudness(),
                         {}};
    if (automation_->left() > 0) {
        result.warnings.push_back(request_.automation + ": " + std::to_string(automation_->left()) +
                                  " of the events lie at or behind the end of the recording and were not " +
                                  "applied, the first at " + text(automation_->nextEvent().time) + ".");
    }
    if (writer_->clippedSamples() > 0) {
        result.warnings.push_back(text(writer_->clippedSamples()) +
                                  " samples beyond full scale were cut. Use --format float to keep them.");
    }
    if (inputLevel_->nonFiniteSamples() > 0) {
        result.warnings.push_back(text(inputLevel_->nonFiniteSamples()) + " samples of " +
                                  quotedName(request_.input) +
                                  " are infinite or no numbers; they were taken as silence.");
    }
    if (engine_.breakdowns() > 0) {
        result.warnings.push_back("the limiter's state broke down " + text(engine_.breakdowns()) +
                                  " times and was made anew; the values set are too extreme.");
    }
    return result;
}

Result<RenderSummary> Job::run() {
    if (Result<void> opened = open(); !opened) {
        return opened.error();
    }
    if (Result<void> allocated = engine_.allocate(reader_->sampleRate()); !allocated) {
        return allocated.error();
    }
    for (const ParameterSetting& setting : request_.settings) {
        if (setting.raw) {
            engine_.setRawParameter(static_cast<std::int32_t>(setting.address), setting.value);
        } else if (Result<void> set = engine_.setParameter(setting.address, setting.value); !set) {
            return workFailed(set.error().localizedDescription());
        }
    }
    const std::size_t length = std::max<std::size_t>(1, kChunk / request_.block) * request_.block;
    for (Chunk& place : chunks_) {
        for (unsigned channel = 0; channel < 2; ++channel) {
            place.input[channel].resize(length);
            place.output[channel].resize(length);
        }
    }
    Progress progress(stderr, reader_->frames());
    for (std::size_t turn = 0;; turn ^= 1U) {
        Chunk& place = chunks_[turn];
        if (interrupted()) {
            return workFailed("stopped; " + quotedName(request_.output) + " was not written.");
        }
        const Result<std::size_t> got = reader_->read(place.input[0].data(), place.input[1].data(), length);
        if (!got) {
            return got.error();
        }
        if (got.value() == 0) {
            break;
        }
        if (Result<void> rendered = renderChunk(place, got.value()); !rendered) {
            return rendered.error();
        }
        measure(place, got.value());
        progress.update(time_);
    }
    finishMeasuring();
    if (Result<void> committed = commit(); !committed) {
        return committed.error();
    }
    return summary();
}

} // namespace

Result<RenderSummary> renderFile(const RenderRequest& request, RenderEngine& engine) {
    return Job(request, engine).run();
}

} // namespace qor::cli
