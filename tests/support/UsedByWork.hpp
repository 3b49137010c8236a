#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace pagora::test {

// What a piece of work takes of the machine.
struct UsedByWork {
    // Processor time of the calling thread.
    double seconds = 0;
    // The most memory that the process had meanwhile beyond what it had before. 0 where the kernel does not tell.
    std::uint64_t bytes = 0;
};

UsedByWork usedBy(const std::function<void()>& work);

// Fails unless the work on a hostile document of that size ended far from work without end, and took memory in keeping
// with the size. Prints its row for the table of docs/security.md where PAGORA_FIGURES is set.
void expectLittleWork(
    const char* attack, std::uint64_t documentBytes, const UsedByWork& used, const std::string& outcome);

}
