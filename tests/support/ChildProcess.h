#pragma once

// Work done in a child process that ends in the middle of it, for the tests of what a killed or
// crashed process leaves on disk. Only where processes can be forked.

#ifndef _WIN32

#include <chrono>
#include <csignal>
#include <functional>
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

} // namespace scorvane::testing

#endif
