#pragma once

#include "base/Value.hpp"

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace pagora::test {

// The file names of the library's possible books. No name is part of another.
std::vector<std::string> bookNames();

// The state that every kill must preserve: the books with their places, and the display setting stored with the last
// place.
struct KeptState {
    std::map<std::string, std::int64_t> books;
    std::int64_t setting = 0;

    bool operator==(const KeptState&) const = default;
    std::string text() const;
};

// The home folder in which a worker runs and is killed. It contains the folder "Masters" with one intact archive of
// each book, the folders "Downloads" and "Trash", the program's own folders, and the diary of the worker's steps.
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

    // Writes the masters and a download of each.
    void fill() const;
    // Returns the names of the archives in the library folder.
    std::set<std::string> archives() const;
    // Returns the faults of the home's files: damaged archives, books without an intact archive, renamed stores. Empty
    // if there are none.
    std::string fault() const;

private:
    std::string _path;
};

// Returns the state in a store's values. `fault` receives the error of an invalid entry.
KeptState keptState(const Value& values, std::string& fault);

}
