#include "storage/RecordFile.h"
#include "support/TempDir.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <random>
#include <thread>

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

using namespace scorvane;
using namespace scorvane::testing;

namespace {

// The records of one version of the file, and the file they make.
std::vector<Bytes> records(int count, std::uint8_t seed, Bytes& file) {
    std::vector<Bytes> out;
    for (int i = 0; i < count; ++i) {
        Bytes r(110);
        for (std::size_t j = 0; j < r.size(); ++j)
            r[j] = static_cast<std::uint8_t>(seed + i * 7 + j);
        out.push_back(r);
        file.insert(file.end(), r.begin(), r.end());
    }
    return out;
}

} // namespace

// A process killed while it replaces a file leaves the old file or the new one, never a mixture,
// a shortened file or no file.
TEST(CrashSafety, FileReplacementSurvivesAKillAtAnyMoment) {
    TempDir dir;
    const std::string path = dir.file("FBPS1.DAT");
    Bytes smallFile, largeFile;
    const std::vector<Bytes> small = records(300, 1, smallFile), large = records(500, 2, largeFile);

    // Kills must land anywhere from before the first write to after the rename, so the delays
    // span about twice the time one replacement takes on this disk.
    RecordFile file;
    ASSERT_TRUE(file.open(path, 110));
    const auto start = std::chrono::steady_clock::now();
    ASSERT_TRUE(file.replaceAll(large));
    ASSERT_TRUE(file.replaceAll(small));
    const auto oneReplace = (std::chrono::steady_clock::now() - start) / 2;
    const long long maxDelayUs = std::clamp<long long>(
        std::chrono::duration_cast<std::chrono::microseconds>(oneReplace).count() * 2, 3000, 40000);
    file.close();

    std::mt19937 rng(20030305);
    bool holdsLarge = false;
    int flips = 0;
    for (int i = 0; i < 200; ++i) {
        const pid_t pid = ::fork();
        ASSERT_GE(pid, 0);
        if (pid == 0) {
            RecordFile f;
            if (!f.open(path, 110))
                ::_exit(1);
            for (bool toLarge = !holdsLarge;; toLarge = !toLarge)
                (void)f.replaceAll(toLarge ? large : small);
        }
        std::this_thread::sleep_for(std::chrono::microseconds(rng() % (maxDelayUs + 1)));
        ::kill(pid, SIGKILL);
        int status = 0;
        ASSERT_EQ(::waitpid(pid, &status, 0), pid);
        ASSERT_TRUE(WIFSIGNALED(status)) << "the child stopped by itself";

        Bytes now;
        bool exists = false;
        ASSERT_TRUE(readWholeFile(path, now, exists));
        ASSERT_TRUE(exists) << "kill " << i << " left no file";
        ASSERT_TRUE(now == smallFile || now == largeFile)
            << "kill " << i << " left a file of " << now.size() << " bytes that is neither";
        flips += (now == largeFile) != holdsLarge;
        holdsLarge = now == largeFile;
    }
    // Without finished replacements the kills would all have hit the first write.
    EXPECT_GT(flips, 0);
}
