#pragma once
// A test signal for the live view: four channels sampled `rate` times a
// second against the time in seconds since the start: a noisy sine, a square
// wave and a sawtooth in volts, and a temperature that wanders (a random walk
// drawn back to its mean) in degrees Celsius, on an axis of its own.
//
// It produces by the clock, on a thread of its own: every tick, the items due
// since the start less those made, so the rate holds whatever the frame rate
// and however late a tick comes. At a million items a second per channel the
// work would otherwise take time from the window's frames, and it posts as an
// acquisition thread would.

#include "LiveSource.h"

#include <cstdint>
#include <random>

namespace kelview {

class SignalGenerator final : public LiveSource {
public:
    static constexpr std::chrono::milliseconds tick{10};

    explicit SignalGenerator(double rate);
    ~SignalGenerator() override;

    QString name() const override;
    QStringList bind(KelChartVariableList& variables, const Orv::Chart::AxisPairs& pairs) override;
    // The channels, without rows.
    static Orv::Chart::DataSet table();
    // Items `first` up to `end` of every channel, in the table's order.
    std::vector<Items> produce(std::uint64_t first, std::uint64_t end);

private:
    void run() override;

    double m_rate;
    std::mt19937_64 m_random{20240331};
    std::normal_distribution<double> m_noise;
    double m_temperature = 21.0;
};

} // namespace kelview
