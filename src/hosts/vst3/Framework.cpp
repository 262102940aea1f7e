// The framework's VST3 wrapper, compiled as it is packaged.
#include "hosts/vst3/LocaleFreeNumbers.h"

#include "DistrhoPluginMain.cpp"
