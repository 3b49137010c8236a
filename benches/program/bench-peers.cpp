// Measures how long programs take to show a book of 1 MB, from their start to the last change of the screen:
// bench-peers FOLDER COMMAND... starts each command with the book's path as its last argument, in turns with Pagora,
// and prints "MILLISECONDS MEGABYTES COMMAND" lines. Needs a display of at least 1280 by 860.

#include "AwakeProcessors.hpp"
#include "Program.hpp"
#include "ShownLibrary.hpp"
#include "WatchedScreen.hpp"

#include <filesystem>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

namespace {

using namespace pagora::bench;

constexpr int rounds = 5;

struct Peer {
    explicit Peer(std::string line)
        : command(std::move(line))
    {
        std::istringstream stream(command);
        for (std::string word; stream >> word;)
            words.push_back(word);
    }

    // Opens the book with the command in a separate home folder.
    void open(WatchedScreen& screen, const std::string& home, const std::string& book)
    {
        screen.settle(0.5);
        screen.forget();
        std::vector<std::string> arguments(words.begin() + 1, words.end());
        arguments.push_back(book);
        const Program program(words.front(), arguments, home);
        const double page = shownOrFail(screen, screenArea, 1.5, "a window of " + command);
        times.push_back((page - program.started()) * 1000);
        memory.push_back(program.proportionalMemory());
    }

    std::string command;
    std::vector<std::string> words;
    std::vector<double> times;
    std::vector<double> memory;
};

}

int main(int count, char** arguments)
{
    if (count < 3)
        return 2;
    dataFolder = std::filesystem::canonical(arguments[1]);
    std::vector<Peer> peers { Peer(programFolder() + "/pagora") };
    for (int i = 2; i < count; ++i) {
        peers.emplace_back(arguments[i]);
        if (peers.back().words.empty())
            fail("a command is empty");
    }
    const AwakeProcessors awake;
    const Program windowManager("openbox", { "--sm-disable" });
    WatchedScreen screen;
    const auto book = made("chapter-50k");
    // The first round is a warm-up.
    for (int round = 0; round <= rounds; ++round) {
        for (std::size_t i = 0; i < peers.size(); ++i)
            peers[i].open(screen, newHome("home-peer-" + std::to_string(i)), book);
    }
    for (auto& peer : peers) {
        peer.times.erase(peer.times.begin());
        std::cout << median(peer.times) << ' ' << median(peer.memory) << ' ' << peer.command << '\n';
    }
}
