// Stands in for the kernel's MIDI sequencer, so that a host which insists on one starts on a machine without
// sound devices. Preloaded; every call succeeds and nothing ever arrives.
//   cc -shared -fPIC -o alsa-seq-stub.so alsa-seq-stub.c && LD_PRELOAD=./alsa-seq-stub.so qtractor
#include <errno.h>
#include <poll.h>
#include <unistd.h>

// Only pointers to the sequencer's own types pass through here, so none of them is needed by name.
typedef void Sequencer;

static char sequencer[1024];      // what the handle points to; nobody looks into it
static int silence[2] = {-1, -1}; // a pipe that is never written to
static int ports;

int snd_seq_open(Sequencer** handle, const char* name, int streams, int mode) {
    (void)name, (void)streams, (void)mode;
    if (silence[0] < 0 && pipe(silence) != 0) {
        return -errno;
    }
    *handle = sequencer;
    return 0;
}

int snd_seq_client_id(Sequencer* handle) {
    (void)handle;
    return 128; // the first one that the sequencer gives to a program
}

int snd_seq_alloc_queue(Sequencer* handle) {
    (void)handle;
    return 1;
}

int snd_seq_create_simple_port(Sequencer* handle, const char* name, unsigned capabilities, unsigned type) {
    (void)handle, (void)name, (void)capabilities, (void)type;
    return ports++;
}

int snd_seq_poll_descriptors_count(Sequencer* handle, short events) {
    (void)handle, (void)events;
    return 1;
}

int snd_seq_poll_descriptors(Sequencer* handle, struct pollfd* descriptors, unsigned space, short events) {
    (void)handle, (void)events;
    if (space == 0) {
        return 0;
    }
    descriptors[0] = (struct pollfd){.fd = silence[0], .events = POLLIN, .revents = 0};
    return 1;
}

int snd_seq_event_input(Sequencer* handle, void** event) {
    (void)handle;
    *event = NULL;
    return -EAGAIN;
}

// What only has to succeed: its arguments are never looked at.
#define SUCCEEDS(name)                                                                                       \
    int name(void) {                                                                                         \
        return 0;                                                                                            \
    }
SUCCEEDS(snd_seq_close)
SUCCEEDS(snd_seq_control_queue)
SUCCEEDS(snd_seq_delete_simple_port)
SUCCEEDS(snd_seq_drain_output)
SUCCEEDS(snd_seq_drop_input)
SUCCEEDS(snd_seq_drop_output)
SUCCEEDS(snd_seq_event_input_pending)
SUCCEEDS(snd_seq_event_output)
SUCCEEDS(snd_seq_event_output_direct)
SUCCEEDS(snd_seq_free_event)
SUCCEEDS(snd_seq_free_queue)
SUCCEEDS(snd_seq_get_port_info)
SUCCEEDS(snd_seq_get_queue_status)
SUCCEEDS(snd_seq_get_queue_tempo)
SUCCEEDS(snd_seq_remove_events)
SUCCEEDS(snd_seq_set_client_name)
SUCCEEDS(snd_seq_set_port_info)
SUCCEEDS(snd_seq_set_queue_tempo)
SUCCEEDS(snd_seq_set_queue_timer)
SUCCEEDS(snd_seq_subscribe_port)
SUCCEEDS(snd_seq_unsubscribe_port)

// Nobody else is there to be found.
#define FINDS_NOTHING(name)                                                                                  \
    int name(void) {                                                                                         \
        return -ENOENT;                                                                                      \
    }
FINDS_NOTHING(snd_seq_get_any_client_info)
FINDS_NOTHING(snd_seq_get_any_port_info)
FINDS_NOTHING(snd_seq_query_next_client)
FINDS_NOTHING(snd_seq_query_next_port)
FINDS_NOTHING(snd_seq_query_port_subscribers)
FINDS_NOTHING(snd_timer_open)
FINDS_NOTHING(snd_timer_query_open)
