// Everything of the platform's audio layer, brought into the system's namespace.
#pragma once

#include "platform/audio/AUAudioUnit.h"
#include "platform/audio/AUAudioUnitBus.h"
#include "platform/audio/AUAudioUnitBusArray.h"
#include "platform/audio/AUAudioUnitPreset.h"
#include "platform/audio/AUParameterTree.h"
#include "platform/audio/AVAudioEngine.h"
#include "platform/audio/AVAudioFormat.h"
#include "platform/audio/AVAudioPCMBuffer.h"
#include "platform/audio/AVAudioUnitEffect.h"
#include "platform/audio/AudioComponent.h"
#include "platform/audio/AudioTypes.h"
#include "platform/audio/AudioUnitHandle.h"
#include "platform/core/Core.h"
