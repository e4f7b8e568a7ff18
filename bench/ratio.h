// Speed claims as ratios. Absolute times mean little on a shared machine, so each claim is measured
// against a reference in the same run, the two taking turns, and the medians are compared.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string_view>
#include <vector>

namespace servo::bench {

// Median seconds of one call.
struct Medians {
    double ours = 0;
    double reference = 0;
};

template <typename Function>
double seconds_per_call(Function& function, int calls) {
    const auto begin = std::chrono::steady_clock::now();
    for (int i = 0; i < calls; ++i)
        function();
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;
    return taken.count() / calls;
}

inline double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

// One turn calls `ours` and `reference` as often as told, so that both take long enough for the
// clock. A first turn warms up and does not count. `prepare` runs before each side's turn and is
// not measured. Keep results alive with benchmark::DoNotOptimize.
template <typename Ours, typename Reference, typename Prepare>
Medians take_turns(int turns, Ours ours, int ours_calls, Reference reference, int reference_calls,
                   Prepare prepare) {
    std::vector<double> of_ours;
    std::vector<double> of_reference;
    for (int turn = -1; turn < turns; ++turn) {
        prepare();
        const double a = seconds_per_call(ours, ours_calls);
        prepare();
        const double b = seconds_per_call(reference, reference_calls);
        if (turn < 0) continue;
        of_ours.push_back(a);
        of_reference.push_back(b);
    }
    return {median(of_ours), median(of_reference)};
}

template <typename Ours, typename Reference>
Medians take_turns(int turns, Ours ours, int ours_calls, Reference reference, int reference_calls) {
    return take_turns(turns, ours, ours_calls, reference, reference_calls, [] {});
}

// Prints one line for each claim; its exit status is that of the program.
class Report {
  public:
    void at_most(std::string_view name, double measured, double limit) {
        line(name, measured, limit, measured <= limit);
    }
    void at_least(std::string_view name, double measured, double limit) {
        line(name, measured, limit, measured >= limit);
    }
    int exit_status() const { return failed_ ? 1 : 0; }

  private:
    // A measurement that is no number fails, whatever the limit.
    void line(std::string_view name, double measured, double limit, bool ok) {
        if (!ok) failed_ = true;
        std::printf("ratio %.*s measured %.4g limit %.4g %s\n", static_cast<int>(name.size()),
                    name.data(), measured, limit, ok ? "ok" : "FAILED");
        std::fflush(stdout);
    }

    bool failed_ = false;
};

}  // namespace servo::bench
