#pragma once

#include <optional>
#include <string>

namespace pagora {

// A document for the engine's HTML parser.
struct ForgivingPage {
    std::string html;
    // The name of the encoding of `text`.
    std::string encoding;
};

// Rewrites an XHTML document that is not well-formed so that an HTML parser finds the intended structure: empty-element
// tags get end tags, CDATA sections become text, and the prolog is replaced by a plain document type. Returns nullopt
// if the bytes cannot be decoded as text. Thread-safe.
std::optional<ForgivingPage> forgivingPage(std::string xhtml);

}
