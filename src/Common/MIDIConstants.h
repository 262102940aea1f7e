// MIDI status bytes, controller numbers and meta-event types.
#pragma once

#include <cstdint>

namespace qor {

inline constexpr std::uint8_t STATUS_NOTEOFF = 128;
inline constexpr std::uint8_t STATUS_NOTEON = 144;
inline constexpr std::uint8_t STATUS_PPRESSURE = 160;
inline constexpr std::uint8_t STATUS_CONTROLLER = 176;
inline constexpr std::uint8_t STATUS_PROGRAM = 192;
inline constexpr std::uint8_t STATUS_CPRESSURE = 208;
inline constexpr std::uint8_t STATUS_PITCHBEND = 224;
inline constexpr std::uint8_t STATUS_SYSEX = 240;
inline constexpr std::uint8_t STATUS_TIMECODE = 241;
inline constexpr std::uint8_t STATUS_SONGPOSITION = 242;
inline constexpr std::uint8_t STATUS_SONGSELECT = 243;
inline constexpr std::uint8_t STATUS_RESERVED1 = 244;
inline constexpr std::uint8_t STATUS_RESERVED2 = 245;
inline constexpr std::uint8_t STATUS_TUNEREQUEST = 246;
inline constexpr std::uint8_t STATUS_EOX = 247;
inline constexpr std::uint8_t STATUS_TIMINGCLOCK = 248;
inline constexpr std::uint8_t STATUS_RESERVED3 = 249;
inline constexpr std::uint8_t STATUS_START = 250;
inline constexpr std::uint8_t STATUS_CONTINUE = 251;
inline constexpr std::uint8_t STATUS_STOP = 252;
inline constexpr std::uint8_t STATUS_RESERVED4 = 253;
inline constexpr std::uint8_t STATUS_ACTIVESENSING = 254;
inline constexpr std::uint8_t STATUS_RESET = 255;
inline constexpr std::uint8_t STATUS_META = STATUS_RESERVED4;

inline constexpr std::uint8_t CONTROLLER_BANKSELECT_MSB = 0;
inline constexpr std::uint8_t CONTROLLER_MODWHEEL = 1;
inline constexpr std::uint8_t CONTROLLER_DATA_MSB = 6;
inline constexpr std::uint8_t CONTROLLER_VOLUME = 7;
inline constexpr std::uint8_t CONTROLLER_PAN = 10;
inline constexpr std::uint8_t CONTROLLER_EXPRESSION = 11;
inline constexpr std::uint8_t CONTROLLER_BANKSELECT_LSB = 32;
inline constexpr std::uint8_t CONTROLLER_SUSTAIN = 64;
inline constexpr std::uint8_t CONTROLLER_PORTA = 65;
inline constexpr std::uint8_t CONTROLLER_HOLD2 = 69;
inline constexpr std::uint8_t CONTROLLER_RESONANCE = 71;
inline constexpr std::uint8_t CONTROLLER_RELEASE = 72;
inline constexpr std::uint8_t CONTROLLER_ATTACK = 73;
inline constexpr std::uint8_t CONTROLLER_CUTOFF = 74;
inline constexpr std::uint8_t CONTROLLER_DECAY = 75;
inline constexpr std::uint8_t CONTROLLER_SUSTAIN2 = 76;
inline constexpr std::uint8_t CONTROLLER_RESET_CONTROLLERS = 121;
inline constexpr std::uint8_t CONTROLLER_NOTES_OFF = 123;
inline constexpr std::uint8_t CONTROLLER_SOUNDS_OFF = 123;

// Controllers without a use of their own, named by their numbers.
inline constexpr std::uint8_t CONTROLLER_003 = 3;
inline constexpr std::uint8_t CONTROLLER_008 = 8;
inline constexpr std::uint8_t CONTROLLER_009 = 9;
inline constexpr std::uint8_t CONTROLLER_016 = 16;
inline constexpr std::uint8_t CONTROLLER_017 = 17;
inline constexpr std::uint8_t CONTROLLER_018 = 18;
inline constexpr std::uint8_t CONTROLLER_019 = 19;
inline constexpr std::uint8_t CONTROLLER_020 = 20;
inline constexpr std::uint8_t CONTROLLER_021 = 21;
inline constexpr std::uint8_t CONTROLLER_022 = 22;
inline constexpr std::uint8_t CONTROLLER_023 = 23;
inline constexpr std::uint8_t CONTROLLER_024 = 24;
inline constexpr std::uint8_t CONTROLLER_025 = 25;
inline constexpr std::uint8_t CONTROLLER_026 = 26;
inline constexpr std::uint8_t CONTROLLER_027 = 27;
inline constexpr std::uint8_t CONTROLLER_028 = 28;
inline constexpr std::uint8_t CONTROLLER_029 = 29;
inline constexpr std::uint8_t CONTROLLER_030 = 30;
inline constexpr std::uint8_t CONTROLLER_031 = 31;
inline constexpr std::uint8_t CONTROLLER_102 = 102;
inline constexpr std::uint8_t CONTROLLER_103 = 103;
inline constexpr std::uint8_t CONTROLLER_104 = 104;
inline constexpr std::uint8_t CONTROLLER_105 = 105;
inline constexpr std::uint8_t CONTROLLER_106 = 106;
inline constexpr std::uint8_t CONTROLLER_107 = 107;
inline constexpr std::uint8_t CONTROLLER_108 = 108;
inline constexpr std::uint8_t CONTROLLER_109 = 109;
inline constexpr std::uint8_t CONTROLLER_110 = 110;
inline constexpr std::uint8_t CONTROLLER_111 = 111;
inline constexpr std::uint8_t CONTROLLER_112 = 112;

inline constexpr std::uint8_t META_SEQUENCENUMBER = 0;
inline constexpr std::uint8_t META_TEXT = 1;
inline constexpr std::uint8_t META_COPYRIGHT = 2;
inline constexpr std::uint8_t META_TRACKNAME = 3;
inline constexpr std::uint8_t META_INSTRUMENTNAME = 4;
inline constexpr std::uint8_t META_LYRICS = 5;
inline constexpr std::uint8_t META_MARKER = 6;
inline constexpr std::uint8_t META_CUEPOINT = 7;
inline constexpr std::uint8_t META_PROGRAMNAME = 8;
inline constexpr std::uint8_t META_DEVICENAME = 9;
inline constexpr std::uint8_t META_CHANNELPREFIX = 32;
inline constexpr std::uint8_t META_MIDIPORT = 33;
inline constexpr std::uint8_t META_EOT = 47;
inline constexpr std::uint8_t META_SETTEMPO = 81;
inline constexpr std::uint8_t META_SMTPOFFSET = 84;
inline constexpr std::uint8_t META_TIMESIGNATURE = 88;
inline constexpr std::uint8_t META_KEYSIGNATURE = 89;
inline constexpr std::uint8_t META_SPECIFIC = 127;
inline constexpr std::uint8_t META_SYSEX = 240;
inline constexpr std::uint8_t META_UNKNOWN = 255;
inline constexpr std::uint8_t META_EXTENDEDNOTE = 255;
inline constexpr std::uint8_t META_AUPARAMETER = 255;
inline constexpr std::uint8_t META_AUPRESET = 255;

} // namespace qor
