#include "tests/fuzz/FuzzRun.hpp"

#include "base/Log.hpp"
#include "files/Files.hpp"

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <sys/mman.h>
#include <sys/time.h>
#include <unistd.h>

namespace pagora::test {

namespace {

// Returns the processor time of this process, which does not depend on other programs.
Milliseconds processorTime()
{
    timespec now {};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return std::chrono::seconds(now.tv_sec) + std::chrono::nanoseconds(now.tv_nsec);
}

// Aborts the program, as a finding, after this additional processor time; never for 0.
void limitProcessorTime(Milliseconds limit)
{
    const auto all = std::chrono::duration_cast<std::chrono::microseconds>(limit).count();
    const itimerval timer { {}, { all / 1'000'000, all % 1'000'000 } };
    ::setitimer(ITIMER_PROF, &timer, nullptr);
}

// Never destroyed.
struct Record {
    Record()
        : silence([](const std::string&) {})
    {
        std::signal(SIGPROF, [](int) { std::abort(); });
    }
    ~Record()
    {
        if (const char* path = std::getenv("PAGORA_FUZZ_REPORT"))
            std::ofstream(path) << executions << ' ' << slowest.count() << '\n';
    }
    std::uint64_t executions = 0;
    Milliseconds slowest {};
    Milliseconds limit { std::getenv("PAGORA_FUZZ_SLOWEST") ? std::atof(std::getenv("PAGORA_FUZZ_SLOWEST")) : 0 };
    LogCapture silence;
};

Record& record()
{
    static Record record;
    return record;
}

}

FuzzRun::FuzzRun()
{
    limitProcessorTime(record().limit);
    _start = processorTime();
}

FuzzRun::~FuzzRun()
{
    limitProcessorTime({});
    ++record().executions;
    record().slowest = std::max(record().slowest, processorTime() - _start);
}

void require(bool holds, const char* file, int line)
{
    if (holds)
        return;
    std::fprintf(stderr, "%s:%d: does not hold\n", file, line);
    std::abort();
}

MemoryFile::MemoryFile()
    : _file(memfd_create("input", MFD_CLOEXEC))
    , _path("/proc/self/fd/" + std::to_string(_file))
{
    require(_file >= 0);
}

MemoryFile::~MemoryFile()
{
    ::close(_file);
}

const std::string& MemoryFile::write(std::string_view bytes)
{
    // Keeping its memory pages is faster than allocating new ones.
    require(::lseek(_file, 0, SEEK_SET) == 0 && writeAll(_file, bytes)
        && ::ftruncate(_file, static_cast<off_t>(bytes.size())) == 0);
    return _path;
}

}
