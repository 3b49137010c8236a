#include "base/FileDescriptor.hpp"
#include "files/Files.hpp"
#include "marks/MarksFile.hpp"
#include "tests/killing/worker/DiskMoments.hpp"

#include <cstdlib>
#include <fcntl.h>

// marks-worker ARCHIVE DIARY KILL-AT: adds marks to a book one after another, and changes and removes some of them,
// until file change number KILL-AT. The diary receives the marks that were reported as saved.
int main(int argc, char** argv)
{
    using namespace pagora;
    if (argc != 4)
        return 2;
    const MarksFile file(argv[1], { "urn:isbn:1", "Title", "Author" });
    const FileDescriptor diary(::open(argv[2], O_WRONLY | O_APPEND | O_CREAT, 0600));
    const auto note = [&diary](const std::string& line) {
        test::pauseDiskMoments();
        writeAll(diary.get(), line + "\n");
        test::resumeDiskMoments();
    };
    test::countDiskMoments(std::atol(argv[3]));
    for (int step = 0; step < 40; ++step) {
        Mark mark;
        mark.id = newMarkId();
        mark.created = timeNow();
        mark.text = { "one.xhtml", "text", "before", "after", 1, 5, "" };
        if (!file.write({ { mark } }).isSaved)
            return 3;
        note("saved " + mark.id);
        if (step % 4 == 3) {
            note("removing " + mark.id);
            if (!file.write({ { mark, true } }).isSaved)
                return 3;
            note("removed " + mark.id);
        }
    }
    return 0;
}
