// Everything of the platform's audio layer, brought into the system's namespace.
#pragma once

#include "platform/audio/AUAudioUnitBus.h"
#include "platform/audio/AUParameterTree.h"
#include "platform/audio/AVAudioFormat.h"
#include "platform/audio/AVAudioPCMBuffer.h"
#include "platform/audio/AudioTypes.h"
#include "platform/core/Core.h"
