#include "tests/support/ResourceUse.hpp"

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <gtest/gtest.h>
#include <malloc.h>

namespace pagora::test {

namespace {

// Work of quadratic complexity takes many times as long as this.
constexpr double maxSeconds = 20;
constexpr std::uint64_t bytesForEachByte = 8;
constexpr std::uint64_t freeBytes = 8u << 20;

double threadSeconds()
{
    timespec time {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

// Returns a value of /proc/self/status in bytes.
std::uint64_t statusBytes(const std::string& name)
{
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        std::uint64_t kilobytes = 0;
        if (word == name + ":" && status >> kilobytes)
            return kilobytes << 10;
    }
    return 0;
}

}

ResourceUse usedBy(const std::function<void()>& work)
{
    malloc_trim(0);
    // Resets the peak.
    std::ofstream("/proc/self/clear_refs") << 5;
    const auto bytes = statusBytes("VmRSS");
    const auto start = threadSeconds();
    work();
    const auto seconds = threadSeconds() - start;
    const auto peak = statusBytes("VmHWM");
    return { seconds, peak > bytes ? peak - bytes : 0 };
}

void expectLittleWork(
    const char* attack, std::uint64_t documentBytes, const ResourceUse& used, const std::string& outcome)
{
    EXPECT_LE(used.seconds, maxSeconds) << attack;
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
    EXPECT_LE(used.bytes, bytesForEachByte * documentBytes + freeBytes) << attack;
#endif
    if (std::getenv("PAGORA_FIGURES"))
        std::printf("| %s | %llu kB | %.2f s | %llu MB | %s |\n", attack,
            static_cast<unsigned long long>(documentBytes / 1'000), used.seconds,
            static_cast<unsigned long long>(used.bytes >> 20), outcome.c_str());
}

}
