// Files that send a request to a server when they are run or read.

#include "tests/engine/HostilePages.hpp"

#include <cstdint>

namespace pagora::test {

namespace {

std::string tone()
{
    // A second of silence: 8,000 samples of 8 bits.
    std::string wave = "RIFF";
    const auto number = [&](std::uint32_t value, int bytes) {
        for (int i = 0; i < bytes; ++i)
            wave += static_cast<char>(value >> 8 * i & 0xFF);
    };
    number(36 + 8000, 4);
    wave += "WAVEfmt ";
    number(16, 4);
    number(1, 2);
    number(1, 2);
    number(8000, 4);
    number(8000, 4);
    number(1, 2);
    number(8, 2);
    wave += "data";
    number(8000, 4);
    return wave + std::string(8000, '\x80');
}

}

std::vector<std::pair<std::string, std::string>> canaries(const std::string& word, const std::string& server)
{
    const auto url = server + "ran/" + word;
    const auto request = "fetch('" + url + "', { method: 'POST', mode: 'no-cors' });";
    return {
        { "canary.txt", word },
        { "canary.html", "<html><body>" + word + "<script>" + request + "</script></body></html>" },
        { "canary.js", request + "self.postMessage && self.postMessage('', '*');" },
        { "canary.css", "@import url('" + url + "'); body { --word: " + word + "; background: url('" + url + "'); }" },
        { "canary.svg",
            "<svg xmlns='http://www.w3.org/2000/svg' width='77' height='7'><rect id='c' width='77' height='7'/><text>"
                + word + "</text><script>" + request + "</script></svg>" },
        { "canary.xml", "<x>" + word + "</x>" },
        { "canary.xsl",
            "<xsl:stylesheet version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform'><xsl:template match='/'>"
            "<html><body><img src='"
                + url + "'/></body></html></xsl:template></xsl:stylesheet>" },
        { "canary.dtd", "<!ENTITY e '" + word + "'>" },
        { "canary.vtt", "WEBVTT\n\n00:00.000 --> 00:09.000\n" + word + "\n" },
        { "canary.wav", tone() },
    };
}

}
