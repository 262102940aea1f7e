#include "hosts/lv2/Lv2Description.h"

#include "hosts/lv2/Lv2Ports.h"
#include "hosts/lv2/TurtleText.h"

#include <cctype>

namespace qor::lv2 {

namespace {

constexpr const char* kPrefixes = "@prefix doap: <http://usefulinc.com/ns/doap#> .\n"
                                  "@prefix foaf: <http://xmlns.com/foaf/0.1/> .\n"
                                  "@prefix lv2: <http://lv2plug.in/ns/lv2core#> .\n"
                                  "@prefix opts: <http://lv2plug.in/ns/ext/options#> .\n"
                                  "@prefix bufs: <http://lv2plug.in/ns/ext/buf-size#> .\n"
                                  "@prefix pset: <http://lv2plug.in/ns/ext/presets#> .\n"
                                  "@prefix rdf: <http://www.w3.org/1999/02/22-rdf-syntax-ns#> .\n"
                                  "@prefix rdfs: <http://www.w3.org/2000/01/rdf-schema#> .\n"
                                  "@prefix ui: <http://lv2plug.in/ns/extensions/ui#> .\n"
                                  "@prefix units: <http://lv2plug.in/ns/extensions/units#> .\n"
                                  "@prefix urid: <http://lv2plug.in/ns/ext/urid#> .\n\n";

// An even minor version is a release; it rises with every change of the ports.
constexpr int kMinorVersion = 2;
constexpr int kMicroVersion = 0;

std::string subject(const std::string& uri) {
    return "<" + uri + ">";
}

std::string port(std::uint32_t index, const char* types, const std::string& symbol, const std::string& name,
                 const std::string& rest) {
    return std::string("    [\n        a ") + types + " ;\n        lv2:index " + platform::text(index) +
           " ;\n        lv2:symbol " + quoted(symbol) + " ;\n        lv2:name " + quoted(name) + rest +
           "\n    ]";
}

std::string line(const std::string& text) {
    return " ;\n        " + text;
}

std::string range(const std::string& lowest, const std::string& highest, const std::string& start) {
    return line("lv2:default " + start) + line("lv2:minimum " + lowest) + line("lv2:maximum " + highest);
}

std::string valueOf(const ParameterRow& row, float value) {
    return row.isStepped() ? platform::text(static_cast<int>(value)) : number(value);
}

std::string parameterPort(const ParameterRow& row) {
    std::string rest =
        range(valueOf(row, row.minimum), valueOf(row, row.maximum), valueOf(row, row.defaultValue));
    if (row.unit == AudioUnitParameterUnit::Boolean) {
        rest += line("lv2:portProperty lv2:toggled");
    } else if (row.isStepped()) {
        rest += line("lv2:portProperty lv2:integer , lv2:enumeration");
    } else {
        rest += line("units:unit units:coef");
    }
    int step = 0;
    for (const char* name : row.valueNames) {
        rest += line("lv2:scalePoint [ rdfs:label " + quoted(name) + " ; rdf:value " +
                     platform::text(step++) + " ]");
    }
    rest += line("rdfs:comment " + quoted(row.help));
    return port(kFirstParameter + static_cast<std::uint32_t>(row.address), "lv2:InputPort , lv2:ControlPort",
                row.symbol, row.hostName, rest);
}

std::string slug(const std::string& name) {
    std::string result;
    for (const char c : name) {
        const auto byte = static_cast<unsigned char>(c);
        if (std::isalnum(byte) != 0 && byte < 0x80) {
            result += static_cast<char>(std::tolower(byte));
        } else if (!result.empty() && result.back() != '-') {
            result += '-';
        }
    }
    while (!result.empty() && result.back() == '-') {
        result.pop_back();
    }
    return result;
}

} // namespace

std::string presetUri(const std::string& name) {
    return std::string(kPluginUri) + "#preset-" + slug(name);
}

std::string manifestTurtle(const std::vector<PresetValues>& presets) {
    std::string result = kPrefixes;
    result += subject(kPluginUri) +
              "\n    a lv2:Plugin ;\n    lv2:binary <qor-limiter-lv2.so> ;\n"
              "    ui:ui " +
              subject(kUiUri) + " ;\n    rdfs:seeAlso <qor-limiter.ttl> .\n";
    result += "\n" + subject(kUiUri) +
              "\n    a ui:X11UI ;\n    ui:binary <qor-limiter-lv2-ui.so> ;\n"
              "    lv2:requiredFeature ui:idleInterface ;\n"
              "    lv2:optionalFeature ui:parent , ui:resize , ui:touch , opts:options , urid:map ;\n"
              "    lv2:extensionData ui:idleInterface , ui:resize .\n";
    for (const PresetValues& preset : presets) {
        result += "\n" + subject(presetUri(preset.name)) + "\n    a pset:Preset ;\n    lv2:appliesTo " +
                  subject(kPluginUri) + " ;\n    rdfs:label " + quoted(preset.name) +
                  " ;\n    rdfs:seeAlso <presets.ttl> .\n";
    }
    return result;
}

std::string pluginTurtle() {
    std::string result = kPrefixes;
    result += "<urn:qor:project>\n    a doap:Project ;\n    doap:name \"QOR Limiter\" ;\n"
              "    doap:license <http://opensource.org/licenses/ISC> ;\n"
              "    doap:maintainer [ a foaf:Person ; foaf:name \"The QOR Limiter developers\" ] .\n\n";
    result +=
        subject(kPluginUri) +
        "\n    a lv2:Plugin , lv2:LimiterPlugin , doap:Project ;\n    doap:name \"QOR Limiter\" ;\n"
        "    doap:license <http://opensource.org/licenses/ISC> ;\n"
        "    doap:maintainer [ a foaf:Person ; foaf:name \"The QOR Limiter developers\" ] ;\n"
        "    lv2:project <urn:qor:project> ;\n    lv2:minorVersion " +
        platform::text(kMinorVersion) + " ;\n    lv2:microVersion " + platform::text(kMicroVersion) +
        " ;\n    lv2:optionalFeature lv2:hardRTCapable , urid:map , opts:options , bufs:boundedBlockLength "
        ";\n"
        "    rdfs:comment " +
        quoted("A stereo peak limiter without latency: two gain laws, four stereo modes, an input filter, "
               "audition and mix, and a final limiter that holds the output at or below full scale.") +
        " ;\n    lv2:port\n";
    constexpr const char* kAudioIn = "lv2:InputPort , lv2:AudioPort";
    constexpr const char* kAudioOut = "lv2:OutputPort , lv2:AudioPort";
    std::vector<std::string> ports{port(kInputLeft, kAudioIn, "in_left", "Left In", ""),
                                   port(kInputRight, kAudioIn, "in_right", "Right In", ""),
                                   port(kOutputLeft, kAudioOut, "out_left", "Left Out", ""),
                                   port(kOutputRight, kAudioOut, "out_right", "Right Out", "")};
    for (const ParameterRow& row : kParameterTable) {
        ports.push_back(parameterPort(row));
    }
    ports.push_back(port(
        kEnabled, "lv2:InputPort , lv2:ControlPort", "enabled", "Enabled",
        range("0", "1", "1") + line("lv2:portProperty lv2:toggled") + line("lv2:designation lv2:enabled") +
            line("rdfs:comment " + quoted("Off lets the input through untouched, without a click."))));
    std::uint32_t index = kFirstMeter;
    for (const MeterPort& meter : kMeterPorts) {
        ports.push_back(port(index++, "lv2:OutputPort , lv2:ControlPort", meter.symbol, meter.name,
                             range("0.0", "1.0", number(meter.rest)) + line("units:unit units:coef")));
    }
    for (std::size_t i = 0; i < ports.size(); ++i) {
        result += ports[i] + (i + 1 < ports.size() ? " ,\n" : " .\n");
    }
    return result;
}

std::string presetsTurtle(const std::vector<PresetValues>& presets) {
    std::string result = kPrefixes;
    for (const PresetValues& preset : presets) {
        result += subject(presetUri(preset.name)) + "\n    a pset:Preset ;\n    lv2:appliesTo " +
                  subject(kPluginUri) + " ;\n    rdfs:label " + quoted(preset.name) + " ;\n    lv2:port\n";
        for (const ParameterRow& row : kParameterTable) {
            result += "    [ lv2:symbol " + quoted(row.symbol) + " ; pset:value " +
                      valueOf(row, preset.values[row.address]) + " ]" +
                      (row.address + 1 < kParameterCount ? " ,\n" : " .\n\n");
        }
    }
    return result;
}

} // namespace qor::lv2
