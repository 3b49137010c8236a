#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace pagora::test {

// The resources used by a piece of work.
struct ResourceUse {
    // Processor time of the calling thread.
    double seconds = 0;
    // The peak memory of the process minus the memory before. 0 if the kernel does not report it.
    std::uint64_t bytes = 0;
};

ResourceUse usedBy(const std::function<void()>& work);

// Fails if the work on a hostile document of that size exceeded the limits of time and memory. With PAGORA_FIGURES set,
// prints a row for the table in docs/security.md.
void expectLittleWork(
    const char* attack, std::uint64_t documentBytes, const ResourceUse& used, const std::string& outcome);

}
