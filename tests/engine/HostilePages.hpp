#pragma once

#include "tests/support/EpubBuilder.hpp"

#include <string>
#include <vector>

namespace pagora::test {

// A book with one attack.
struct HostilePage {
    std::string name;
    // The body of its chapter. Its scripts can use `server`, `targets` (folders; the first is the book's own),
    // `tell(path, text)`, which sends a request to the server, `reached(i, how)`, and `attempt(make)`, which adds one
    // element for each target to the page and waits for them. `attack()` is called when the page is loaded.
    std::string body;
    // True if the attack succeeds within the book, which proves that the test detects it.
    bool worksInside = false;
    // More files of the book, by name. "{server}" is replaced in them and in the body. A file with "{n}" in its name is
    // written for each target, with "{n}" and "{target}" replaced.
    std::vector<std::pair<std::string, std::string>> files = {};
};

// The ways to read a file.
const std::vector<HostilePage>& pagesThatRead();
// The ways to navigate to a file.
const std::vector<HostilePage>& pagesThatGo();

// Looks for data stored by an earlier opening, reports its names to the server under "found/", and stores it again, in
// the page and in a frame from the server. The second script is for the frame.
HostilePage pageThatKeeps();
std::string scriptThatKeeps();
// Looks for objects of the reader's own scripts.
HostilePage pageThatPries();
// Tries to get windows, dialogs, files, devices and permissions, at once and when the element "grab" is clicked.
HostilePage pageThatGrabs();

// Files of every type that send "ran/" and the word to the server when they are run, or contain the word.
std::vector<std::pair<std::string, std::string>> canaries(const std::string& word, const std::string& server);

// A book with the page and with canaries with the word "own". `targets` are URLs of folders with canaries.
EpubBuilder bookOf(const HostilePage& page, const std::string& server, const std::vector<std::string>& targets);

}
