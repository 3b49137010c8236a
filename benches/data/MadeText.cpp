#include "benches/data/MadeText.hpp"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstring>
#include <vector>

namespace pagora::bench {

namespace {

constexpr std::array consonants { "b", "br", "c", "d", "f", "g", "gr", "h", "l", "m", "n", "p", "r", "s", "st", "t",
    "tr", "v", "w" };
constexpr std::array vowels { "a", "e", "i", "o", "u", "ea", "ou" };
constexpr std::array endings { "", "n", "r", "s", "l", "nd", "t" };
constexpr std::array small { "the", "and", "of", "to", "in", "a", "that", "was", "it", "his", "her", "with" };

// Pages consist of this many different sentences, because generating new ones is slow.
constexpr std::size_t differentSentences = 4'000;

std::vector<std::string> makeSentences()
{
    MadeText random(1);
    std::vector<std::string> sentences(differentSentences);
    for (auto& sentence : sentences)
        sentence = random.sentence();
    return sentences;
}

std::string capitalised(std::string word)
{
    word.front() = static_cast<char>(std::toupper(static_cast<unsigned char>(word.front())));
    return word;
}

}

std::string MadeText::word()
{
    // Short words are few and frequent, as in a language.
    if (number(5) < 2)
        return small.at(number(small.size()));
    std::string made;
    for (std::size_t syllables = 1 + number(2); syllables-- > 0;)
        made.append(consonants.at(number(consonants.size()))).append(vowels.at(number(vowels.size())));
    return made.append(endings.at(number(endings.size())));
}

std::string MadeText::title()
{
    auto made = capitalised(word());
    for (std::size_t words = 1 + number(4); words-- > 0;)
        made += " " + capitalised(word());
    return made;
}

std::string MadeText::name()
{
    auto first = capitalised(word());
    return first + " " + capitalised(word());
}

std::string MadeText::sentence()
{
    auto made = capitalised(word());
    for (std::size_t words = 5 + number(14); words-- > 0;)
        made.append(number(12) == 0 ? ", " : " ").append(word());
    return made + ". ";
}

std::string MadeText::noise(std::size_t size)
{
    std::string bytes(size, '\0');
    for (std::size_t i = 0; i < size;) {
        const auto drawn = _random();
        const auto part = std::min(sizeof drawn, size - i);
        std::memcpy(bytes.data() + i, &drawn, part);
        i += part;
    }
    return bytes;
}

std::string MadeText::chapter(const std::string& heading, std::size_t size)
{
    std::string page = R"(<?xml version="1.0" encoding="utf-8"?>
<html xmlns="http://www.w3.org/1999/xhtml"><head><title>)"
        + heading + R"(</title>
<link rel="stylesheet" type="text/css" href="../style.css"/></head><body>
<h1 id="top">)"
        + heading + "</h1>\n";
    static const auto known = makeSentences();
    constexpr std::size_t end = 16;
    page.reserve(size + 2'000);
    for (std::size_t paragraph = 1; page.size() + end < size; ++paragraph) {
        page += "<p id=\"p" + std::to_string(paragraph) + "\">";
        if (number(4) == 0)
            page += "<em>" + title() + "</em> ";
        for (std::size_t sentences = 3 + number(5); sentences-- > 0;)
            page += known.at(number(known.size()));
        page += "</p>\n";
    }
    return page + "</body></html>\n";
}

}
