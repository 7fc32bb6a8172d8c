#pragma once

namespace ChipLoom {

// Bit clocks of ports that divide their bus clock. All are 0 for a clock or a divisor that is not positive.

/// The rate that a port reaches when `bitRate` is asked for: the clock over the whole divider whose rate is nearer.
/// A port that is `doubled` counts half clocks. In bit/s; the clock in Hz.
double realBaudRate(double clockHz, double bitRate, bool doubled = false);

/// How far `real` lies from `wanted`, in percent; 0 if `wanted` is not positive.
double errorPercent(double real, double wanted);

/// The clock of a card: the port's clock, or that over `division` + 2. Same unit as `clock`.
double sdioClock(double clock, int division, bool bypass);

/// Clocks of an SDRAM between two refreshes, so that 2^`rowLines` rows are refreshed within `refreshMs`: rounded down
/// and 20 less, which an access under way may take; 0 to 8191, as the counter has 13 bits.
int sdramRefreshCount(double clockHz, int rowLines, double refreshMs);

/// Dividers of an audio port: the frame clock is the port's clock over `clocksPerSample` times (2 x `div` + `odd`).
struct I2SDivider
{
    int div = 0;             ///< 2 to 1023
    int odd = 0;             ///< 0 or 1
    double sampleRate = 0;   ///< Hz
    double errorPercent = 0; ///< of `sampleRate` against what was asked for
};

/// Clocks of the divided clock that a sample of all channels takes: 256 with the master clock output, else the bits of
/// a frame. PCM frames hold one channel, all others two.
int i2sClocksPerSample(bool masterClock, bool pcm, int channelBits);

/// The dividers whose rate is nearest to `sampleRate`, the smaller divider on a tie; the end of the range where the
/// rate cannot be reached.
I2SDivider i2sDivider(double clockHz, double sampleRate, int clocksPerSample);

} // namespace ChipLoom
