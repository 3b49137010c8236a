#pragma once

#include "page/WebView.hpp"
#include "running/RunLoop.hpp"
#include "running/Task.hpp"

#include <optional>
#include <string>

namespace pagora {

class EpubController;
class EpubWindow;

// Shows the notes that references of the page lead to, without leaving the page. Their text is read from the book's
// file in the background. Main thread only.
class Notes {
public:
    // All of them outlive it.
    Notes(EpubController& reader, EpubWindow& window, RunLoop& runLoop);
    ~Notes();
    Notes(const Notes&) = delete;
    Notes& operator=(const Notes&) = delete;

    // The folder of the unpacked book.
    void setBookFolder(std::string folder) { _folder = std::move(folder); }
    // Shows the page of the note that is shown.
    void goThere();

private:
    void show(const PointedLink& link);
    bool isNote(const Url& url) const;
    Task<void> read(PointedLink link);

    EpubController& _reader;
    EpubWindow& _window;
    RunLoop& _runLoop;
    std::string _folder;
    std::optional<Url> _shown;
    // The reading of a note that is under way.
    Task<void> _reading;
};

}
