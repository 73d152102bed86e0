#pragma once

// Work done in a child process that ends in the middle of it, for the tests of what a killed or
// crashed process leaves on disk. Only where processes can be forked.

#ifndef _WIN32

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <functional>
#include <random>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace scorvane::testing {

// Runs `work` in a child process, which exits with the code `work` returns. Once the child is
// under way (`work` has called the function it is given), `meanwhile` gets the child's id.
// Returns the child's exit code, or -signal when a signal ended it.
inline int runInChild(const std::function<int(const std::function<void()>& started)>& work,
                      const std::function<void(pid_t)>& meanwhile = {}) {
    int ready[2];
    if (::pipe(ready) != 0)
        return -1000;
    const pid_t pid = ::fork();
    if (pid == 0) {
        ::close(ready[0]);
        ::_exit(work([&] { (void)!::write(ready[1], "s", 1); }));
    }
    ::close(ready[1]);
    char c = 0;
    if (pid > 0 && ::read(ready[0], &c, 1) == 1 && meanwhile)
        meanwhile(pid);
    ::close(ready[0]);
    int status = 0;
    if (pid < 0 || ::waitpid(pid, &status, 0) != pid)
        return -1001;
    return WIFSIGNALED(status) ? -WTERMSIG(status) : WEXITSTATUS(status);
}

// Kills the child after `us` microseconds.
inline std::function<void(pid_t)> killAfter(long long us) {
    return [us](pid_t pid) {
        std::this_thread::sleep_for(std::chrono::microseconds(us));
        ::kill(pid, SIGKILL);
    };
}

// Microseconds `f` takes.
inline long long microsecondsFor(const std::function<void()>& f) {
    const auto start = std::chrono::steady_clock::now();
    f();
    return (std::chrono::steady_clock::now() - start) / std::chrono::microseconds(1);
}

// What a folder holds after a change was killed: the files from before it, those from after it, or
// anything else.
enum class Held { Old, New, Neither };

struct KillTally {
    int old = 0, fresh = 0, killed = 0;
};

// Runs `work` (as runInChild's) in a child `runs` times and kills it each time after a random
// delay of 0 to `maxUs` microseconds, drawn from `seed`. The child must end by the kill or by
// finishing; `held` then looks at the folder (and may set it up for the next run), and the test
// fails at the first run that leaves neither the old files nor the new ones.
inline KillTally
killAtRandomMoments(int runs, unsigned seed, long long maxUs,
                    const std::function<int(const std::function<void()>& started)>& work,
                    const std::function<Held()>& held) {
    std::mt19937 rng(seed);
    KillTally tally;
    for (int run = 0; run < runs; ++run) {
        const long long delay = static_cast<long long>(rng() % (maxUs + 1));
        const int code = runInChild(work, killAfter(delay));
        if (code != 0 && code != -SIGKILL) {
            ADD_FAILURE() << "run " << run << ": the child ended with " << code;
            return tally;
        }
        tally.killed += code == -SIGKILL;
        const Held h = held();
        if (h == Held::Neither) {
            ADD_FAILURE() << "run " << run << ", killed after " << delay
                          << " us, left neither the old files nor the new ones";
            return tally;
        }
        ++(h == Held::New ? tally.fresh : tally.old);
    }
    return tally;
}

} // namespace scorvane::testing

#endif
