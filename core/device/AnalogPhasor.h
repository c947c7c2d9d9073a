#pragma once

namespace ZemDevice {

// What one analog output channel gives out: a sine of this amplitude, phase angle in degrees and frequency in Hz.
struct AnalogPhasor {
    double amplitude = 0.0;
    double angle = 0.0;
    double frequency = 50.0;

    // Exact comparison: a NaN never equals anything, so setting one always counts as a change.
    bool operator==(const AnalogPhasor& other) const
    {
        return amplitude == other.amplitude && angle == other.angle && frequency == other.frequency;
    }
    bool operator!=(const AnalogPhasor& other) const { return !(*this == other); }
};

} // namespace ZemDevice
