// Wall and processor time of the module's side and of its floor, timed in the same
// iterations, reported as the counters that ./dev bench's summary reads.
#pragma once

#include <benchmark/benchmark.h>

#include <chrono>
#include <ctime>

namespace bench {

/// The processor time of this thread, in seconds: what a side cost, whatever
/// else the machine was doing meanwhile (the database runs in this thread).
inline double threadSeconds() {
    timespec t{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
    return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_nsec) / 1e9;
}

/// What a benchmark must stay under: a time, a ratio to its floor, or both
/// (0 where there is none).
struct Target {
    double ms = 0;
    double ratio = 0;
};

/// Both sides summed over the iterations.
class Sides {
public:
    template <class F> void timeModule(F &&f) { time(module_, moduleCpu_, f); }
    template <class F> void timeFloor(F &&f) { time(floor_, floorCpu_, f); }

    /// Per iteration: module_ms, floor_ms and ratio in wall time, their
    /// processor times and cpu_ratio; and for the summary time_ns, cpu_ns,
    /// floor_ns, floor_cpu_ns, target_ns and target_ratio.
    void report(benchmark::State &state, Target target = {}) const {
        const double n = static_cast<double>(state.iterations());
        if (n == 0) {
            return;
        }
        state.counters["module_ms"] = 1e3 * module_ / n;
        state.counters["floor_ms"] = 1e3 * floor_ / n;
        state.counters["ratio"] = module_ / floor_;
        state.counters["module_cpu_ms"] = 1e3 * moduleCpu_ / n;
        state.counters["floor_cpu_ms"] = 1e3 * floorCpu_ / n;
        state.counters["cpu_ratio"] = moduleCpu_ / floorCpu_;
        state.counters["time_ns"] = 1e9 * module_ / n;
        state.counters["cpu_ns"] = 1e9 * moduleCpu_ / n;
        state.counters["floor_ns"] = 1e9 * floor_ / n;
        state.counters["floor_cpu_ns"] = 1e9 * floorCpu_ / n;
        if (target.ms > 0) {
            state.counters["target_ns"] = 1e6 * target.ms;
        }
        if (target.ratio > 0) {
            state.counters["target_ratio"] = target.ratio;
        }
    }

private:
    template <class F> static void time(double &wall, double &cpu, F &&f) {
        const auto t0 = std::chrono::steady_clock::now();
        const double c0 = threadSeconds();
        f();
        cpu += threadSeconds() - c0;
        wall += std::chrono::duration<double>(std::chrono::steady_clock::now() - t0).count();
    }

    double module_ = 0, moduleCpu_ = 0, floor_ = 0, floorCpu_ = 0;
};

} // namespace bench
