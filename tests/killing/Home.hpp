#pragma once

#include "base/Value.hpp"

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace pagora::test {

// The books that the library may hold, by their files' names; no name is part of another.
std::vector<std::string> bookNames();

// What is to be kept through every kill: the books with the place in each, and the display setting that was stored with
// the last place.
struct KeptState {
    std::map<std::string, std::int64_t> books;
    std::int64_t setting = 0;

    bool operator==(const KeptState&) const = default;
    std::string text() const;
};

// A home folder that a worker is killed in: folders "Masters" (one whole archive of every book), "Downloads", "Trash",
// those of the program, and the diary.
class Home {
public:
    explicit Home(std::string path);

    const std::string& path() const { return _path; }
    std::string master(const std::string& name) const { return _path + "/Masters/" + name; }
    std::string download(const std::string& name) const { return _path + "/Downloads/" + name; }
    std::string trash() const { return _path + "/Trash"; }
    std::string library() const { return _path + "/Documents/ePubLibrary"; }
    std::string store() const { return _path + "/defaults"; }
    std::string diary() const { return _path + "/diary"; }

    // Makes the masters, and a download of each.
    void fill() const;
    // The names of the archives in the library folder.
    std::set<std::string> archives() const;
    // What is wrong with the files of the home: archives that are not whole, books of which no whole archive is left,
    // stores that were set aside. Empty when all is well.
    std::string fault() const;

private:
    std::string _path;
};

// The state in a store's values; `fault` receives what is wrong with an entry.
KeptState keptState(const Value& values, std::string& fault);

}
