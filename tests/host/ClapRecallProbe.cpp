// A process of its own around the built plug-in, for what must outlive one.
//   save SEED STATE SOUND   gives every parameter a value, writes the state, then what it makes of a signal
//   load STATE SOUND        takes the state back, then writes what it makes of the same signal
//   fresh SOUND             the same signal through an instance as it comes
// Exit status 0: done, 1: the plug-in or a file refused, 2: wrong usage.
#include "ClapRendering.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

using namespace test;

namespace {

void giveValues(ClapPluginUnderTest& plugin, unsigned seed) {
    std::mt19937 random(seed);
    for (clap_id id = 0; id < 12; ++id) {
        double value = static_cast<double>(static_cast<float>(random()) / 4294967296.0F);
        if (id == 6) {
            value = static_cast<double>(random() % 4); // the mode
        } else if (id == 8 || id == 11) {
            value = static_cast<double>(random() % 2); // switches
        } else if (id == 7) {
            value = 0.0; // bypassed, no other value would sound
        }
        plugin.setValue(id, value);
    }
}

bool writeState(const ClapPluginUnderTest& plugin, const char* file) {
    const std::vector<std::uint8_t> bytes = plugin.save();
    std::ofstream stream(file, std::ios::binary);
    stream.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    return !bytes.empty() && stream.flush().good();
}

bool readState(ClapPluginUnderTest& plugin, const char* file) {
    std::ifstream stream(file, std::ios::binary);
    return plugin.load({std::istreambuf_iterator<char>(stream), {}});
}

bool writeSound(ClapPluginUnderTest& plugin, const char* file) {
    if (!plugin.activate()) {
        return false;
    }
    const Stereo made = renderClap(plugin, noise(20000, 1.5F), 256);
    std::ofstream stream(file, std::ios::binary);
    for (const std::vector<float>* channel : {&made.left, &made.right}) {
        stream.write(reinterpret_cast<const char*>(channel->data()),
                     static_cast<std::streamsize>(channel->size() * sizeof(float)));
    }
    return stream.flush().good();
}

} // namespace

int main(int count, char** arguments) {
    const std::string_view mode = count > 1 ? arguments[1] : "";
    ClapTestHost host;
    ClapPluginUnderTest plugin(host);
    bool done = false;
    if (mode == "save" && count == 5) {
        giveValues(plugin, static_cast<unsigned>(std::strtoul(arguments[2], nullptr, 10)));
        done = writeState(plugin, arguments[3]) && writeSound(plugin, arguments[4]);
    } else if (mode == "load" && count == 4) {
        done = readState(plugin, arguments[2]) && writeSound(plugin, arguments[3]);
    } else if (mode == "fresh" && count == 3) {
        done = writeSound(plugin, arguments[2]);
    } else {
        return 2;
    }
    return done ? 0 : 1;
}
