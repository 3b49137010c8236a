#pragma once

#include "page/WebView.hpp"
#include "running/RunLoop.hpp"
#include "running/Task.hpp"

#include <optional>
#include <string>

namespace pagora {

class EpubController;
class EpubWindow;

// Shows the notes of the page's references without leaving the page. The text of a note is read from the book's file in
// the background. Main thread only.
class Notes {
public:
    // All arguments must outlive this object.
    Notes(EpubController& reader, EpubWindow& window, RunLoop& runLoop);
    ~Notes();
    Notes(const Notes&) = delete;
    Notes& operator=(const Notes&) = delete;

    // Sets the folder of the unpacked book.
    void setBookFolder(std::string folder) { _folder = std::move(folder); }
    // Shows the page of the note that is open.
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
    // The pending read of a note.
    Task<void> _reading;
};

}
