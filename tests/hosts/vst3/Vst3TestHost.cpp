#include "Vst3TestHost.h"

#include <dlfcn.h>

#include <algorithm>
#include <array>
#include <deque>

namespace test {

namespace {

/// The first three functions of an interface whose owner is not counted.
constexpr v3_funknown kUncounted{[](void*, const v3_tuid, void** found) -> v3_result {
                                     *found = nullptr;
                                     return V3_NO_INTERFACE;
                                 },
                                 [](void*) -> std::uint32_t { return 1; },
                                 [](void*) -> std::uint32_t { return 1; }};

/// A message of the host's, as components pass them around.
class HostMessage {
public:
    explicit HostMessage(int& alive) : alive_(alive) { ++alive_; }
    ~HostMessage() { --alive_; }
    HostMessage(const HostMessage&) = delete;
    HostMessage& operator=(const HostMessage&) = delete;
    void* get() { return &message_; }

private:
    using MessageFace = Face<v3_message_cpp, HostMessage>;
    using ListFace = Face<v3_attribute_list_cpp, HostMessage>;
    static const v3_message_cpp kMessage;
    static const v3_attribute_list_cpp kList;

    int& alive_;
    int references_ = 1;
    std::string id_;
    std::map<std::string, std::int64_t> integers_;
    MessageFace message_{&kMessage, this};
    ListFace list_{&kList, this};
};

const v3_message_cpp HostMessage::kMessage{
    {kUncounted.query_interface,
     [](void* self) { return static_cast<std::uint32_t>(++MessageFace::ownerOf(self).references_); },
     [](void* self) {
         HostMessage& message = MessageFace::ownerOf(self);
         const auto left = static_cast<std::uint32_t>(--message.references_);
         if (left == 0) {
             delete &message;
         }
         return left;
     }},
    {[](void* self) { return MessageFace::ownerOf(self).id_.c_str(); },
     [](void* self, const char* id) { MessageFace::ownerOf(self).id_ = id; },
     [](void* self) { return asInterface<v3_attribute_list>(MessageFace::ownerOf(self).list_); }}};

const v3_attribute_list_cpp HostMessage::kList{
    kUncounted,
    {[](void* self, const char* key, std::int64_t value) -> v3_result {
         ListFace::ownerOf(self).integers_[key] = value;
         return V3_OK;
     },
     [](void* self, const char* key, std::int64_t* value) -> v3_result {
         const auto& integers = ListFace::ownerOf(self).integers_;
         const auto found = integers.find(key);
         if (found == integers.end()) {
             return V3_INVALID_ARG;
         }
         *value = found->second;
         return V3_OK;
     },
     [](void*, const char*, double) -> v3_result { return V3_OK; },
     [](void*, const char*, double*) -> v3_result { return V3_INVALID_ARG; },
     [](void*, const char*, const std::int16_t*) -> v3_result { return V3_OK; },
     [](void*, const char*, std::int16_t*, std::uint32_t) -> v3_result { return V3_INVALID_ARG; },
     [](void*, const char*, const void*, std::uint32_t) -> v3_result { return V3_OK; },
     [](void*, const char*, const void**, std::uint32_t*) -> v3_result { return V3_INVALID_ARG; }}};

/// One parameter's points of a block.
class ChangeQueue {
public:
    explicit ChangeQueue(v3_param_id id) : id_(id) {}
    ChangeQueue(const ChangeQueue&) = delete;
    ChangeQueue& operator=(const ChangeQueue&) = delete;
    v3_param_value_queue** get() { return asInterface<v3_param_value_queue>(face_); }
    v3_param_id id() const { return id_; }
    std::vector<std::pair<std::int32_t, double>> points;

private:
    using QueueFace = Face<v3_param_value_queue_cpp, ChangeQueue>;
    static const v3_param_value_queue_cpp kTable;
    v3_param_id id_;
    QueueFace face_{&kTable, this};
};

const v3_param_value_queue_cpp ChangeQueue::kTable{
    kUncounted,
    {[](void* self) { return QueueFace::ownerOf(self).id_; },
     [](void* self) { return static_cast<std::int32_t>(QueueFace::ownerOf(self).points.size()); },
     [](void* self, std::int32_t index, std::int32_t* offset, double* value) -> v3_result {
         const auto& point = QueueFace::ownerOf(self).points.at(static_cast<std::size_t>(index));
         *offset = point.first;
         *value = point.second;
         return V3_OK;
     },
     [](void* self, std::int32_t offset, double value, std::int32_t*) -> v3_result {
         QueueFace::ownerOf(self).points.emplace_back(offset, value);
         return V3_OK;
     }}};

/// All points of a block.
class ChangeList {
public:
    ChangeList() = default;
    ChangeList(const ChangeList&) = delete;
    ChangeList& operator=(const ChangeList&) = delete;
    v3_param_changes** get() { return asInterface<v3_param_changes>(face_); }
    ChangeQueue& queue(v3_param_id id) {
        for (ChangeQueue& queue : queues_) {
            if (queue.id() == id) {
                return queue;
            }
        }
        return queues_.emplace_back(id);
    }

private:
    using ListFace = Face<v3_param_changes_cpp, ChangeList>;
    static const v3_param_changes_cpp kTable;
    std::deque<ChangeQueue> queues_;
    ListFace face_{&kTable, this};
};

const v3_param_changes_cpp ChangeList::kTable{
    kUncounted,
    {[](void* self) { return static_cast<std::int32_t>(ListFace::ownerOf(self).queues_.size()); },
     [](void* self, std::int32_t index) {
         return ListFace::ownerOf(self).queues_.at(static_cast<std::size_t>(index)).get();
     },
     [](void* self, v3_param_id* id, std::int32_t*) { return ListFace::ownerOf(self).queue(*id).get(); }}};

} // namespace

namespace {

/// The object, entered and left as hosts do it.
class Module {
public:
    Module() {
        void* const object = ::dlopen(QOR_VST3_OBJECT, RTLD_NOW | RTLD_LOCAL);
        if (object == nullptr) {
            return;
        }
        const auto enter = reinterpret_cast<bool (*)(void*)>(::dlsym(object, "ModuleEntry"));
        const auto get = reinterpret_cast<v3_plugin_factory** (*)()>(::dlsym(object, "GetPluginFactory"));
        leave_ = reinterpret_cast<bool (*)()>(::dlsym(object, "ModuleExit"));
        if (enter != nullptr && get != nullptr && leave_ != nullptr && enter(object)) {
            factory = get();
        }
    }
    ~Module() {
        if (factory != nullptr) {
            v3_cpp_obj_unref(factory);
            leave_();
        }
    }
    Module(const Module&) = delete;
    Module& operator=(const Module&) = delete;

    v3_plugin_factory** factory = nullptr;

private:
    bool (*leave_)() = nullptr;
};

} // namespace

v3_plugin_factory** vst3Factory() {
    static const Module module;
    return module.factory;
}

struct Vst3TestHost::Tables {
    template <class Table>
    static Vst3TestHost& host(void* self) {
        return Face<Table, Vst3TestHost>::ownerOf(self);
    }
    static v3_result queryFrame(void* self, const v3_tuid iid, void** found) {
        Vst3TestHost& own = host<v3_plugin_frame_cpp>(self);
        if (own.offersRunLoop && v3_tuid_match(iid, v3_run_loop_iid)) {
            ++own.runLoopReferences;
            *found = &own.runLoop_;
            return V3_OK;
        }
        *found = nullptr;
        return V3_NO_INTERFACE;
    }
    static v3_result queryApplication(void* self, const v3_tuid iid, void** found) {
        const bool known = v3_tuid_match(iid, v3_funknown_iid) || v3_tuid_match(iid, v3_host_application_iid);
        *found = known ? self : nullptr;
        return known ? V3_OK : V3_NO_INTERFACE;
    }

    static constexpr v3_host_application_cpp kApplication{
        {queryApplication, kUncounted.ref, kUncounted.unref},
        {[](void*, v3_str_128 name) -> v3_result {
             name[0] = 't';
             name[1] = 0;
             return V3_OK;
         },
         [](void* self, v3_tuid, v3_tuid iid, void** made) -> v3_result {
             Vst3TestHost& own = host<v3_host_application_cpp>(self);
             if (!own.offersMessages || !v3_tuid_match(iid, v3_message_iid)) {
                 *made = nullptr;
                 return V3_NO_INTERFACE;
             }
             *made = (new HostMessage(own.messages))->get();
             return V3_OK;
         }}};
    static constexpr ComponentHandlerTable kHandler{
        kUncounted,
        {[](void* self, v3_param_id id) -> v3_result {
             host<ComponentHandlerTable>(self).edits.push_back({HostEdit::begin, id, 0.0});
             return V3_OK;
         },
         [](void* self, v3_param_id id, double value) -> v3_result {
             host<ComponentHandlerTable>(self).edits.push_back({HostEdit::perform, id, value});
             return V3_OK;
         },
         [](void* self, v3_param_id id) -> v3_result {
             host<ComponentHandlerTable>(self).edits.push_back({HostEdit::end, id, 0.0});
             return V3_OK;
         },
         [](void* self, std::int32_t) -> v3_result {
             ++host<ComponentHandlerTable>(self).restarts;
             return V3_OK;
         }}};
    static constexpr v3_plugin_frame_cpp kFrame{
        {queryFrame, kUncounted.ref, kUncounted.unref},
        {[](void* self, v3_plugin_view** view, v3_view_rect* rect) -> v3_result {
            Vst3TestHost& own = host<v3_plugin_frame_cpp>(self);
            own.asked.push_back(*rect);
            return own.allowsResizing ? v3_cpp_obj(view)->on_size(view, rect) : V3_FALSE;
        }}};
    static constexpr v3_run_loop_cpp kRunLoop{
        {kUncounted.query_interface,
         [](void* self) {
             return static_cast<std::uint32_t>(++host<v3_run_loop_cpp>(self).runLoopReferences);
         },
         [](void* self) {
             return static_cast<std::uint32_t>(--host<v3_run_loop_cpp>(self).runLoopReferences);
         }},
        {[](void*, v3_event_handler**, int) -> v3_result { return V3_NOT_IMPLEMENTED; },
         [](void*, v3_event_handler**) -> v3_result { return V3_NOT_IMPLEMENTED; },
         [](void* self, v3_timer_handler** handler, std::uint64_t period) -> v3_result {
             host<v3_run_loop_cpp>(self).timers[handler] = period;
             return V3_OK;
         },
         [](void* self, v3_timer_handler** handler) -> v3_result {
             return host<v3_run_loop_cpp>(self).timers.erase(handler) == 1 ? V3_OK : V3_INVALID_ARG;
         }}};
};

Vst3TestHost::Vst3TestHost()
    : application_{&Tables::kApplication, this}, handler_{&Tables::kHandler, this},
      frame_{&Tables::kFrame, this}, runLoop_{&Tables::kRunLoop, this} {}

void Vst3TestHost::runTimers() {
    const auto now = timers; // a call may end a timer
    for (const auto& [timer, period] : now) {
        if (timers.contains(timer)) {
            v3_cpp_obj(timer)->on_timer(timer);
        }
    }
}

struct MemoryStream::Tables {
    static constexpr StreamTable kStream{
        kUncounted,
        {[](void* self, void* to, std::int32_t count, std::int32_t* done) -> v3_result {
             MemoryStream& own = Face<StreamTable, MemoryStream>::ownerOf(self);
             const auto left = own.bytes.size() - own.position_;
             const std::size_t now = std::min<std::size_t>(std::min(count, own.most_), left);
             std::copy_n(own.bytes.begin() + static_cast<std::ptrdiff_t>(own.position_), now,
                         static_cast<char*>(to));
             own.position_ += now;
             *done = static_cast<std::int32_t>(now);
             return V3_OK;
         },
         [](void* self, void* from, std::int32_t count, std::int32_t* done) -> v3_result {
             MemoryStream& own = Face<StreamTable, MemoryStream>::ownerOf(self);
             const auto* bytes = static_cast<const char*>(from);
             *done = std::min(count, own.most_);
             own.bytes.insert(own.bytes.end(), bytes, bytes + *done);
             return *done > 0 ? V3_OK : V3_FALSE;
         },
         [](void*, std::int64_t, std::int32_t, std::int64_t*) -> v3_result { return V3_NOT_IMPLEMENTED; },
         [](void*, std::int64_t*) -> v3_result { return V3_NOT_IMPLEMENTED; }}};
};

MemoryStream::MemoryStream(std::vector<char> content, std::int32_t most)
    : bytes(std::move(content)), most_(most), face_{&Tables::kStream, this} {}

v3_result attachTo(v3_plugin_view** view, std::uintptr_t parent, const char* platform) {
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the interface takes a window's number as a pointer
    return v3_cpp_obj(view)->attached(view, reinterpret_cast<void*>(parent), platform);
}

Vst3Instance::Vst3Instance(Vst3TestHost& host) {
    v3_plugin_factory** const factory = vst3Factory();
    v3_class_info info{};
    v3_cpp_obj(factory)->get_class_info(factory, 0, &info);
    v3_cpp_obj(factory)->create_instance(factory, info.class_id, v3_component_iid,
                                         reinterpret_cast<void**>(&component));
    v3_cpp_obj_initialize(component, host.context());
    v3_cpp_obj_query_interface(component, v3_edit_controller_iid, &controller);
    v3_cpp_obj_query_interface(component, v3_audio_processor_iid, &processor);
    v3_cpp_obj_initialize(controller, host.context());
    v3_cpp_obj(controller)->set_component_handler(controller, host.handler());
}

Vst3Instance::~Vst3Instance() {
    v3_cpp_obj_terminate(controller);
    v3_cpp_obj_unref(controller);
    v3_cpp_obj_unref(processor);
    v3_cpp_obj_terminate(component);
    v3_cpp_obj_unref(component);
}

void Vst3Instance::activate(double sampleRate) {
    v3_process_setup setup{V3_REALTIME, V3_SAMPLE_32, 4096, sampleRate};
    v3_cpp_obj(processor)->setup_processing(processor, &setup);
    v3_cpp_obj(component)->set_active(component, 1);
    v3_cpp_obj(processor)->set_processing(processor, 1);
}

void Vst3Instance::deactivate() {
    v3_cpp_obj(processor)->set_processing(processor, 0);
    v3_cpp_obj(component)->set_active(component, 0);
}

std::vector<float> Vst3Instance::process(const std::vector<float>& input, std::int32_t block,
                                         const std::vector<HostChange>& changes) {
    const auto frames = static_cast<std::int32_t>(input.size() / 2);
    std::vector<float> output(input.size());
    std::array<std::vector<float>, 4> channels;
    channels.fill(std::vector<float>(static_cast<std::size_t>(block)));
    std::array<float*, 2> inputs{channels[0].data(), channels[1].data()};
    std::array<float*, 2> outputs{channels[2].data(), channels[3].data()};
    for (std::int32_t start = 0; start < frames; start += block) {
        const std::int32_t now = std::min(block, frames - start);
        for (std::size_t i = 0; i < 2 * static_cast<std::size_t>(now); ++i) {
            inputs[i % 2][i / 2] = input[2 * static_cast<std::size_t>(start) + i];
        }
        ChangeList list;
        ChangeList told;
        for (const HostChange& change : changes) {
            if (change.offset >= start && change.offset < start + now) {
                list.queue(change.id).points.emplace_back(change.offset - start, change.value);
            }
        }
        v3_audio_bus_buffers in{};
        in.num_channels = 2;
        in.channel_buffers_32 = inputs.data();
        v3_audio_bus_buffers out = in;
        out.channel_buffers_32 = outputs.data();
        v3_process_data data{};
        data.process_mode = V3_REALTIME;
        data.symbolic_sample_size = V3_SAMPLE_32;
        data.nframes = now;
        data.num_input_buses = data.num_output_buses = 1;
        data.inputs = &in;
        data.outputs = &out;
        data.input_params = list.get();
        data.output_params = told.get();
        v3_cpp_obj(processor)->process(processor, &data);
        for (std::size_t i = 0; i < 2 * static_cast<std::size_t>(now); ++i) {
            output[2 * static_cast<std::size_t>(start) + i] = outputs[i % 2][i / 2];
        }
    }
    return output;
}

void Vst3Instance::flush(const std::vector<HostChange>& changes) {
    ChangeList list;
    ChangeList told;
    for (const HostChange& change : changes) {
        list.queue(change.id).points.emplace_back(change.offset, change.value);
    }
    v3_process_data data{};
    data.process_mode = V3_REALTIME;
    data.symbolic_sample_size = V3_SAMPLE_32;
    data.input_params = list.get();
    data.output_params = told.get();
    v3_cpp_obj(processor)->process(processor, &data);
}

double Vst3Instance::value(v3_param_id id) const {
    return v3_cpp_obj(controller)->get_parameter_normalised(controller, id);
}

std::vector<char> Vst3Instance::state(std::int32_t most) const {
    MemoryStream stream({}, most);
    return v3_cpp_obj(component)->get_state(component, stream.get()) == V3_OK ? stream.bytes
                                                                              : std::vector<char>();
}

bool Vst3Instance::restore(const std::vector<char>& bytes, std::int32_t most) const {
    MemoryStream stream(bytes, most);
    return v3_cpp_obj(component)->set_state(component, stream.get()) == V3_OK;
}

v3_plugin_view** Vst3Instance::createView() const {
    return v3_cpp_obj(controller)->create_view(controller, "editor");
}

} // namespace test
