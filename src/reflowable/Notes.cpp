#include "reflowable/Notes.hpp"

#include "find/NoteText.hpp"
#include "reader/EpubWindow.hpp"
#include "reflowable/EpubController.hpp"

namespace pagora {

Notes::Notes(EpubController& reader, EpubWindow& window, RunLoop& runLoop)
    : _reader(reader)
    , _window(window)
    , _runLoop(runLoop)
{
    _reader.setLinkHandler([this](const std::optional<PointedLink>& link) {
        if (link)
            show(*link);
        else {
            _reading = {};
            _window.pointerLeftReference();
        }
    });
}

Notes::~Notes()
{
    _reader.setLinkHandler({});
}

// A target in the table of contents is a chapter, not a note.
bool Notes::isNote(const Url& url) const
{
    const auto fragment = url.fragment();
    return url.isFile() && fragment && !fragment->empty()
        && !_reader.contentsPane().tocTagDict().contains(contentsKey(url));
}

void Notes::show(const PointedLink& link)
{
    _reading = {};
    if (isNote(link.url))
        _reading = read(link);
}

Task<void> Notes::read(PointedLink link)
{
    const auto text = std::make_shared<std::optional<std::string>>();
    auto reading
        = _runLoop.performInBackground([text, path = link.url.path(), folder = _folder, id = *link.url.fragment()] {
              *text = noteTextOf(path, folder, id);
          });
    co_await reading;
    if (!*text)
        co_return;
    _shown = link.url;
    _window.showNote(**text, link);
}

void Notes::goThere()
{
    if (_shown && _shown->fragment())
        _reader.goTo({ _shown->withoutFragment(), ElementInChapter { *_shown->fragment() } });
}

}
