// ratios.h - jobs measured against a baseline, the two in turn in one process, and what the ratio
// should be.
#ifndef BENCH_RATIOS_H
#define BENCH_RATIOS_H

#include <time.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

class Ratios {
  public:
    /**
     * @param clock  CLOCK_THREAD_CPUTIME_ID, or CLOCK_MONOTONIC for what waits for the disk
     * @param quick  few rounds, for every day
     */
    Ratios(clockid_t clock, bool quick)
        : clock_(clock), rounds_(quick ? 7 : 31), least_(quick ? 0.002 : 0.01) {
        std::printf("%-44s %10s %10s %7s %7s %7s\n", "job", "ns", "baseline", "spread", "ratio",
                    "wanted");
    }

    /** @param wanted  how many times as fast as the baseline the job is to be */
    void measure(const std::string &name, const std::function<void()> &job,
                 const std::function<void()> &baseline, double wanted) {
        const std::size_t of_job = calls(job), of_baseline = calls(baseline);
        std::vector<double> jobs, baselines, ratios;
        for (int round = 0; round < rounds_; ++round) {
            jobs.push_back(seconds(job, of_job));
            baselines.push_back(seconds(baseline, of_baseline));
            ratios.push_back(baselines.back() / jobs.back());
        }
        const double ratio = median(ratios);
        const double spread = (ratios[ratios.size() * 3 / 4] - ratios[ratios.size() / 4]) / ratio;
        std::printf("%-44s %10.0f %10.0f %6.0f%% %7.2f %7.2f%s\n", name.c_str(), 1e9 * median(jobs),
                    1e9 * median(baselines), 100 * spread, ratio, wanted,
                    ratio < wanted ? "  short" : "");
        std::fflush(stdout);
    }

  private:
    double now() const {
        timespec time{};
        clock_gettime(clock_, &time);
        return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
    }

    double seconds(const std::function<void()> &job, std::size_t calls) const {
        const double begin = now();
        for (std::size_t i = 0; i < calls; ++i) job();
        return (now() - begin) / static_cast<double>(calls);
    }

    std::size_t calls(const std::function<void()> &job) const {
        std::size_t calls = 1;
        while (seconds(job, calls) * static_cast<double>(calls) < least_) calls *= 2;
        return calls;
    }

    static double median(std::vector<double> &values) {
        std::ranges::sort(values);
        return values[values.size() / 2];
    }

    clockid_t clock_;
    int rounds_;
    double least_; // seconds of one measurement
};

#endif
