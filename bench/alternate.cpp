// Times two commands run in turn, A B B A A B ..., so that a machine whose
// speed comes and goes slows both alike, and reports the medians and the
// median of the ratios of neighbouring runs. Each run's output goes to
// /dev/null; a run that fails stops the measurement.
//
// Usage: alternate RUNS A-ARGS... -- B-ARGS...
// Prints: median-A-ms median-B-ms median-ratio median-cpu-ratio
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <vector>

extern char** environ;

namespace {

struct Timing {
    double wall = 0;  // milliseconds
    double cpu = 0;   // user and system, milliseconds
};

Timing Run(std::vector<char*>& argv) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
    const auto start = std::chrono::steady_clock::now();
    pid_t pid = 0;
    if (posix_spawn(&pid, argv[0], &actions, nullptr, argv.data(), environ) != 0) {
        std::fprintf(stderr, "alternate: cannot start %s\n", argv[0]);
        std::exit(2);
    }
    int status = 0;
    rusage usage{};
    wait4(pid, &status, 0, &usage);
    const auto end = std::chrono::steady_clock::now();
    posix_spawn_file_actions_destroy(&actions);
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
        std::fprintf(stderr, "alternate: %s failed\n", argv[0]);
        std::exit(2);
    }
    auto ms = [](const timeval& t) { return t.tv_sec * 1e3 + t.tv_usec / 1e3; };
    return {std::chrono::duration<double, std::milli>(end - start).count(), ms(usage.ru_utime) + ms(usage.ru_stime)};
}

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    const std::size_t n = values.size();
    return n % 2 ? values[n / 2] : (values[n / 2 - 1] + values[n / 2]) / 2;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 5) {
        std::fprintf(stderr, "usage: alternate RUNS A-ARGS... -- B-ARGS...\n");
        return 2;
    }
    const int runs = std::atoi(argv[1]);
    std::vector<char*> a, b;
    int i = 2;
    for (; i < argc && std::strcmp(argv[i], "--") != 0; ++i) a.push_back(argv[i]);
    for (++i; i < argc; ++i) b.push_back(argv[i]);
    if (a.empty() || b.empty() || runs < 1) {
        std::fprintf(stderr, "usage: alternate RUNS A-ARGS... -- B-ARGS...\n");
        return 2;
    }
    a.push_back(nullptr);
    b.push_back(nullptr);
    for (int warm = 0; warm < 5; ++warm) {
        Run(a);
        Run(b);
    }
    std::vector<double> wallA, wallB, ratios, cpuRatios;
    for (int r = 0; r < runs; ++r) {
        const bool aFirst = r % 2 == 0;
        const Timing first = Run(aFirst ? a : b);
        const Timing second = Run(aFirst ? b : a);
        const Timing& ta = aFirst ? first : second;
        const Timing& tb = aFirst ? second : first;
        wallA.push_back(ta.wall);
        wallB.push_back(tb.wall);
        ratios.push_back(tb.wall / ta.wall);
        if (ta.cpu > 0) cpuRatios.push_back(tb.cpu / ta.cpu);
    }
    std::printf("%.3f %.3f %.4f %.4f\n", Median(wallA), Median(wallB), Median(ratios),
                cpuRatios.empty() ? 0.0 : Median(cpuRatios));
}
