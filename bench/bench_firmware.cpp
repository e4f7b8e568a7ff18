// A transfer of a 500 kB payload in virtual time, with a bootloader that answers at once: how near
// it comes to what the line allows, where the rest goes, and what it costs in real time.
#include <chrono>
#include <cstdio>
#include <map>

#include "bench/ratio.h"
#include "transfer_bench.h"

namespace {

using namespace servo;
using namespace servo::test;

constexpr std::size_t kCharacters = 500'000;

double seconds(VirtualTime::Duration duration) {
    return std::chrono::duration<double>(duration).count();
}

}  // namespace

int main() {
    const auto real_begin = std::chrono::steady_clock::now();
    TransferBench bench;
    bench.port.record = false;
    if (!bench.download.load_image(bench.put_image(TransferBench::payload(kCharacters)))) return 1;
    bench.drive.in_bootloader = true;
    bench.drive.erase_time = {};
    bench.open_link();
    bench.download.Command4_Click();

    const VirtualTime::Duration begin = bench.time.now();
    VirtualTime::Duration last = begin;
    std::map<int, VirtualTime::Duration> in_step;
    while (bench.state.download_active == 1) {
        const int step = bench.state.download_step;
        bench.run_ticks(1);
        in_step[step] += bench.time.now() - last;
        last = bench.time.now();
    }
    const double taken = seconds(bench.time.now() - begin);
    const std::chrono::duration<double> real = std::chrono::steady_clock::now() - real_begin;

    const std::size_t sent = bench.drive.stored.size();
    const double minimum = seconds(bench.line.to_drive.time_of(sent));
    const double blocks = seconds(bench.line.to_drive.time_of(sent + bench.drive.blocks));
    std::printf("payload %zu characters, %zu of them sent in %d blocks (the rest is cut)\n",
                kCharacters, sent, bench.drive.blocks);
    std::printf("line's minimum %.3f s for the payload, %.3f s for what is sent of it\n",
                seconds(bench.line.to_drive.time_of(kCharacters)), minimum);
    std::printf("taken %.3f s; by step:\n", taken);
    for (const auto& [step, duration] : in_step)
        std::printf("  step %d  %8.3f s\n", step, seconds(duration));
    std::printf("of step 8, %.3f s are the blocks on the line, %.3f s the wait for the next tick\n",
                blocks, seconds(in_step[8]) - blocks);
    std::printf("real time %.3f s\n", real.count());

    bench::Report report;
    const bool whole = bench.ended() == TransferEnd::kDone &&
                       bench.drive.stored == TransferBench::payload(kCharacters).substr(0, sent);
    report.at_least("firmware: the image arrived whole", whole ? 1 : 0, 1);
    report.at_least("firmware: line's minimum by time taken", minimum / taken, 0.92);
    report.at_most("firmware: real seconds of the virtual transfer", real.count(), 2.0);
    return report.exit_status();
}
