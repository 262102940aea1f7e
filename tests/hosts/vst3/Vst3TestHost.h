// A VST3 host for tests: loads the built bundle and drives instances of it.
#pragma once

#include "hosts/vst3/Vst3Interface.h"
#include "hosts/vst3/WholeStream.h"

#include "travesty/audio_processor.h"
#include "travesty/component.h"
#include "travesty/factory.h"
#include "travesty/host.h"

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace test {

using qor::vst3::asInterface;
using qor::vst3::Face;
using qor::vst3::StreamTable;

/// The object under test, loaded and entered for the whole program; null if it can't be.
v3_plugin_factory** vst3Factory();

/// What a plug-in does to a parameter by way of the host.
struct HostEdit {
    enum Kind : std::uint8_t { begin, perform, end } kind;
    v3_param_id id;
    double value; // normalized, of `perform`
};

/// The host's side of an instance: application, component handler, run loop and the frame of its editor.
/// Counts the references that are out.
class Vst3TestHost {
public:
    Vst3TestHost();
    Vst3TestHost(const Vst3TestHost&) = delete;
    Vst3TestHost& operator=(const Vst3TestHost&) = delete;

    v3_funknown** context() { return asInterface<v3_funknown>(application_); }
    v3_component_handler** handler() { return asInterface<v3_component_handler>(handler_); }
    v3_plugin_frame** frame() { return asInterface<v3_plugin_frame>(frame_); }
    /// One round of the run loop.
    void runTimers();

    bool offersRunLoop = true;
    bool offersMessages = true;
    bool allowsResizing = true;

    std::vector<HostEdit> edits;
    std::vector<v3_view_rect> asked; // sizes that the view has asked for
    std::map<v3_timer_handler**, std::uint64_t> timers;
    int restarts = 0;
    int runLoopReferences = 0;
    int messages = 0; // alive

private:
    struct Tables;

    Face<v3_host_application_cpp, Vst3TestHost> application_;
    Face<struct ComponentHandlerTable, Vst3TestHost> handler_;
    Face<v3_plugin_frame_cpp, Vst3TestHost> frame_;
    Face<v3_run_loop_cpp, Vst3TestHost> runLoop_;
};

struct ComponentHandlerTable : v3_funknown {
    v3_component_handler handler;
};

/// Bytes that a state is written to and read from, at most `most` with each call.
class MemoryStream {
public:
    explicit MemoryStream(std::vector<char> content = {}, std::int32_t most = INT32_MAX);
    MemoryStream(const MemoryStream&) = delete;
    MemoryStream& operator=(const MemoryStream&) = delete;

    v3_bstream** get() { return asInterface<v3_bstream>(face_); }
    std::vector<char> bytes;

private:
    struct Tables;

    std::int32_t most_;
    std::size_t position_ = 0;
    Face<StreamTable, MemoryStream> face_;
};

/// One point of automation.
struct HostChange {
    v3_param_id id;
    std::int32_t offset;
    double value; // normalized
};

/// Attaches an editor to a window.
v3_result attachTo(v3_plugin_view** view, std::uintptr_t parent,
                   const char* platform = V3_VIEW_PLATFORM_TYPE_X11);

/// An instance with its controller, terminated and released in the end.
class Vst3Instance {
public:
    explicit Vst3Instance(Vst3TestHost& host);
    ~Vst3Instance();
    Vst3Instance(const Vst3Instance&) = delete;
    Vst3Instance& operator=(const Vst3Instance&) = delete;

    v3_component* operator->() const { return v3_cpp_obj(component); }
    void activate(double sampleRate = 48000.0);
    void deactivate();
    /// Interleaved stereo through the instance, in blocks.
    std::vector<float> process(const std::vector<float>& input, std::int32_t block = 512,
                               const std::vector<HostChange>& changes = {});
    /// A block without frames.
    void flush(const std::vector<HostChange>& changes);
    /// Normalized, as the controller has it.
    double value(v3_param_id id) const;
    std::vector<char> state(std::int32_t most = INT32_MAX) const;
    bool restore(const std::vector<char>& bytes, std::int32_t most = INT32_MAX) const;
    /// The caller's to release; null if there is none.
    v3_plugin_view** createView() const;

    v3_component** component = nullptr;
    v3_edit_controller** controller = nullptr;
    v3_audio_processor** processor = nullptr;
};

} // namespace test
