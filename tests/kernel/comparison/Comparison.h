// Runs the shipped kernel and the model side by side on random work.
#pragma once

#include <cstdint>
#include <string>

namespace comparison {

/// One kernel's life: random rates, parameters, events, signals, block lengths, resets. Empty if every output
/// sample and every field agreed bit for bit after every call (two NaN count as equal, since no rule says
/// which bits a NaN has), else the first difference.
std::string compareLife(std::uint32_t seed);

} // namespace comparison
