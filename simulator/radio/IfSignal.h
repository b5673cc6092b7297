#pragma once

namespace sim {

/// A carrier at the output of a receiver or the combiner.
struct IfSignal
{
    double offset = 0;        ///< kHz above the tuned frequency
    double noiseDistance = 0; ///< dBHz, carrier power over the noise in 1 Hz
    int mode = -1;            ///< code of its modulation; negative: none that a demodulator knows
    double rate = 0;          ///< bits a second
};

} // namespace sim
