#include "base/Log.hpp"
#include "store/DefaultsRecovery.hpp"
#include "tests/app/Program.hpp"
#include "tests/killing/Home.hpp"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <random>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

namespace pagora {

using test::Home;
using test::KeptState;

namespace {

// A worker rarely makes more changes.
constexpr long maxMoments = 600;

int killsAskedFor()
{
    const char* const text = std::getenv("PAGORA_KILLS");
    return text ? std::atoi(text) : 50;
}

// Runs a worker in the home until it is killed. Returns false if it ended by itself.
bool workerIsKilled(const Home& home, unsigned seed, long killAt)
{
    const auto seedText = std::to_string(seed);
    const auto killText = std::to_string(killAt);
    const pid_t worker = fork();
    if (worker == 0) {
        execl(KILLING_WORKER, KILLING_WORKER, home.path().c_str(), seedText.c_str(), killText.c_str(), nullptr);
        _exit(3);
    }
    int status = 0;
    waitpid(worker, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status) ? WTERMSIG(status) == SIGKILL : WEXITSTATUS(status) == 0);
    return WIFSIGNALED(status);
}

// A step of a worker: a verb and its object.
struct Step {
    std::string word;
    std::vector<std::string> names;
};

Step stepFrom(const std::string& line)
{
    std::istringstream words(line);
    Step step;
    std::string name;
    for (words >> step.word >> step.word; words >> name;)
        step.names.push_back(name);
    return step;
}

// Returns the state after a step.
KeptState after(const Step& step, KeptState state, const std::set<std::string>& archives)
{
    if (step.word == "import") {
        for (const auto& name : step.names)
            state.books[name] = 0;
    } else if (step.word == "close")
        state.books[step.names[0]] = state.setting = std::stol(step.names[1]);
    else if (step.word == "remove") {
        for (const auto& name : step.names)
            state.books.erase(name);
    } else if (step.word == "reset") {
        state.setting = 0;
        // The library has the books with archives in the folder. A library without books is kept.
        for (auto& [name, place] : state.books)
            place = archives.empty() ? place : 0;
    } else if (step.word == "launch") {
        for (const auto& name : archives)
            state.books.try_emplace(name, 0);
    }
    return state;
}

struct Killing : testing::Test {
    Killing() { home.fill(); }

    KeptState storedState()
    {
        const auto values = readDefaults(home.store());
        EXPECT_TRUE(values) << values.reason();
        std::string fault;
        const auto state = test::keptState(values ? *values : Value(Value::Dictionary {}), fault);
        EXPECT_EQ(fault, "");
        return state;
    }

    // The state after the finished steps, and the state after the interrupted step.
    struct Expected {
        KeptState before;
        KeptState afterwards;
        std::string step = "none";
    };
    Expected readDiary(const std::set<std::string>& archivesBefore)
    {
        Expected expected { _state, _state };
        std::ifstream diary(home.diary());
        Step step;
        auto archives = archivesBefore;
        for (std::string line; std::getline(diary, line);) {
            if (line == "done") {
                expected.before = expected.afterwards;
                expected.step = "none";
                archives.clear();
                continue;
            }
            step = stepFrom(line);
            expected.step = line;
            // Between steps, the folder has the archives of the books.
            for (const auto& [name, place] : expected.before.books)
                archives.insert(name);
            expected.afterwards = after(step, expected.before, archives);
        }
        std::filesystem::remove(home.diary());
        return expected;
    }

    // Expects that the store has one of the possible states and that the next launch restores a complete library.
    void check(const Expected& expected)
    {
        SCOPED_TRACE("killed at: " + expected.step);
        EXPECT_EQ(home.fault(), "");
        const auto stored = storedState();
        EXPECT_TRUE(stored == expected.before || stored == expected.afterwards)
            << stored.text() << "\ninstead of " << expected.before.text() << "\nor " << expected.afterwards.text();

        auto whole = stored;
        {
            test::Program program(home.path());
            program.workspace.trash = home.trash();
            program.launch();
            program.runLoop.runPosted();
            EXPECT_EQ(program.window.errorListFake.text, "");
            whole.setting = program.defaults.integerForKey("Columns");
            program.defaults.synchronize();
        }
        const auto archives = home.archives();
        for (const auto& name : archives)
            whole.books.try_emplace(name, 0);
        _state = storedState();
        EXPECT_EQ(home.fault(), "");
        EXPECT_EQ(_state.text(), whole.text());
        EXPECT_EQ(_state.books.size(), archives.size());
        if (expected.step.starts_with("begin remove") && stored == expected.afterwards) {
            EXPECT_EQ(_state.text(), stored.text()) << "what was removed is back";
        }
        for (const auto& name : folderEntries(home.library()).value_or(std::vector<std::string> {}))
            EXPECT_TRUE(archives.contains(name)) << name << " was left in the library folder";
    }

    test::TemporaryFolder folder;
    const Home home { folder.path("home") };
    KeptState _state;
};

}

TEST_F(Killing, LeavesEveryFinishedStepAndNoHalfOne)
{
    const LogCapture quiet([](const std::string&) {});
    std::mt19937 random(20);
    const int asked = killsAskedFor();
    std::map<std::string, int> counts;
    int kills = 0;
    for (unsigned seed = 1; kills < asked && !HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        const auto archives = home.archives();
        kills += workerIsKilled(home, seed, 1 + static_cast<long>(random() % maxMoments));
        const auto expected = readDiary(archives);
        ++counts[stepFrom(expected.step).word];
        check(expected);
    }
    std::string text;
    for (const auto& [word, count] : counts)
        text += ", " + std::to_string(count) + " " + (word.empty() ? "between steps" : word);
    RecordProperty("kills", kills);
    std::printf("%d kills%s\n", kills, text.c_str());
}

}
