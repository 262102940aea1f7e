// The plug-in interface's headers, as the distribution installs them.
#pragma once

#include <clap/entry.h>
#include <clap/events.h>
#include <clap/ext/audio-ports.h>
#include <clap/ext/gui.h>
#include <clap/ext/latency.h>
#include <clap/ext/params.h>
#include <clap/ext/state.h>
#include <clap/ext/thread-check.h>
#include <clap/ext/timer-support.h>
#include <clap/host.h>
#include <clap/plugin-factory.h>
#include <clap/plugin-features.h>
#include <clap/plugin.h>
#include <clap/process.h>
#include <clap/stream.h>
#include <clap/string-sizes.h>
#include <clap/version.h>
