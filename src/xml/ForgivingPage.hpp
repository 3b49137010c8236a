#pragma once

#include <optional>
#include <string>

namespace pagora {

// A page for the engine's HTML parser.
struct ForgivingPage {
    std::string html;
    // The name of the text's encoding.
    std::string encoding;
};

// Rewrites an XHTML document that is not well-formed so that an HTML parser finds the intended structure: empty-element
// tags get end tags, CDATA sections become text, and the prolog is replaced by a plain document type. Missing when the
// bytes cannot be decoded as text. Any thread.
std::optional<ForgivingPage> forgivingPage(std::string xhtml);

}
