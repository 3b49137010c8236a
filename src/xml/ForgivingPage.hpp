#pragma once

#include <optional>
#include <string>

namespace pagora {

// A page for the engine's forgiving parser.
struct ForgivingPage {
    std::string html;
    // What the text is written in, by its usual name.
    std::string encoding;
};

// The bytes of an XHTML document that is not well-formed, rewritten so that the rules of HTML find in it what was
// meant: elements that are written as empty end where they begin, sections of character data are text, and what comes
// before the root makes way for a plain document type. Missing when the bytes cannot be read as text. Any thread.
std::optional<ForgivingPage> forgivingPage(std::string xhtml);

}
