#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>

namespace pagora::bench {

// Generates words, sentences and pages. The same seed gives the same text on every machine. Use each object on one
// thread only.
class MadeText {
public:
    explicit MadeText(std::uint64_t seed)
        : _random(seed)
    {
    }

    // Returns a number in [0, end).
    std::size_t number(std::size_t end) { return static_cast<std::size_t>(_random() % end); }
    std::string word();
    // Returns a few words, each with a capital.
    std::string title();
    // Returns two words, each with a capital.
    std::string name();
    std::string sentence();
    // Returns bytes that do not compress.
    std::string noise(std::size_t size);

    // Returns a page of paragraphs below a heading, of about this many bytes.
    std::string chapter(const std::string& heading, std::size_t size);

private:
    std::mt19937_64 _random;
};

}
