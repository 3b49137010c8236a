#include "base/FileDescriptor.hpp"
#include "base/Log.hpp"
#include "running/GLibRunLoop.hpp"
#include "tests/app/Program.hpp"
#include "tests/killing/Home.hpp"
#include "tests/killing/worker/DiskMoments.hpp"

#include <glib.h>

#include <algorithm>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <random>

namespace pagora::test {

namespace {

constexpr int steps = 60;

// Performs random actions in the program without its windows. Writes started and finished actions to the diary.
class Worker {
public:
    Worker(const Home& home, unsigned seed, long killAt)
        : _home(home)
        , _random(seed)
        , _seed(seed)
        , _diary(::open(home.diary().c_str(), O_WRONLY | O_APPEND | O_CREAT, 0600))
    {
        countDiskMoments(killAt);
        note("begin launch");
        _program = std::make_unique<ProgramOn<GLibRunLoop>>(home.path());
        _program->workspace.trash = home.trash();
        _program->beginLaunch();
        runUntil([this] { return !state().launch._initProcessing(); });
        _program->defaults.synchronize();
        note("done");
    }

    void work()
    {
        for (_step = 1; _step <= steps; ++_step) {
            // On average half of the books are in the library. A reset changes more files than all other actions.
            const auto chance = _random() % 16;
            if (chance == 0)
                reset();
            else if (chance < 9)
                close();
            else if (_random() % bookNames().size() < catalogue().count())
                remove();
            else
                import();
        }
    }

private:
    LibraryState& state() { return _program->controller->state(); }
    Catalogue& catalogue() { return state().catalogue; }

    void note(const std::string& line)
    {
        pauseDiskMoments();
        writeAll(_diary.get(), line + "\n");
        resumeDiskMoments();
    }

    template <typename Condition>
    void runUntil(Condition condition)
    {
        while (!condition())
            g_main_context_iteration(nullptr, TRUE);
    }

    void import()
    {
        const auto known = catalogue().epubLocations();
        std::vector<std::string> names;
        for (const auto& name : bookNames()) {
            if (std::none_of(known.begin(), known.end(), [&](const auto& path) { return path.ends_with(name); }))
                names.push_back(name);
        }
        if (names.empty())
            return;
        std::shuffle(names.begin(), names.end(), _random);
        names.resize(std::min<std::size_t>(names.size(), 1 + _random() % 3));
        pauseDiskMoments();
        std::vector<std::string> files;
        std::string line = "begin import";
        for (const auto& name : names) {
            files.push_back(_home.download(name));
            std::filesystem::copy_file(
                _home.master(name), files.back(), std::filesystem::copy_options::overwrite_existing);
            std::filesystem::remove(_home.trash() + "/" + name);
            line += " " + name;
        }
        resumeDiskMoments();
        note(line);
        _program->defaults.setObject("DragDropMode", _random() % 2 ? "Copy" : "Move");
        const auto count = catalogue().count() + names.size();
        _program->drop(files);
        runUntil([this, count] { return _program->window.shown->books.content().size() == count; });
        note("done");
    }

    void close()
    {
        const auto count = catalogue().count();
        if (count == 0)
            return;
        const auto book = _program->book(_random() % count);
        const auto place = static_cast<std::int64_t>(_seed % 10'000) * 100 + _step;
        _program->controller->sendDoubleClick(book);
        runUntil([this] { return !_program->reader().webView.loads.empty(); });
        _program->reader().webView.finishDocument();
        note("begin close " + lastPathComponent(*book->epubPath()) + " " + std::to_string(place));
        _program->epubReader().setReadAmount(static_cast<float>(place));
        _program->epubReader().setNumberOfColumns(static_cast<std::int32_t>(place));
        _program->closeReader();
        note("done");
    }

    void remove()
    {
        auto books = *catalogue().bookList();
        if (books.empty())
            return;
        std::shuffle(books.begin(), books.end(), _random);
        books.resize(std::min<std::size_t>(books.size(), 1 + _random() % 3));
        std::string line = "begin remove";
        for (const auto& book : books)
            line += " " + lastPathComponent(*book->epubPath());
        note(line);
        _program->controller->deleteItemsFromLibrary(books);
        runUntil([this] { return !_program->defaults.hasKey("Removals"); });
        note("done");
    }

    void reset()
    {
        note("begin reset");
        _program->controller->resetAppSettings();
        runUntil([this] { return !state().launch.isResetting(); });
        note("done");
    }

    Home _home;
    std::mt19937 _random;
    unsigned _seed;
    int _step = 0;
    FileDescriptor _diary;
    std::unique_ptr<ProgramOn<GLibRunLoop>> _program;
};

}

}

// killing-worker HOME SEED KILL-AT: performs random actions in the library of a home, by a seed, until file change
// number KILL-AT.
int main(int argc, char** argv)
{
    using namespace pagora;
    if (argc != 4)
        return 2;
    const LogCapture quiet([](const std::string&) {});
    test::Worker(test::Home(argv[1]), static_cast<unsigned>(std::atol(argv[2])), std::atol(argv[3])).work();
    return 0;
}
