#pragma once

#include "tests/support/EpubBuilder.hpp"

#include <string>
#include <vector>

namespace pagora::test {

// A book that tries one thing that it must not do.
struct HostilePage {
    std::string name;
    // The body of its chapter. Its scripts have `server`, `targets` (folders, of which the first is the book's own),
    // `tell(path, text)` to the server, `reached(i, how)`, and `attempt(make)`, which puts one element for each target
    // into the page and waits for them; `attack()` is called when all is loaded.
    std::string body;
    // Whether the same works within the book, which shows that the witnesses see it.
    bool worksInside = false;
    // More files of the book, by name. "{server}" is replaced in them, and in the body; a name with "{n}" is made for
    // each target, with "{n}" and "{target}" replaced.
    std::vector<std::pair<std::string, std::string>> files = {};
};

// The ways to read a file.
const std::vector<HostilePage>& pagesThatRead();
// The ways to go to a file, which take the page along.
const std::vector<HostilePage>& pagesThatGo();

// Looks for what an earlier opening may have left, tells the server its names under "found/", and leaves everything
// again, in the page and in a frame from the server. The script is the one for the frame.
HostilePage pageThatKeeps();
std::string scriptThatKeeps();
// Looks for anything of the reader's own scripts.
HostilePage pageThatPries();
// Tries for windows, dialogs, files, devices and permissions, and again when the element "grab" is clicked.
HostilePage pageThatGrabs();

// Files of every kind that tell the server "ran/" and the word when they are run, or hold it.
std::vector<std::pair<std::string, std::string>> canaries(const std::string& word, const std::string& server);

// The book of the page, with canaries of its own that say "own". `targets` are URLs of folders with canaries.
EpubBuilder bookOf(const HostilePage& page, const std::string& server, const std::vector<std::string>& targets);

}
