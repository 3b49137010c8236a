#include "reflowable/Selections.hpp"

#include "reader/EpubWindow.hpp"
#include "reader/ReaderHub.hpp"
#include "reflowable/EpubController.hpp"

namespace pagora {

Selections::Selections(EpubController& reader, EpubWindow& window, ReaderHub& hub)
    : _reader(reader)
    , _window(window)
    , _hub(hub)
{
    _reader.setSelectionHandler([this](const std::optional<PageSelection>& selection) {
        if (!selection)
            return _window.hideSelection();
        _selection = selection;
        _window.showSelection(*selection);
    });
}

Selections::~Selections()
{
    _reader.setSelectionHandler({});
}

void Selections::ask()
{
    _asking = evaluate(_window.webView(), "pagoraSelection.ask()");
}

void Selections::end()
{
    _window.hideSelection();
    _asking = evaluate(_window.webView(), "pagoraSelection.forget()");
}

void Selections::copy()
{
    _asking = copyText();
}

Task<void> Selections::copyText()
{
    const std::string text = co_await _window.webView().evaluateScript("pagoraSelection.text()");
    if (!text.empty())
        _window.copy(text);
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
