#include "reflowable/Selections.hpp"

#include "reader/EpubWindow.hpp"
#include "reader/ReaderHub.hpp"
#include "reflowable/EpubController.hpp"

namespace pagora {

Selections::Selections(EpubController& reader, EpubWindow& window, ReaderHub& hub)
    : SelectedText(window)
    , _reader(reader)
    , _window(window)
    , _hub(hub)
{
    _reader.setSelectionHandler([this](const std::optional<PageSelection>& selection) {
        if (selection)
            _selection = selection;
        didChange(selection);
    });
}

Selections::~Selections()
{
    _reader.setSelectionHandler({});
}

void Selections::find()
{
    if (_selection)
        _window.searchFor(_selection->text);
}

void Selections::lookUp()
{
    if (_selection)
        _hub.lookUp(_selection->text);
}

}
